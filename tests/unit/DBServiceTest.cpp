// The life of the service object, its raw statements, and the helpers.
#include <gmock/gmock.h>

#include <cstddef>
#include <cstdlib>
#include <limits>
#include <regex>
#include <type_traits>

#include "dbaccess/LastError.h"
#include "dbservice/DBService.h"
#include "tests/unit/ScriptedDataAccess.h"

namespace dbservice {
namespace {

using scripted::script;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// The lists have their members in the order that callers are compiled for.
static_assert(offsetof(T_ServerInfoList, items) < offsetof(T_ServerInfoList, count));
static_assert(offsetof(T_FaceCaptureList, items) < offsetof(T_FaceCaptureList, count));
static_assert(offsetof(T_FaceCompareList, items) < offsetof(T_FaceCompareList, count));
static_assert(offsetof(T_DeviceList, count) < offsetof(T_DeviceList, items));
static_assert(offsetof(T_CHANNEL_LIST, count) < offsetof(T_CHANNEL_LIST, items));

class Lifecycle : public testing::Test {
protected:
    Lifecycle() { script() = {}; }
    ~Lifecycle() override { DBService::Cleanup(); }

    static DB_CONNECTION_PROPERTY settings(const std::string& host) {
        return {host, 3307, "account", "password", "vms", 2, 4, false, true};
    }
};

TEST_F(Lifecycle, SettingsHaveDefaults) {
    const DB_CONNECTION_PROPERTY property;
    EXPECT_EQ("", property.host + property.user + property.password + property.dbName);
    EXPECT_EQ(3306, property.port);
    EXPECT_EQ(5U, property.accessParamA);
    EXPECT_EQ(10U, property.accessParamB);
    EXPECT_TRUE(property.accessFlagA && property.accessFlagB);
}

TEST_F(Lifecycle, InitializeConnectsAndSetsTheCharset) {
    EXPECT_EQ(nullptr, DBService::GetDBServiceObject());
    EXPECT_EQ(1, DBService::Initialize(settings("db1")));
    EXPECT_THAT(script().calls, ElementsAre("connect db1: 3307 account password",
                                            "Initialize : 2 4 0 1", "Execute vms: SET NAMES utf8"));
    ASSERT_NE(nullptr, DBService::GetDBServiceObject());
    EXPECT_EQ("vms", DBService::GetDBServiceObject()->getDBName());
}

TEST_F(Lifecycle, SecondInitializeKeepsTheFirstSettings) {
    DBService::Initialize(settings("db1"));
    DBService* const first = DBService::GetDBServiceObject();
    testing::internal::CaptureStdout();
    for (const bool same : {true, false}) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(1, DBService::Initialize(settings(same ? "db1" : "db2")));
        EXPECT_EQ(same, testing::internal::GetCapturedStderr().empty());
    }
    EXPECT_EQ("DBService::Initialize\nDBService::Initialize\n",
              testing::internal::GetCapturedStdout());
    EXPECT_EQ(first, DBService::GetDBServiceObject());
    EXPECT_EQ(3U, script().calls.size());
}

TEST_F(Lifecycle, FailedInitializeKeepsTheObjectUntilCleanup) {
    script().initializes = false;
    testing::internal::CaptureStderr();
    EXPECT_EQ(-1, DBService::Initialize(settings("db1")));
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                HasSubstr("Initialize: db Initialize error!"));
    EXPECT_NE(nullptr, DBService::GetDBServiceObject());
    EXPECT_EQ("Execute vms: SET NAMES utf8", script().calls.back());

    script().initializes = true;
    EXPECT_EQ(1, DBService::Initialize(settings("db1")));
    EXPECT_EQ(3U, script().calls.size());  // nothing was tried again

    DBService::Cleanup();
    EXPECT_EQ(1, DBService::Initialize(settings("db1")));
    EXPECT_EQ(7U, script().calls.size());
}

TEST_F(Lifecycle, CleanupMayComeAtAnyTime) {
    EXPECT_EQ(1, DBService::Cleanup());
    DBService::Initialize(settings("db1"));
    EXPECT_EQ(1, DBService::Cleanup());
    EXPECT_EQ(nullptr, DBService::GetDBServiceObject());
    EXPECT_EQ("disconnect : ", script().calls.back());
    EXPECT_EQ(1, DBService::Cleanup());
}

