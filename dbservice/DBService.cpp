#include "dbservice/DBService.h"

#include <atomic>
#include <cstdio>
#include <type_traits>
#include <utility>

#include "dbaccess/DataAccess.h"
#include "dbservice/accounts/ServerInfoDao.h"
#include "dbservice/accounts/UserCamerasDao.h"
#include "dbservice/accounts/UserInfoDao.h"
#include "dbservice/accounts/UserMgr.h"
#include "dbservice/accounts/UserRightsDao.h"
#include "dbservice/devices/ChannelConfigDao.h"
#include "dbservice/devices/ChannelDao.h"
#include "dbservice/devices/DeviceDao.h"
#include "dbservice/devices/DeviceMgr.h"
#include "dbservice/recording/ArchiveInfoDao.h"
#include "dbservice/recording/CameraScheduleDao.h"
#include "dbservice/recording/OnlineSchedulesDao.h"
#include "dbservice/recording/RecordSchedulesDao.h"
#include "dbservice/recording/SchedulesMgr.h"
#include "dbservice/recording/SpeedupSchedulesDao.h"
#include "dbservice/recording/StorageDao.h"
#include "dbservice/recording/StorageMgr.h"
#include "log/Log.h"
#include "threadlib/ReadWriteMutex.h"

namespace dbservice {
namespace {

ThreadLib::ReadWriteMutex g_svr_dbvisitor2;
std::atomic<DBService*> g_instance_dbvisitor2{nullptr};

class WriteGuard {
public:
    WriteGuard() { g_svr_dbvisitor2.LockWrite(); }
    WriteGuard(const WriteGuard&) = delete;
    WriteGuard& operator=(const WriteGuard&) = delete;
    ~WriteGuard() { g_svr_dbvisitor2.Unlock(); }
};

constexpr int kDone = 1;
constexpr int kFailed = -1;
constexpr int kNotConnected = -1;
constexpr int kLogError = 300;

}  // namespace

int DBService::Initialize(const DB_CONNECTION_PROPERTY& settings) {
    int result = kDone;
    {
        const WriteGuard guard;
        if (g_instance_dbvisitor2 == nullptr) {
            auto* service = new DBService;
            g_instance_dbvisitor2 = service;  // stays, connected or not
            if (!service->creatDBAccess(settings)) {
                Qz_Write_Log(kLogError, "Initialize", "db Initialize error!");
                result = kFailed;
            }
        }
    }
    std::puts("DBService::Initialize");
    return result;
}

int DBService::Cleanup() {
    const WriteGuard guard;
    delete g_instance_dbvisitor2.exchange(nullptr);
    return kDone;
}

DBService* DBService::GetDBServiceObject() {
    return g_instance_dbvisitor2;
}

void DBService::ReleaseResulitSet(dbaccess::ResultSet* set) {
    dbaccess::DataAccess::ReleaseResulitSet(set);
}

DBService::DBService() = default;

bool DBService::creatDBAccess(DB_CONNECTION_PROPERTY settings) {
    dataAccess_ = std::make_unique<dbaccess::DataAccess>(
        settings.host, static_cast<unsigned int>(settings.port), settings.user, settings.password);
    dbName_ = settings.dbName;
    const auto create = [this](auto& dao) {
        using Dao = typename std::decay_t<decltype(dao)>::element_type;
        dao = std::make_unique<Dao>(dataAccess_.get(), dbName_);
    };
    create(schedulesMgr_);
    create(deviceMgr_);
    create(storageMgr_);
    create(userMgr_);
    create(serverInfoDao_);
    create(deviceDao_);
    create(channelDao_);
    create(channelConfigDao_);
    create(storageDao_);
    create(cameraScheduleDao_);
    create(onlineSchedulesDao_);
    create(speedupSchedulesDao_);
    create(recordSchedulesDao_);
    create(userInfoDao_);
    create(userRightsDao_);
    create(userCamerasDao_);
    create(archiveInfoDao_);
    const bool connected = dataAccess_->Initialize(settings.accessParamA, settings.accessParamB,
                                                   settings.accessFlagA, settings.accessFlagB);
    dataAccess_->Execute(dbName_, "SET NAMES utf8");
    return connected;
}

DBService::~DBService() {
    dataAccess_.reset();
    schedulesMgr_.reset();
    deviceMgr_.reset();
    storageMgr_.reset();
    userMgr_.reset();
    serverInfoDao_.reset();
    storageDao_.reset();
    cameraScheduleDao_.reset();
    onlineSchedulesDao_.reset();
    speedupSchedulesDao_.reset();
    recordSchedulesDao_.reset();
    deviceDao_.reset();
    channelDao_.reset();
    channelConfigDao_.reset();
    userInfoDao_.reset();
    userRightsDao_.reset();
    userCamerasDao_.reset();
    archiveInfoDao_.reset();
}

std::string DBService::getDBName() const {
    return dbName_;
}

std::int64_t DBService::Insert(std::string statement) {
    return dataAccess_ ? dataAccess_->Insert(dbName_, std::move(statement)) : kNotConnected;
}

int DBService::Update(std::string statement) {
    return dataAccess_ ? dataAccess_->Update(dbName_, std::move(statement)) : kNotConnected;
}

int DBService::Update(std::deque<std::string>& statements) {
    return dataAccess_ ? dataAccess_->Update(dbName_, statements) : kNotConnected;
}

int DBService::Execute(std::string statement) {
    return dataAccess_ ? dataAccess_->Execute(dbName_, std::move(statement)) : kNotConnected;
}

dbaccess::ResultSet* DBService::Query(std::string statement) {
    return dataAccess_ ? dataAccess_->Query(dbName_, std::move(statement)) : nullptr;
}

int DBService::InsertServerInfo(const T_ServerInfo& server) {
    return serverInfoDao_ ? serverInfoDao_->InsertServerImp(server) : kNotConnected;
}

int DBService::UpdateServerInfo(const T_ServerInfo& server) {
    return serverInfoDao_ ? serverInfoDao_->UpdateServerImp(server) : kNotConnected;
}

int DBService::DeleteServerInfo(const std::string& guid) {
    return serverInfoDao_ ? serverInfoDao_->DeleteServerImp(guid) : kNotConnected;
}

T_ServerInfoList* DBService::QueryServerInfo(const std::string& guid) {
    return serverInfoDao_ ? serverInfoDao_->QueryServerImp(guid) : nullptr;
}

void DBService::ReleaseServerInfo(T_ServerInfoList* list) {
    if (serverInfoDao_) serverInfoDao_->ReleaseServerList(list);
}

int DBService::Login(const std::string& userName, const std::string& password) {
    return userMgr_ ? userMgr_->LoginImp(userName, password) : kNotConnected;
}

int DBService::InsertUser(const T_UserInfo& user) {
    return userInfoDao_ ? userInfoDao_->InsertUserInfoImp(user) : kNotConnected;
}

int DBService::UpdateUser(const T_UserInfo& user) {
    return userInfoDao_ ? userInfoDao_->UpdateUserInfoImp(user) : kNotConnected;
}

int DBService::DeleteUser(std::string guid) {
    return userInfoDao_ ? userInfoDao_->DeleteUserInfoImp(std::move(guid)) : kNotConnected;
}

T_UserInfoList* DBService::QueryUser(std::string guid, std::string userName, std::string password) {
    return userInfoDao_ ? userInfoDao_->QueryUserInfoImp(std::move(guid), std::move(userName),
                                                         std::move(password))
                        : nullptr;
}

void DBService::ReleaseUser(T_UserInfoList* list) {
    if (userInfoDao_) userInfoDao_->ReleaseUserInfo(list);
}

int DBService::InsertUserRights(const T_UserRights& rights) {
    return userRightsDao_ ? userRightsDao_->InsertUserRightsImp(rights) : kNotConnected;
}

int DBService::UpdateUserRights(const T_UserRights& rights) {
    return userRightsDao_ ? userRightsDao_->UpdateUserRightsImp(rights) : kNotConnected;
}

int DBService::DeleteUserRights(std::string userGuid) {
    return userRightsDao_ ? userRightsDao_->DeleteUserRightsImp(std::move(userGuid))
                          : kNotConnected;
}

T_UserRights* DBService::QueryUserRights(std::string userGuid) {
    return userRightsDao_ ? userRightsDao_->QueryUserRightsImp(std::move(userGuid)) : nullptr;
}

void DBService::ReleaseUserRights(T_UserRights* rights) {
    if (userRightsDao_) userRightsDao_->ReleaseUserRights(rights);
}

int DBService::InsertUserCameras(const T_UserCameras* cameras, int count) {
    return userCamerasDao_ ? userCamerasDao_->InsertUserCamerasImp(cameras, count) : kNotConnected;
}

int DBService::UpdateUserCameras(const T_UserCameras* cameras, int count) {
    return userCamerasDao_ ? userCamerasDao_->UpdateUserCamerasImp(cameras, count) : kNotConnected;
}

int DBService::UpdateUserCameras(const T_UserCameras& camera) {
    return userCamerasDao_ ? userCamerasDao_->UpdateUserCamerasImp(camera) : kNotConnected;
}

int DBService::DeleteUserCameras(const T_UserCameras* cameras, int count) {
    return userCamerasDao_ ? userCamerasDao_->DeleteUserCamerasImp(cameras, count) : kNotConnected;
}

int DBService::DeleteUserCameras(std::string guid, std::string userGuid, std::string cameraGuid) {
    return userCamerasDao_ ? userCamerasDao_->DeleteUserCamerasImp(
                                 std::move(guid), std::move(userGuid), std::move(cameraGuid))
                           : kNotConnected;
}

T_UserCamerasList* DBService::QueryUserCameras(const T_UserCameras* cameras, int count) {
    return userCamerasDao_ ? userCamerasDao_->QueryUserCamerasImp(cameras, count) : nullptr;
}

T_UserCamerasList* DBService::QueryUserCameras(std::string guid, std::string userGuid,
                                               std::string cameraGuid) {
    return userCamerasDao_ ? userCamerasDao_->QueryUserCamerasImp(
                                 std::move(guid), std::move(userGuid), std::move(cameraGuid))
                           : nullptr;
}

void DBService::ReleaseUserCameras(T_UserCamerasList* list) {
    if (userCamerasDao_) userCamerasDao_->ReleaseUserCameras(list);
}

int DBService::InsertDevice(const T_Device* devices, int count) {
    return deviceDao_ ? deviceDao_->InsertDeviceImp(devices, count) : kNotConnected;
}

int DBService::UpdateDevice(const T_Device* devices, int count) {
    return deviceDao_ ? deviceDao_->UpdateDeviceImp(devices, count) : kNotConnected;
}

int DBService::UpdateDevice(const T_Device& device) {
    return deviceDao_ ? deviceDao_->UpdateDeviceImp(device) : kNotConnected;
}

int DBService::DeleteDevice(const T_Device* devices, int count) {
    return deviceDao_ ? deviceDao_->DeleteDeviceImp(devices, count) : kNotConnected;
}

int DBService::DeleteDevice(const std::string& guid) {
    return deviceDao_ ? deviceDao_->DeleteDeviceImp(guid) : kNotConnected;
}

T_DeviceList* DBService::QueryDevice(const std::string& guid) {
    return deviceDao_ ? deviceDao_->QueryDeviceImp(guid) : nullptr;
}

bool DBService::IsExistDevice(const T_Device& device) {
    return deviceDao_ && deviceDao_->IsExistDeviceImp(device);
}

void DBService::ReleaseDevice(T_DeviceList* list) {
    if (deviceDao_) deviceDao_->ReleaseDevice(list);
}

int DBService::InsertChannel(const T_Channel* channels, int count) {
    return channelDao_ ? channelDao_->InsertChannelImp(channels, count) : kNotConnected;
}

int DBService::UpdateChannel(const T_Channel* channels, int count) {
    return channelDao_ ? channelDao_->UpdateChannelImp(channels, count) : kNotConnected;
}

int DBService::UpdateChannel(const T_Channel& channel) {
    return channelDao_ ? channelDao_->UpdateChannelImp(channel) : kNotConnected;
}

int DBService::DeleteChannel(const T_Channel* channels, int count) {
    return channelDao_ ? channelDao_->DeleteChannelImp(channels, count) : kNotConnected;
}

int DBService::DeleteChannel(const std::string& deviceGuid, std::string guid) {
    return channelDao_ ? channelDao_->DeleteChannelImp(deviceGuid, std::move(guid)) : kNotConnected;
}

T_CHANNEL_LIST* DBService::QueryChannel(const std::string& deviceGuid, std::string guid) {
    return channelDao_ ? channelDao_->QueryChannelImp(deviceGuid, std::move(guid)) : nullptr;
}

T_CHANNEL_LIST* DBService::QueryChannel(std::string userGuid) {
    return channelDao_ ? channelDao_->QueryChannelImp(std::move(userGuid)) : nullptr;
}

bool DBService::IsExistChannel(const T_Channel& channel) {
    return channelDao_ && channelDao_->IsExistChannelImp(channel);
}

void DBService::ReleaseChannelList(T_CHANNEL_LIST* list) {
    if (channelDao_) channelDao_->ReleaseChannelList(list);
}

int DBService::InsertChannelConfig(const T_ChannelConfig* configs, int count) {
    return channelConfigDao_ ? channelConfigDao_->InsertChannelConfigImp(configs, count)
                             : kNotConnected;
}

int DBService::UpdateChannelConfig(const T_ChannelConfig* configs, int count) {
    return channelConfigDao_ ? channelConfigDao_->UpdateChannelConfigImp(configs, count)
                             : kNotConnected;
}

int DBService::UpdateChannelConfig(const T_ChannelConfig& config) {
    return channelConfigDao_ ? channelConfigDao_->UpdateChannelConfigImp(config) : kNotConnected;
}

int DBService::DeleteChannelConfig(const T_ChannelConfig* configs, int count) {
    return channelConfigDao_ ? channelConfigDao_->DeleteChannelConfigImp(configs, count)
                             : kNotConnected;
}

int DBService::DeleteChannelConfig(const std::string& channelGuid) {
    return channelConfigDao_ ? channelConfigDao_->DeleteChannelConfigImp(channelGuid)
                             : kNotConnected;
}

T_ChannelConfig* DBService::QueryChannelConfig(const std::string& channelGuid) {
    return channelConfigDao_ ? channelConfigDao_->QueryChannelConfigImp(channelGuid) : nullptr;
}

void DBService::ReleaseChannelConfig(T_ChannelConfig* config) {
    if (channelConfigDao_) channelConfigDao_->ReleaseChannelConfig(config);
}

int DBService::InsertStorage(const T_Storage* storages, int count) {
    return storageDao_ ? storageDao_->InsertStorageImp(storages, count) : kNotConnected;
}

int DBService::UpdateStorage(const T_Storage* storages, int count) {
    return storageDao_ ? storageDao_->UpdateStorageImp(storages, count) : kNotConnected;
}

int DBService::UpdateStorage(const T_Storage& storage) {
    return storageDao_ ? storageDao_->UpdateStorageImp(storage) : kNotConnected;
}

int DBService::DeleteStorage(const T_Storage* storages, int count) {
    return storageDao_ ? storageDao_->DeleteStorageImp(storages, count) : kNotConnected;
}

int DBService::DeleteStorage(std::string channelGuid) {
    return storageDao_ ? storageDao_->DeleteStorageImp(std::move(channelGuid)) : kNotConnected;
}

T_StorageList* DBService::QueryStorage(std::string channelGuid) {
    return storageDao_ ? storageDao_->QueryStorageImp(std::move(channelGuid)) : nullptr;
}

void DBService::ReleaseStorage(T_StorageList* list) {
    if (storageDao_) storageDao_->ReleaseStorage(list);
}

int DBService::InsertArchiveInfo(const T_ArchiveInfo& archive) {
    return archiveInfoDao_ ? archiveInfoDao_->InsertArchiveInfoImp(archive) : kNotConnected;
}

int DBService::UpdateArchiveInfo(const T_ArchiveInfo& archive) {
    return archiveInfoDao_ ? archiveInfoDao_->UpdateArchiveInfoImp(archive) : kNotConnected;
}

int DBService::DeleteArchiveInfo(std::string guid) {
    return archiveInfoDao_ ? archiveInfoDao_->DeleteArchiveInfoImp(std::move(guid)) : kNotConnected;
}

T_ArchiveInfoList* DBService::QueryArchiveInfo(std::string guid) {
    return archiveInfoDao_ ? archiveInfoDao_->QueryArchiveInfoImp(std::move(guid)) : nullptr;
}

void DBService::ReleaseArchiveInfoList(T_ArchiveInfoList* list) {
    if (archiveInfoDao_) archiveInfoDao_->ReleaseArchiveInfoList(list);
}

int DBService::InsertCameraSchedule(const T_CameraSchedule& schedule) {
    return cameraScheduleDao_ ? cameraScheduleDao_->InsertCameraScheduleImp(schedule)
                              : kNotConnected;
}

int DBService::UpdateCameraSchedule(const T_CameraSchedule& schedule) {
    return cameraScheduleDao_ ? cameraScheduleDao_->UpdateCameraScheduleImp(schedule)
                              : kNotConnected;
}

int DBService::DeleteCameraSchedule(const std::string& cameraGuid) {
    return cameraScheduleDao_ ? cameraScheduleDao_->DeleteCameraScheduleImp(cameraGuid)
                              : kNotConnected;
}

T_CameraScheduleList* DBService::QueryCameraSchedule(const std::string& cameraGuid) {
    return cameraScheduleDao_ ? cameraScheduleDao_->QueryCameraScheduleImp(cameraGuid) : nullptr;
}

void DBService::ReleaseCameraSchedule(T_CameraScheduleList* list) {
    if (cameraScheduleDao_) cameraScheduleDao_->ReleaseCameraSchedule(list);
}

int DBService::InsertOnlineSchedules(const T_Schedules& schedules) {
    return onlineSchedulesDao_ ? onlineSchedulesDao_->InsertOnlineSchedulesImp(schedules)
                               : kNotConnected;
}

int DBService::UpdateOnlineSchedules(const T_Schedules& schedules) {
    return onlineSchedulesDao_ ? onlineSchedulesDao_->UpdateOnlineSchedulesImp(schedules)
                               : kNotConnected;
}

int DBService::DeleteOnlineSchedules(const std::string& guid) {
    return onlineSchedulesDao_ ? onlineSchedulesDao_->DeleteOnlineSchedulesImp(guid)
                               : kNotConnected;
}

T_SchedulesList* DBService::QueryOnlineSchedules(const std::string& guid) {
    return onlineSchedulesDao_ ? onlineSchedulesDao_->QueryOnlineSchedulesImp(guid) : nullptr;
}

void DBService::ReleaseOnlineSchedules(T_SchedulesList* list) {
    if (onlineSchedulesDao_) onlineSchedulesDao_->ReleaseOnlineSchedules(list);
}

int DBService::InsertSpeedupSchedules(const T_Schedules& schedules) {
    return speedupSchedulesDao_ ? speedupSchedulesDao_->InsertSpeedupSchedulesImp(schedules)
                                : kNotConnected;
}

int DBService::UpdateSpeedupSchedules(const T_Schedules& schedules) {
    return speedupSchedulesDao_ ? speedupSchedulesDao_->UpdateSpeedupSchedulesImp(schedules)
                                : kNotConnected;
}

int DBService::DeleteSpeedupSchedules(const std::string& guid) {
    return speedupSchedulesDao_ ? speedupSchedulesDao_->DeleteSpeedupSchedulesImp(guid)
                                : kNotConnected;
}

T_SchedulesList* DBService::QuerySpeedupSchedules(const std::string& guid) {
    return speedupSchedulesDao_ ? speedupSchedulesDao_->QuerySpeedupSchedulesImp(guid) : nullptr;
}

void DBService::ReleaseSpeedupSchedules(T_SchedulesList* list) {
    if (speedupSchedulesDao_) speedupSchedulesDao_->ReleaseSpeedupSchedules(list);
}

int DBService::InsertRecordSchedules(const T_Schedules& schedules) {
    return recordSchedulesDao_ ? recordSchedulesDao_->InsertRecordSchedulesImp(schedules)
                               : kNotConnected;
}

int DBService::UpdateRecordSchedules(const T_Schedules& schedules) {
    return recordSchedulesDao_ ? recordSchedulesDao_->UpdateRecordSchedulesImp(schedules)
                               : kNotConnected;
}

int DBService::DeleteRecordSchedules(const std::string& guid) {
    return recordSchedulesDao_ ? recordSchedulesDao_->DeleteRecordSchedulesImp(guid)
                               : kNotConnected;
}

T_SchedulesList* DBService::QueryRecordSchedules(const std::string& guid) {
    return recordSchedulesDao_ ? recordSchedulesDao_->QueryRecordSchedulesImp(guid) : nullptr;
}

void DBService::ReleaseRecordSchedules(T_SchedulesList* list) {
    if (recordSchedulesDao_) recordSchedulesDao_->ReleaseRecordSchedules(list);
}

}  // namespace dbservice
