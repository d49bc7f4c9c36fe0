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
#include "dbservice/events/CAlarmInfoDao.h"
#include "dbservice/events/CFaceCaptureDao.h"
#include "dbservice/events/CFaceCompareDao.h"
#include "dbservice/layouts/CarouselDao.h"
#include "dbservice/layouts/GroupInfoDao.h"
#include "dbservice/layouts/ViewGroupInfoDao.h"
#include "dbservice/layouts/ViewInfoDao.h"
#include "dbservice/layouts/ViewItemDao.h"
#include "dbservice/layouts/ViewItemInfoDao.h"
#include "dbservice/maps/CEMapDao.h"
#include "dbservice/maps/NodeElementParam.h"
#include "dbservice/maps/NodeInfo.h"
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

}  // namespace

int DBService::Initialize(const DB_CONNECTION_PROPERTY& settings) {
    int result = kDone;
    {
        const WriteGuard guard;
        if (g_instance_dbvisitor2 == nullptr) {
            auto* service = new DBService;
            g_instance_dbvisitor2 = service;  // stays, connected or not
            if (!service->creatDBAccess(settings)) {
                Qz_Write_Log(kQzLogError, "Initialize", "db Initialize error!");
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
    create(viewItemInfoDao_);
    create(viewItemDao_);
    create(viewInfoDao_);
    create(groupInfoDao_);
    create(viewGroupInfoDao_);
    create(userInfoDao_);
    create(userRightsDao_);
    create(userCamerasDao_);
    create(carouselDao_);
    create(archiveInfoDao_);
    create(alarmInfoDao_);
    create(eMapDao_);
    create(faceCaptureDao_);
    create(faceCompareDao_);
    // No NodeInfo and no NodeElementParam, deliberately: their operations answer as if not
    // connected.
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
    viewItemInfoDao_.reset();
    viewItemDao_.reset();
    viewInfoDao_.reset();
    groupInfoDao_.reset();
    viewGroupInfoDao_.reset();
    userInfoDao_.reset();
    userRightsDao_.reset();
    userCamerasDao_.reset();
    carouselDao_.reset();
    archiveInfoDao_.reset();
    alarmInfoDao_.reset();
    eMapDao_.reset();
    nodeInfo_.reset();
    nodeElementParam_.reset();
    faceCaptureDao_.reset();
    faceCompareDao_.reset();
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

int DBService::InsertViewGroupInfo(const T_ViewGroupInfo& viewGroup) {
    return viewGroupInfoDao_ ? viewGroupInfoDao_->InsertViewGroupInfoImp(viewGroup) : kNotConnected;
}

int DBService::InsertViewGroupInfo(const T_ViewGroupInfo* viewGroups, int count) {
    return viewGroupInfoDao_ ? viewGroupInfoDao_->InsertViewGroupInfoImp(viewGroups, count)
                             : kNotConnected;
}

int DBService::UpdateViewGroupInfo(const T_ViewGroupInfo& viewGroup) {
    return viewGroupInfoDao_ ? viewGroupInfoDao_->UpdateViewGroupInfoImp(viewGroup) : kNotConnected;
}

int DBService::DeleteViewGroupInfo(std::string guid, std::string userGuid) {
    return viewGroupInfoDao_
               ? viewGroupInfoDao_->DeleteViewGroupInfoImp(std::move(guid), std::move(userGuid))
               : kNotConnected;
}

T_ViewGroupInfoList* DBService::QueryViewGroupInfo(std::string guid, std::string userGuid,
                                                   bool includeType1) {
    return viewGroupInfoDao_ ? viewGroupInfoDao_->QueryViewGroupInfoImp(
                                   std::move(guid), std::move(userGuid), includeType1)
                             : nullptr;
}

void DBService::ReleaseViewGroupInfoList(T_ViewGroupInfoList* list) {
    if (viewGroupInfoDao_) viewGroupInfoDao_->ReleaseViewGroupInfoList(list);
}

int DBService::InsertGroupInfo(const T_GroupInfo& group) {
    return groupInfoDao_ ? groupInfoDao_->InsertGroupInfoImp(group) : kNotConnected;
}

int DBService::InsertGroupInfo(const T_GroupInfo* groups, int count) {
    return groupInfoDao_ ? groupInfoDao_->InsertGroupInfoImp(groups, count) : kNotConnected;
}

int DBService::UpdateGroupInfo(const T_GroupInfo& group) {
    return groupInfoDao_ ? groupInfoDao_->UpdateGroupInfoImp(group) : kNotConnected;
}

int DBService::DeleteGroupInfo(const std::string& viewGroupGuid) {
    return groupInfoDao_ ? groupInfoDao_->DeleteGroupInfoImp(viewGroupGuid) : kNotConnected;
}

int DBService::DeleteGroupInfo(const T_GroupInfo* groups, int count) {
    return groupInfoDao_ ? groupInfoDao_->DeleteGroupInfoImp(groups, count) : kNotConnected;
}

T_GroupInfoList* DBService::QueryGroupInfo(const std::string& viewGroupGuid) {
    return groupInfoDao_ ? groupInfoDao_->QueryGroupInfoImp(viewGroupGuid) : nullptr;
}

void DBService::ReleaseGroupInfoList(T_GroupInfoList* list) {
    if (groupInfoDao_) groupInfoDao_->ReleaseGroupInfoList(list);
}

int DBService::InsertViewInfo1(const T_ViewInfo& view) {
    return viewInfoDao_ ? viewInfoDao_->InsertViewInfoImp(view) : kNotConnected;
}

int DBService::InsertViewInfo(const T_ViewInfo* views, int count) {
    return viewInfoDao_ ? viewInfoDao_->InsertViewInfoImp(views, count) : kNotConnected;
}

int DBService::UpdateViewInfo(const T_ViewInfo& view) {
    return viewInfoDao_ ? viewInfoDao_->UpdateViewInfoImp(view) : kNotConnected;
}

int DBService::DeleteViewInfo(const std::string& groupGuid) {
    return viewInfoDao_ ? viewInfoDao_->DeleteViewInfoImp(groupGuid) : kNotConnected;
}

int DBService::DeleteViewInfo(const T_ViewInfo* views, int count) {
    return viewInfoDao_ ? viewInfoDao_->DeleteViewInfoImp(views, count) : kNotConnected;
}

T_ViewInfoList* DBService::QueryViewInfo(const std::string& groupGuid) {
    return viewInfoDao_ ? viewInfoDao_->QueryViewInfoImp(groupGuid) : nullptr;
}

void DBService::ReleaseViewInfoList(T_ViewInfoList* list) {
    if (viewInfoDao_) viewInfoDao_->ReleaseViewInfoList(list);
}

int DBService::InsertViewItem(const T_ViewItem& item) {
    return viewItemDao_ ? viewItemDao_->InsertViewItemImp(item) : kNotConnected;
}

int DBService::InsertViewItem(const T_ViewItem* items, int count) {
    return viewItemDao_ ? viewItemDao_->InsertViewItemImp(items, count) : kNotConnected;
}

int DBService::UpdateViewItem(const T_ViewItem& item) {
    return viewItemDao_ ? viewItemDao_->UpdateViewItemImp(item) : kNotConnected;
}

int DBService::DeleteViewItem(const std::string& viewInfoGuid) {
    return viewItemDao_ ? viewItemDao_->DeleteViewItemImp(viewInfoGuid) : kNotConnected;
}

int DBService::DeleteViewItem(const T_ViewItem* items, int count) {
    return viewItemDao_ ? viewItemDao_->DeleteViewItemImp(items, count) : kNotConnected;
}

T_ViewItemList* DBService::QueryViewItem(const std::string& viewInfoGuid) {
    return viewItemDao_ ? viewItemDao_->QueryViewItemImp(viewInfoGuid) : nullptr;
}

void DBService::ReleaseViewItemList(T_ViewItemList* list) {
    if (viewItemDao_) viewItemDao_->ReleaseViewItemList(list);
}

int DBService::InsertViewItemInfo(const T_ViewItemInfo& source) {
    return viewItemInfoDao_ ? viewItemInfoDao_->InsertViewItemInfoImp(source) : kNotConnected;
}

int DBService::InsertViewItemInfo(const T_ViewItemInfo* sources, int count) {
    return viewItemInfoDao_ ? viewItemInfoDao_->InsertViewItemInfoImp(sources, count)
                            : kNotConnected;
}

int DBService::UpdateViewItemInfo(const T_ViewItemInfo& source) {
    return viewItemInfoDao_ ? viewItemInfoDao_->UpdateViewItemInfoImp(source) : kNotConnected;
}

int DBService::DeleteViewItemInfo(const std::string& viewItemGuid) {
    return viewItemInfoDao_ ? viewItemInfoDao_->DeleteViewItemInfoImp(viewItemGuid) : kNotConnected;
}

int DBService::DeleteViewItemInfo(const T_ViewItemInfo* sources, int count) {
    return viewItemInfoDao_ ? viewItemInfoDao_->DeleteViewItemInfoImp(sources, count)
                            : kNotConnected;
}

T_ViewItemInfo* DBService::QueryViewItemInfo(const std::string& viewItemGuid) {
    return viewItemInfoDao_ ? viewItemInfoDao_->QueryViewItemInfoImp(viewItemGuid) : nullptr;
}

T_ViewItemInfoList* DBService::QueryViewItemInfo(const T_ViewItem* items, int count) {
    return viewItemInfoDao_ ? viewItemInfoDao_->QueryViewItemInfoImp(items, count) : nullptr;
}

void DBService::ReleaseViewItemInfo(T_ViewItemInfo* source) {
    if (viewItemInfoDao_) viewItemInfoDao_->ReleaseViewItemInfo(source);
}

void DBService::ReleaseViewItemInfoList(T_ViewItemInfoList* list) {
    if (viewItemInfoDao_) viewItemInfoDao_->ReleaseViewItemInfoList(list);
}

int DBService::InsertCarousel(const T_CarouselInfo& entry) {
    return carouselDao_ ? carouselDao_->InsertCarouselImp(entry) : kNotConnected;
}

int DBService::InsertCarousel(const T_CarouselInfo* entries, int count) {
    return carouselDao_ ? carouselDao_->InsertCarouselImp(entries, count) : kNotConnected;
}

int DBService::UpdateCarousel(const T_CarouselInfo& entry) {
    return carouselDao_ ? carouselDao_->UpdateCarouselImp(entry) : kNotConnected;
}

int DBService::DeleteCarousel(const std::string& itemInfoGuid) {
    return carouselDao_ ? carouselDao_->DeleteCarouselImp(itemInfoGuid) : kNotConnected;
}

int DBService::DeleteCarousel(const T_CarouselInfo* entries, int count) {
    return carouselDao_ ? carouselDao_->DeleteCarouselImp(entries, count) : kNotConnected;
}

T_CarouselInfoList* DBService::QueryCarousel(std::string itemInfoGuid) {
    return carouselDao_ ? carouselDao_->QueryCarouselImp(std::move(itemInfoGuid)) : nullptr;
}

T_CarouselInfoList* DBService::QueryCarousel(const T_ViewItemInfo* sources, int count) {
    return carouselDao_ ? carouselDao_->QueryCarouselImp(sources, count) : nullptr;
}

void DBService::ReleaseCarouselList(T_CarouselInfoList* list) {
    if (carouselDao_) carouselDao_->ReleaseCarouselList(list);
}

int DBService::InsertEMapInfo(const T_EMapInfo* maps, int count) {
    return eMapDao_ ? eMapDao_->InsertEMapInfoImp(maps, count) : kNotConnected;
}

int DBService::UpdateEMapInfo(const T_EMapInfo* maps, int count) {
    return eMapDao_ ? eMapDao_->UpdateEMapInfoImp(maps, count) : kNotConnected;
}

int DBService::DeleteEMapInfo(const T_EMapInfo* maps, int count) {
    return eMapDao_ ? eMapDao_->DeleteEMapInfoImp(maps, count) : kNotConnected;
}

T_EMapInfoList* DBService::QueryEMapInfo(const T_EMapInfo* keys, int count, bool unused) {
    return eMapDao_ ? eMapDao_->QueryEMapInfoImp(keys, count, unused) : nullptr;
}

void DBService::ReleaseEMapInfoList(T_EMapInfoList* list) {
    if (eMapDao_) eMapDao_->ReleaseEMapInfo(list);
}

int DBService::InsertEMapItemInfo(const T_EMapItemInfo* items, int count) {
    return eMapDao_ ? eMapDao_->InsertEMapItemInfoImp(items, count) : kNotConnected;
}

int DBService::UpdateEMapItemInfo(const T_EMapItemInfo* items, int count) {
    return eMapDao_ ? eMapDao_->UpdateEMapItemInfoImp(items, count) : kNotConnected;
}

int DBService::DeleteEMapItemInfo(const T_EMapInfo* maps, int count) {
    return eMapDao_ ? eMapDao_->DeleteEMapItemInfoImp(maps, count) : kNotConnected;
}

int DBService::DeleteEMapItemInfo(const T_EMapItemInfo* items, int count) {
    return eMapDao_ ? eMapDao_->DeleteEMapItemInfoImp(items, count) : kNotConnected;
}

T_EMapItemInfoList* DBService::QueryEMapItemInfo(const T_EMapInfo* maps, int count) {
    return eMapDao_ ? eMapDao_->QueryEMapItemInfoImp(maps, count) : nullptr;
}

void DBService::ReleaseEMapItemInfoList(T_EMapItemInfoList* list) {
    if (eMapDao_) eMapDao_->ReleaseEMapItemInfoListImp(list);
}

int DBService::InsertNodeInfo(const T_NodeParam* nodes, int count) {
    return nodeInfo_ ? nodeInfo_->InsertNodeInfoImp(nodes, count) : kNotConnected;
}

int DBService::UpdateNodeInfo(const T_NodeParam* nodes, int count) {
    return nodeInfo_ ? nodeInfo_->UpdateNodeInfoImp(nodes, count) : kNotConnected;
}

int DBService::DeleteNodeInfo(const T_NodeParam* nodes, int count) {
    return nodeInfo_ ? nodeInfo_->DeleteNodeInfoImp(nodes, count) : kNotConnected;
}

T_NodeParamList* DBService::QueryNodeInfo(const T_NodeParam* keys, int count) {
    return nodeInfo_ ? nodeInfo_->QueryNodeInfoImp(keys, count) : nullptr;
}

void DBService::ReleaseNodeInfo(T_NodeParamList* list) {
    if (nodeInfo_) nodeInfo_->ReleaseNodeInfo(list);
}

int DBService::InsertNodeElement(const T_NodeElementParam* elements, int count) {
    return nodeElementParam_ ? nodeElementParam_->InsertNodeElementImp(elements, count)
                             : kNotConnected;
}

int DBService::UpdateNodeElement(const T_NodeElementParam* elements, int count) {
    return nodeElementParam_ ? nodeElementParam_->UpdateNodeElementImp(elements, count)
                             : kNotConnected;
}

int DBService::DeleteNodeElement(const T_NodeParam* nodes, int count) {
    return nodeElementParam_ ? nodeElementParam_->DeleteNodeElementImp(nodes, count)
                             : kNotConnected;
}

int DBService::DeleteNodeElement(const T_NodeElementParam* elements, int count) {
    return nodeElementParam_ ? nodeElementParam_->DeleteNodeElementImp(elements, count)
                             : kNotConnected;
}

T_NodeElementList* DBService::QueryNodeElement(const T_NodeParam* nodes, int count) {
    return nodeElementParam_ ? nodeElementParam_->QueryNodeElementImp(nodes, count) : nullptr;
}

T_NodeElementList* DBService::QueryNodeElement(const T_NodeElementParam* elements, int count) {
    return nodeElementParam_ ? nodeElementParam_->QueryNodeElementImp(elements, count) : nullptr;
}

void DBService::ReleaseNodeElementList(T_NodeElementList* list) {
    if (nodeElementParam_) nodeElementParam_->ReleaseNodeElementList(list);
}

int DBService::InsertAlarmInfo(const T_AlarmInfo& alarm) {
    return alarmInfoDao_ ? alarmInfoDao_->InsertAlarmInfoImp(alarm) : kNotConnected;
}

int DBService::UpdateAlarmInfo(const T_AlarmInfo& alarm) {
    return alarmInfoDao_ ? alarmInfoDao_->UpdateAlarmInfoImp(alarm) : kNotConnected;
}

int DBService::DeleteAlarmInfo(const std::string& guid, std::string channelGuid) {
    return alarmInfoDao_ ? alarmInfoDao_->DeleteAlarmInfoImp(guid, std::move(channelGuid))
                         : kNotConnected;
}

T_AlarmInfoList* DBService::QueryAlarmInfo(const std::string& guid, std::string channelGuid) {
    return alarmInfoDao_ ? alarmInfoDao_->QueryAlarmInfoImp(guid, std::move(channelGuid)) : nullptr;
}

T_AlarmInfoList* DBService::QueryAlarmInfo(const T_SearchAlarmParam* request, int& total) {
    return alarmInfoDao_ ? alarmInfoDao_->QueryAlarmInfoImp(request, total) : nullptr;
}

void DBService::ReleaseAlarmInfoList(T_AlarmInfoList* list) {
    if (alarmInfoDao_) alarmInfoDao_->ReleaseAlarmInfo(list);
}

int DBService::InsertFaceCapture(const T_FaceCapture* faces, int count) {
    return faceCaptureDao_ ? faceCaptureDao_->insertFaceCaptureImp(faces, count) : kNotConnected;
}

T_FaceCaptureList* DBService::QueryFaceCapture(unsigned int beginTime, unsigned int endTime) {
    return faceCaptureDao_ ? faceCaptureDao_->queryFaceCaptureImp(beginTime, endTime) : nullptr;
}

void DBService::ReleaseFaceCaptureLsit(T_FaceCaptureList* list) {
    if (faceCaptureDao_) faceCaptureDao_->relesseFaceCaptureList(list);
}

int DBService::InsertFaceCompare(const T_FaceCompare& comparison) {
    return faceCompareDao_ ? faceCompareDao_->insertFaceCompareImp(comparison) : kNotConnected;
}

T_FaceCompareList* DBService::QueryFaceCompare(unsigned int beginTime, unsigned int endTime) {
    return faceCompareDao_ ? faceCompareDao_->queryFaceCompareImp(beginTime, endTime) : nullptr;
}

void DBService::ReleaseFaceCompareLsit(T_FaceCompareList* list) {
    if (faceCompareDao_) faceCompareDao_->releaseFaceCompareList(list);
}

}  // namespace dbservice
