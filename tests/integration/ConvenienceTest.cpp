#include "dbservice/Convenience.h"
#include "tests/support/engines/ServiceTest.h"

namespace dbservice {
namespace {

using Convenience = ServiceTest;

template <class... Record>
void expectTables() {
    const auto found = [](const auto& table) {
        return countKeys(service(), table.name, table.column, {"x"}).ok();
    };
    EXPECT_TRUE((found(tableOf(static_cast<Record*>(nullptr))) && ...));
}

TEST_P(Convenience, TablesAndKeysOfInsertsAreThere) {
    expectTables<T_ServerInfo, T_UserInfo, T_UserCameras, T_Device, T_Channel, T_ChannelConfig,
                 T_Storage, T_ArchiveInfo, T_CameraSchedule, T_ViewGroupInfo, T_GroupInfo,
                 T_ViewInfo, T_ViewItem, T_ViewItemInfo, T_CarouselInfo, T_EMapInfo, T_EMapItemInfo,
                 T_AlarmInfo>();
    const auto schedule = keyed(&T_Schedules::Guid, newGuid());
    for (const auto insert : {&DBService::InsertOnlineSchedules, &DBService::InsertRecordSchedules,
                              &DBService::InsertSpeedupSchedules}) {
        EXPECT_EQ(0, (service().*insert)(schedule));
        const auto table = tableOf(insert, &schedule);
        EXPECT_EQ(1, countKeys(service(), table.name, table.column, {schedule.Guid}).count());
    }
}

TEST_P(Convenience, PagesStayAsTheyAreWhenRowsComeAndGo) {
    T_AlarmInfo alarms[5];
    for (T_AlarmInfo& alarm : alarms) {
        alarm.Guid = "abcde"[&alarm - alarms];
        alarm.BeginTime = "2026-11-21 03:00:00";
    }
    alarms[0].BeginTime += "\\'5";  // later than the others
    EXPECT_EQ(0, storeAlarms(service(), alarms, 4));
    AlarmPages pages(service(), "2026-11-21 03:00:00", "2026-11-21 03:00:01", "", 2);
    std::vector<T_AlarmInfo> page;
    EXPECT_EQ(2, check(pages.next(page)));
    EXPECT_EQ("b|c", joined(page, &T_AlarmInfo::Guid));
    EXPECT_EQ(1, check(service().DeleteAlarmInfo("b", "")));
    EXPECT_EQ(0, storeAlarm(service(), alarms[4]));
    EXPECT_EQ(2, check(pages.next(page)));
    EXPECT_EQ("d|e", joined(page, &T_AlarmInfo::Guid));
    EXPECT_EQ(1, check(pages.next(page)));
    EXPECT_EQ("a", joined(page, &T_AlarmInfo::Guid));
    EXPECT_EQ(0, check(pages.next(page)));

    T_FaceCompare face;
    face.addTime = 9;
    for (; face.addTime < 13; ++face.addTime)  // three faces each second, of which two are met
        for (face.name = "a"; face.name < "d"; ++face.name[0])
            EXPECT_EQ(0, service().InsertFaceCompare(face));
    std::string names;
    FaceComparisonPages faces(service(), 10, 12, 2);
    for (std::vector<T_FaceCompare> found; check(faces.next(found)) > 0;)
        names += joined(found, &T_FaceCompare::name) + ";";
    EXPECT_EQ("a|b;c|a;b|c;", names);
}

TEST_P(Convenience, AListReleasedBehindCleanupIsNamed) {
    EXPECT_EQ(0, service().InsertServerInfo(T_ServerInfo()));
    auto held = std::make_unique<Servers>(servers(service()));
    EXPECT_EQ(1U, held->size());
    EXPECT_DEBUG_DEATH((DBService::Cleanup(), held.reset()), "released behind DBService::Cleanup");
}

TEST(ConvenienceTimes, ThereAndBack) {
    Time time;
    for (const std::int64_t seconds : {-1LL, 0LL, 951782400LL, 2147483648LL}) {
        EXPECT_TRUE(parseTime(timeText(timeOf(seconds) + std::chrono::milliseconds(999)), time));
        EXPECT_EQ(seconds, secondsOf(time));
    }
    EXPECT_EQ("2038-01-19 03:14:08", timeText(time));
    EXPECT_THROW(timeNumber(time), std::out_of_range);
    EXPECT_EQ(2147483647U, timeNumber(time - std::chrono::seconds(1)));
    EXPECT_THROW(timeNumber(timeOf(-1)), std::out_of_range);
    EXPECT_THROW(timeOf(INT64_MAX), std::out_of_range);
    for (const char* text :
         {"", "2026-11-21", "2026-02-29 00:00:00", "2026-11-21 24:00:00", "2026-11-21 03:00:00Z",
          " 2026-11-21 03:00:00", "2026-11-21T03:00:00", "-999-01-01 00:00:00",
          "9999-12-31 23:59:59", "9999-99-99 99:99:99", "0000-00-00 00:00:00"})
        EXPECT_FALSE(parseTime(text, time)) << text;
}

TEST(ConvenienceGuid, IsARandomUuid) {
    const std::string guid = newGuid();
    EXPECT_THAT(guid, testing::MatchesRegex("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab]"
                                            "[0-9a-f]{3}-[0-9a-f]{12}"));
    EXPECT_NE(guid, newGuid());
}

INSTANTIATE_TEST_SUITE_P(Engines, Convenience, kEngines, engineName);

}  // namespace
}  // namespace dbservice
