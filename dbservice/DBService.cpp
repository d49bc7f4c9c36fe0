#include "dbservice/DBService.h"

#include <atomic>
#include <cstdio>
#include <utility>

#include "dbaccess/DataAccess.h"
#include "dbservice/accounts/ServerInfoDao.h"
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
    serverInfoDao_ = std::make_unique<ServerInfoDao>(dataAccess_.get(), dbName_);
    const bool connected = dataAccess_->Initialize(settings.accessParamA, settings.accessParamB,
                                                   settings.accessFlagA, settings.accessFlagB);
    dataAccess_->Execute(dbName_, "SET NAMES utf8");
    return connected;
}

DBService::~DBService() {
    dataAccess_.reset();
    serverInfoDao_.reset();
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

}  // namespace dbservice
