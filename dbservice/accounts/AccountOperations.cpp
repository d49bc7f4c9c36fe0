#include "dbservice/DBService.h"
#include "dbservice/accounts/ServerInfoDao.h"
#include "dbservice/accounts/UserCamerasDao.h"
#include "dbservice/accounts/UserInfoDao.h"
#include "dbservice/accounts/UserMgr.h"
#include "dbservice/accounts/UserRightsDao.h"
#include "dbservice/statement/Result.h"

namespace dbservice {

using statement::noDao;

int DBService::InsertServerInfo(const T_ServerInfo& server) {
    return serverInfoDao_ ? serverInfoDao_->InsertServerImp(server) : noDao();
}

int DBService::UpdateServerInfo(const T_ServerInfo& server) {
    return serverInfoDao_ ? serverInfoDao_->UpdateServerImp(server) : noDao();
}

int DBService::DeleteServerInfo(const std::string& guid) {
    return serverInfoDao_ ? serverInfoDao_->DeleteServerImp(guid) : noDao();
}

T_ServerInfoList* DBService::QueryServerInfo(const std::string& guid) {
    return serverInfoDao_ ? serverInfoDao_->QueryServerImp(guid) : noDao();
}

void DBService::ReleaseServerInfo(T_ServerInfoList* list) {
    if (serverInfoDao_) serverInfoDao_->ReleaseServerList(list);
}

int DBService::Login(const std::string& userName, const std::string& password) {
    return userMgr_ ? userMgr_->LoginImp(userName, password) : noDao();
}

int DBService::InsertUser(const T_UserInfo& user) {
    return userInfoDao_ ? userInfoDao_->InsertUserInfoImp(user) : noDao();
}

int DBService::UpdateUser(const T_UserInfo& user) {
    return userInfoDao_ ? userInfoDao_->UpdateUserInfoImp(user) : noDao();
}

int DBService::DeleteUser(std::string guid) {
    return userInfoDao_ ? userInfoDao_->DeleteUserInfoImp(guid) : noDao();
}

T_UserInfoList* DBService::QueryUser(std::string guid, std::string userName, std::string password) {
    return userInfoDao_ ? userInfoDao_->QueryUserInfoImp(guid, userName, password) : noDao();
}

void DBService::ReleaseUser(T_UserInfoList* list) {
    if (userInfoDao_) userInfoDao_->ReleaseUserInfo(list);
}

int DBService::InsertUserRights(const T_UserRights& rights) {
    return userRightsDao_ ? userRightsDao_->InsertUserRightsImp(rights) : noDao();
}

int DBService::UpdateUserRights(const T_UserRights& rights) {
    return userRightsDao_ ? userRightsDao_->UpdateUserRightsImp(rights) : noDao();
}

int DBService::DeleteUserRights(std::string userGuid) {
    return userRightsDao_ ? userRightsDao_->DeleteUserRightsImp(userGuid) : noDao();
}

T_UserRights* DBService::QueryUserRights(std::string userGuid) {
    return userRightsDao_ ? userRightsDao_->QueryUserRightsImp(userGuid) : noDao();
}

void DBService::ReleaseUserRights(T_UserRights* rights) {
    if (userRightsDao_) userRightsDao_->ReleaseUserRights(rights);
}

int DBService::InsertUserCameras(const T_UserCameras* cameras, int count) {
    return userCamerasDao_ ? userCamerasDao_->InsertUserCamerasImp(cameras, count) : noDao();
}

int DBService::UpdateUserCameras(const T_UserCameras* cameras, int count) {
    return userCamerasDao_ ? userCamerasDao_->UpdateUserCamerasImp(cameras, count) : noDao();
}

int DBService::UpdateUserCameras(const T_UserCameras& camera) {
    return userCamerasDao_ ? userCamerasDao_->UpdateUserCamerasImp(camera) : noDao();
}

int DBService::DeleteUserCameras(const T_UserCameras* cameras, int count) {
    return userCamerasDao_ ? userCamerasDao_->DeleteUserCamerasImp(cameras, count) : noDao();
}

int DBService::DeleteUserCameras(std::string guid, std::string userGuid, std::string cameraGuid) {
    return userCamerasDao_ ? userCamerasDao_->DeleteUserCamerasImp(guid, userGuid, cameraGuid)
                           : noDao();
}

T_UserCamerasList* DBService::QueryUserCameras(const T_UserCameras* cameras, int count) {
    return userCamerasDao_ ? userCamerasDao_->QueryUserCamerasImp(cameras, count) : noDao();
}

T_UserCamerasList* DBService::QueryUserCameras(std::string guid, std::string userGuid,
                                               std::string cameraGuid) {
    return userCamerasDao_ ? userCamerasDao_->QueryUserCamerasImp(guid, userGuid, cameraGuid)
                           : noDao();
}

void DBService::ReleaseUserCameras(T_UserCamerasList* list) {
    if (userCamerasDao_) userCamerasDao_->ReleaseUserCameras(list);
}

}  // namespace dbservice