TEST_F(Lifecycle, CallsBehindCleanupAreAnsweredAndNamed) {
    DBService::Initialize(settings("db1"));
    DBService* const late = DBService::GetDBServiceObject();
    DBService::Cleanup();
    script().calls.clear();
    EXPECT_EQ(-1, late->InsertServerInfo({}));
    EXPECT_EQ(nullptr, late->QueryDevice(""));
    EXPECT_THAT(dbaccess::LastError().message, HasSubstr("behind DBService::Cleanup"));
    late->ReleaseDevice(nullptr);
    EXPECT_THAT(script().calls, IsEmpty());

    GTEST_FLAG_SET(death_test_style, "threadsafe");  // the log tells it once, in a new process
    EXPECT_EXIT(std::exit(late->Execute("e") == -1 ? 0 : 1), testing::ExitedWithCode(0),
                "error .* DBService: called behind Cleanup");

    EXPECT_EQ(1, DBService::Initialize(settings("db2")));
    EXPECT_EQ(0, DBService::GetDBServiceObject()->InsertServerInfo({}));
}

TEST_F(Lifecycle, RawStatementsPassThrough) {
    DBService::Initialize(settings("db1"));
    DBService& service = *DBService::GetDBServiceObject();
    script().calls.clear();
    script().results = {5'000'000'000, -1064, 3, 2};
    EXPECT_EQ(5'000'000'000, service.Insert("i"));
    EXPECT_EQ(-1064, service.Update("u"));
    std::deque<std::string> list{"a", "b"};
    EXPECT_EQ(3, service.Update(list));
    EXPECT_EQ(2, service.Execute("e"));
    DBService::ReleaseResulitSet(service.Query("q"));
    EXPECT_EQ(1, script().releasedSets);
    DBService::ReleaseResulitSet(nullptr);
    EXPECT_THAT(script().calls,
                ElementsAre("Insert vms: i", "Update vms: u", "Update list vms: a",
                            "Update list vms: b", "Execute vms: e", "Query vms: q"));
}

TEST_F(Lifecycle, AnObjectMadeByHandIsConnectedToNothing) {
    static_assert(!std::is_copy_constructible<DBService>::value, "it owns its connections");
    DBService service;
    std::deque<std::string> list{"a"};
    EXPECT_EQ("", service.getDBName());
    EXPECT_EQ(-1, service.Insert("i"));
    EXPECT_EQ(-1, service.Update("u"));
    EXPECT_EQ(-1, service.Update(list));
    EXPECT_EQ(-1, service.Execute("e"));
    EXPECT_EQ(nullptr, service.Query("q"));
    EXPECT_THAT(script().calls, IsEmpty());
}

TEST_F(Lifecycle, AnswersWithoutAStatementHaveALastErrorOfTheirOwn) {
    DBService::Initialize(settings("db1"));
    DBService& service = *DBService::GetDBServiceObject();
    script().calls.clear();
    DBService byHand;
    T_SearchAlarmParam noChannels;
    T_EMapInfo untouched{};
    untouched.EditFlag = 3;
    int total = 0;
    const auto expectAfterwards = [](int number, bool answered) {
        EXPECT_TRUE(answered);
        EXPECT_EQ(number, dbaccess::LastError().number);
        dbaccess::SetLastError({1062, "23000", "of an earlier call"});
    };
    expectAfterwards(1, byHand.Insert("i") == -1 && byHand.QueryDevice("") == nullptr);
    expectAfterwards(1, !byHand.IsExistDevice({}));
    expectAfterwards(1, service.UpdateDevice(nullptr, 1) == -1);
    expectAfterwards(1, service.QueryAlarmInfo(&noChannels, total) == nullptr);
    expectAfterwards(1, service.DeleteEMapInfo(&untouched, 1) == -1);
    expectAfterwards(0, service.InsertEMapInfo(&untouched, 1) == 0);
    expectAfterwards(0, service.InsertAlarmInfo({}) == 0);
    EXPECT_THAT(script().calls, IsEmpty());
}

TEST(Helpers, NumbersAsText) {
    EXPECT_EQ("-5", Itostr(-5));
    EXPECT_EQ("-2147483648", Itostr(std::numeric_limits<int>::min()));
    EXPECT_EQ("4294967295", Uitostr(std::numeric_limits<unsigned int>::max()));
}

TEST(Helpers, GuidsAreUniqueAndTraced) {
    testing::internal::CaptureStdout();
    const std::string first = getGuid();
    const std::string second = getGuid();
    EXPECT_EQ(first + "\n" + second + "\n", testing::internal::GetCapturedStdout());
    EXPECT_NE(first, second);
    EXPECT_TRUE(std::regex_match(first, std::regex("[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}")));
}

}  // namespace
}  // namespace dbservice
