#include "dbservice/DBService.h"

#include <atomic>
#include <cstdio>
#include <new>
#include <tuple>
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
#include "dbservice/statement/Result.h"
#include "log/Log.h"
#include "threadlib/ReadWriteMutex.h"

namespace dbservice {

using statement::noDao;

namespace {

// The object's place, which is never freed: behind Cleanup an unconnected one stands there, so that
// a call that comes too late is answered, and told what it did, in place of meeting freed memory.
alignas(DBService) unsigned char g_place[sizeof(DBService)];
ThreadLib::ReadWriteMutex g_svr_dbvisitor2;
std::atomic<DBService*> g_instance_dbvisitor2{nullptr};
DB_CONNECTION_PROPERTY g_settings;  // of the first Initialize; guarded by the lock

auto allOf(const DB_CONNECTION_PROPERTY& settings) {
    return std::tie(settings.host, settings.port, settings.user, settings.password, settings.dbName,
                    settings.accessParamA, settings.accessParamB, settings.accessFlagA,
                    settings.accessFlagB);
}

class WriteGuard {
public:
    WriteGuard() { g_svr_dbvisitor2.LockWrite(); }
    WriteGuard(const WriteGuard&) = delete;
    WriteGuard& operator=(const WriteGuard&) = delete;
    ~WriteGuard() { g_svr_dbvisitor2.Unlock(); }
};

constexpr int kDone = 1;
constexpr int kFailed = -1;

}  // namespace

int DBService::Initialize(const DB_CONNECTION_PROPERTY& settings) {
    int result = kDone;
    {
        const WriteGuard guard;
        if (g_instance_dbvisitor2 == nullptr) {
            auto* service = new (g_place) DBService;
            g_instance_dbvisitor2 = service;  // stays, connected or not
            if (!service->creatDBAccess(settings)) {
                Qz_Write_Log(kQzLogError, "Initialize", "db Initialize error!");
                result = kFailed;
            }
            g_settings = settings;
        } else if (allOf(settings) != allOf(g_settings)) {
            Qz_Write_Log(kQzLogWarning, "Initialize",
                         "other settings than those of the first Initialize have no effect");
        }
    }
    std::puts("DBService::Initialize");
    return result;
}

int DBService::Cleanup() {
    const WriteGuard guard;
    if (DBService* const service = g_instance_dbvisitor2.exchange(nullptr)) {
        service->~DBService();
        new (g_place) DBService;
    }
    g_settings = {};  // a password among them
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
        using Dao = std::remove_reference_t<decltype(*dao)>;
        dao = std::make_unique<Dao>(dataAccess_.get(), dbName_);
    };
    const auto createAll = [&create](auto&... daos) { (create(daos), ...); };
    // In this order by contract. The destructor has another one, as deliberately.
    createAll(schedulesMgr_, deviceMgr_, storageMgr_, userMgr_, serverInfoDao_, deviceDao_,
              channelDao_, channelConfigDao_, storageDao_, cameraScheduleDao_, onlineSchedulesDao_,
              speedupSchedulesDao_, recordSchedulesDao_, viewItemInfoDao_, viewItemDao_,
              viewInfoDao_, groupInfoDao_, viewGroupInfoDao_, userInfoDao_, userRightsDao_,
              userCamerasDao_, carouselDao_, archiveInfoDao_, alarmInfoDao_, eMapDao_,
              faceCaptureDao_, faceCompareDao_);
    // No NodeInfo and no NodeElementParam, deliberately: their operations answer as if not there.
    const bool connected = dataAccess_->Initialize(settings.accessParamA, settings.accessParamB,
                                                   settings.accessFlagA, settings.accessFlagB);
    dataAccess_->Execute(dbName_, "SET NAMES utf8");
    return connected;
}

DBService::~DBService() {
    const auto destroyAll = [](auto&... objects) { (objects.reset(), ...); };
    // In this order by contract, the access layer first: no destructor uses another object.
    destroyAll(dataAccess_, schedulesMgr_, deviceMgr_, storageMgr_, userMgr_, serverInfoDao_,
               storageDao_, cameraScheduleDao_, onlineSchedulesDao_, speedupSchedulesDao_,
               recordSchedulesDao_, deviceDao_, channelDao_, channelConfigDao_, viewItemInfoDao_,
               viewItemDao_, viewInfoDao_, groupInfoDao_, viewGroupInfoDao_, userInfoDao_,
               userRightsDao_, userCamerasDao_, carouselDao_, archiveInfoDao_, alarmInfoDao_,
               eMapDao_, nodeInfo_, nodeElementParam_, faceCaptureDao_, faceCompareDao_);
}

std::string DBService::getDBName() const {
    return dbName_;
}

std::int64_t DBService::Insert(std::string statement) {
    return dataAccess_ ? dataAccess_->Insert(dbName_, std::move(statement)) : noDao();
}

int DBService::Update(std::string statement) {
    return dataAccess_ ? dataAccess_->Update(dbName_, std::move(statement)) : noDao();
}

int DBService::Update(std::deque<std::string>& statements) {
    return dataAccess_ ? dataAccess_->Update(dbName_, statements) : noDao();
}

int DBService::Execute(std::string statement) {
    return dataAccess_ ? dataAccess_->Execute(dbName_, std::move(statement)) : noDao();
}

dbaccess::ResultSet* DBService::Query(std::string statement) {
    return dataAccess_ ? dataAccess_->Query(dbName_, std::move(statement)) : noDao();
}

}  // namespace dbservice
