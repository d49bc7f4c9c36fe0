#include "dbservice/DBService.h"
#include "dbservice/accounts/ServerInfoDao.h"
#include "dbservice/accounts/UserCamerasDao.h"
#include "dbservice/accounts/UserInfoDao.h"
#include "dbservice/accounts/UserMgr.h"
#include "dbservice/accounts/UserRightsDao.h"
#include "dbservice/statement/Result.h"

namespace dbservice {

using statement::kNoDao;

int DBService::InsertServerInfo(const T_ServerInfo& server) {
    return serverInfoDao_ ? serverInfoDao_->InsertServerImp(server) : kNoDao;
}

int DBService::UpdateServerInfo(const T_ServerInfo& server) {
    return serverInfoDao_ ? serverInfoDao_->UpdateServerImp(server) : kNoDao;
}

int DBService::DeleteServerInfo(const std::string& guid) {
    return serverInfoDao_ ? serverInfoDao_->DeleteServerImp(guid) : kNoDao;
}

T_ServerInfoList* DBService::QueryServerInfo(const std::string& guid) {
    return serverInfoDao_ ? serverInfoDao_->QueryServerImp(guid) : nullptr;
}

void DBService::ReleaseServerInfo(T_ServerInfoList* list) {
    if (serverInfoDao_) serverInfoDao_->ReleaseServerList(list);
}

int DBService::Login(const std::string& userName, const std::string& password) {
    return userMgr_ ? userMgr_->LoginImp(userName, password) : kNoDao;
}

int DBService::InsertUser(const T_UserInfo& user) {
    return userInfoDao_ ? userInfoDao_->InsertUserInfoImp(user) : kNoDao;
}

int DBService::UpdateUser(const T_UserInfo& user) {
    return userInfoDao_ ? userInfoDao_->UpdateUserInfoImp(user) : kNoDao;
}

int DBService::DeleteUser(std::string guid) {
    return userInfoDao_ ? userInfoDao_->DeleteUserInfoImp(guid) : kNoDao;
}

T_UserInfoList* DBService::QueryUser(std::string guid, std::string userName, std::string password) {
    return userInfoDao_ ? userInfoDao_->QueryUserInfoImp(guid, userName, password) : nullptr;
}

void DBService::ReleaseUser(T_UserInfoList* list) {
    if (userInfoDao_) userInfoDao_->ReleaseUserInfo(list);
}

int DBService::InsertUserRights(const T_UserRights& rights) {
    return userRightsDao_ ? userRightsDao_->InsertUserRightsImp(rights) : kNoDao;
}

int DBService::UpdateUserRights(const T_UserRights& rights) {
    return userRightsDao_ ? userRightsDao_->UpdateUserRightsImp(rights) : kNoDao;
}

int DBService::DeleteUserRights(std::string userGuid) {
    return userRightsDao_ ? userRightsDao_->DeleteUserRightsImp(userGuid) : kNoDao;
}

T_UserRights* DBService::QueryUserRights(std::string userGuid) {
    return userRightsDao_ ? userRightsDao_->QueryUserRightsImp(userGuid) : nullptr;
}

void DBService::ReleaseUserRights(T_UserRights* rights) {
    if (userRightsDao_) userRightsDao_->ReleaseUserRights(rights);
}

int DBService::InsertUserCameras(const T_UserCameras* cameras, int count) {
    return userCamerasDao_ ? userCamerasDao_->InsertUserCamerasImp(cameras, count) : kNoDao;
}

int DBService::UpdateUserCameras(const T_UserCameras* cameras, int count) {
    return userCamerasDao_ ? userCamerasDao_->UpdateUserCamerasImp(cameras, count) : kNoDao;
}

int DBService::UpdateUserCameras(const T_UserCameras& camera) {
    return userCamerasDao_ ? userCamerasDao_->UpdateUserCamerasImp(camera) : kNoDao;
}

int DBService::DeleteUserCameras(const T_UserCameras* cameras, int count) {
    return userCamerasDao_ ? userCamerasDao_->DeleteUserCamerasImp(cameras, count) : kNoDao;
}

int DBService::DeleteUserCameras(std::string guid, std::string userGuid, std::string cameraGuid) {
    return userCamerasDao_ ? userCamerasDao_->DeleteUserCamerasImp(guid, userGuid, cameraGuid)
                           : kNoDao;
}

T_UserCamerasList* DBService::QueryUserCameras(const T_UserCameras* cameras, int count) {
    return userCamerasDao_ ? userCamerasDao_->QueryUserCamerasImp(cameras, count) : nullptr;
}

T_UserCamerasList* DBService::QueryUserCameras(std::string guid, std::string userGuid,
                                               std::string cameraGuid) {
    return userCamerasDao_ ? userCamerasDao_->QueryUserCamerasImp(guid, userGuid, cameraGuid)
                           : nullptr;
}

void DBService::ReleaseUserCameras(T_UserCamerasList* list) {
    if (userCamerasDao_) userCamerasDao_->ReleaseUserCameras(list);
}

}  // namespace dbservice
