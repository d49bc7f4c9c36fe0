// Starting: the database is not there yet, refuses, or is there; the access layer and the service.
#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <fstream>

#include "dbaccess/DataAccess.h"
#include "dbservice/DBService.h"
#include "tests/support/engines/EngineTest.h"
#include "tests/support/engines/PrivateServer.h"

namespace dbaccess {
namespace {

using dbservice::DB_CONNECTION_PROPERTY;
using dbservice::DBService;
using Clock = std::chrono::steady_clock;
namespace fs = std::filesystem;

const std::string kDatabase = "vms";

/// A database whose server or directory comes and goes.
class InitializeTest : public testing::TestWithParam<Engine> {
protected:
    static void SetUpTestSuite() { server_ = std::make_unique<PrivateServer>(); }
    static void TearDownTestSuite() { server_.reset(); }

    InitializeTest() {
        appear();
        EXPECT_GE(
            newAccess(host())->Execute("", "create database if not exists vms charset utf8mb4"), 0);
        EXPECT_GE(newAccess(host())->Execute(kDatabase, "drop table if exists t"), 0);
    }
    ~InitializeTest() override { DBService::Cleanup(); }

    static PrivateServer& server() { return *server_; }

    std::string host() const {
        return GetParam() == Engine::Server ? server().socket() : "sqlite:" + directory();
    }
    std::string directory() const { return parent_.path() + "/databases"; }

    std::unique_ptr<DataAccess> newAccess(const std::string& host) const {
        return std::make_unique<DataAccess>(host, server().port(), server().user(),
                                            server().password());
    }
    DB_CONNECTION_PROPERTY settings() const {
        return {host(), 0, server().user(), server().password(), kDatabase, 2, 4, true, true};
    }

    void vanish() const {
        if (GetParam() == Engine::Server) return server().stop();
        fs::rename(directory(), directory() + ".away");
    }
    void appear() const {
        if (GetParam() == Engine::Server) return server().start();
        if (fs::exists(directory() + ".away")) fs::rename(directory() + ".away", directory());
        fs::create_directory(directory());
    }

private:
    static std::unique_ptr<PrivateServer> server_;
    const TemporaryDirectory parent_;
};

std::unique_ptr<PrivateServer> InitializeTest::server_;

TEST_P(InitializeTest, ADatabaseThatComesLaterIsUsedWithoutAnotherInitialize) {
    std::vector<std::string> hosts{host()};
    if (GetParam() == Engine::Server) hosts.push_back(server().host());
    for (const std::string& host : hosts) {
        SCOPED_TRACE(host);
        vanish();
        const auto access = newAccess(host);
        const auto withoutReconnect = newAccess(host);
        const auto begin = Clock::now();
        EXPECT_FALSE(access->Initialize(2, 4, true, true));
        EXPECT_EQ(2002, LastError().number);
        EXPECT_FALSE(withoutReconnect->Initialize(2, 4, false, true));
        for (int i = 0; i < 10; ++i) {
            EXPECT_EQ(-2002, access->Execute(kDatabase, "create table t(k VARCHAR(40))"));
            EXPECT_EQ(nullptr, access->Query(kDatabase, "select 1"));
            EXPECT_EQ(2002, LastError().number);
        }
        EXPECT_LT(Clock::now() - begin, std::chrono::seconds(1));
        appear();
        EXPECT_EQ(0, access->Execute(kDatabase, "create table t(k VARCHAR(40))"));
        EXPECT_EQ(-2006, withoutReconnect->Execute(kDatabase, "drop table t"));
        EXPECT_EQ(0, access->Execute(kDatabase, "drop table t"));
        EXPECT_TRUE(withoutReconnect->Initialize(1, 1, false, true));
        EXPECT_EQ(0, withoutReconnect->Execute(kDatabase, "create table t(k VARCHAR(40))"));
        EXPECT_EQ(0, access->Execute(kDatabase, "drop table t"));
    }
}

TEST_P(InitializeTest, TheServiceSurvivesADatabaseThatComesLater) {
    vanish();
    EXPECT_EQ(-1, DBService::Initialize(settings()));
    DBService* const service = DBService::GetDBServiceObject();
    ASSERT_NE(nullptr, service);
    EXPECT_EQ(-2002, service->InsertServerInfo({}));
    EXPECT_EQ(nullptr, service->QueryServerInfo(""));
    appear();
    EXPECT_EQ(0, service->Execute("create table t(k VARCHAR(40))"));
    const std::string camera = "\xF0\x9F\x93\xB7";  // four bytes: the charset is all of UTF-8
    EXPECT_EQ(1, service->Insert("insert into t(k) values('" + camera + "')"));
    EXPECT_EQ(camera, query(*newAccess(host()), kDatabase, "select k as v from t"));
}

TEST_P(InitializeTest, CleanupLeavesNothingOpen) {
    const auto descriptors = [] {
        return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
    };
    const auto cycle = [&] {
        EXPECT_EQ(1, DBService::Initialize(settings()));
        EXPECT_GE(DBService::GetDBServiceObject()->Execute("create table t(k VARCHAR(40))"), 0);
        EXPECT_EQ(0, DBService::GetDBServiceObject()->Execute("drop table t"));
        EXPECT_EQ(1, DBService::Cleanup());
    };
    cycle();
    const auto before = descriptors();
    for (int i = 0; i < 20; ++i)
        cycle();
    EXPECT_EQ(before, descriptors());
}

INSTANTIATE_TEST_SUITE_P(Engines, InitializeTest, kEngines, engineName);

}  // namespace
}  // namespace dbaccess
