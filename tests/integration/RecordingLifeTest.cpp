#include "tests/support/engines/ServiceTest.h"

namespace dbservice {
namespace {

class StorageLife : public ServiceTest {};
class ArchiveInfoLife : public ServiceTest {};
class CameraScheduleLife : public ServiceTest {};
class ScheduleLife : public ServiceTest {};

T_Storage storage(const char* channel, const char* path) {
    T_Storage storage;
    storage.Channel_Guid = channel;
    storage.DatabasePath = path;
    storage.SchedulesGuid = "s";
    storage.ManualRecordSecs = 60;
    storage.VideoStreamType = 1;
    return storage;
}

std::string paths(T_StorageList* list) {
    return joined(list, &T_Storage::DatabasePath, &DBService::ReleaseStorage);
}

TEST_P(StorageLife, FromInsertToDelete) {
    // Backslashes are the caller's to escape.
    const T_Storage two[] = {storage("b", R"(\\\\nas\\video)"), storage("a", "/video")};
    EXPECT_EQ(0, service().InsertStorage(two, 2));
    EXPECT_EQ(-1062, service().InsertStorage(two, 1));
    EXPECT_EQ(R"(\\nas\video|/video)", paths(service().QueryStorage("")));
    EXPECT_EQ("/video", paths(service().QueryStorage("a")));
    EXPECT_EQ("null", paths(service().QueryStorage("unknown")));

    EXPECT_EQ(0, service().UpdateStorage(storage("a", "/archive")));
    const T_Storage replaced[] = {storage("b", "/first"), storage("c", "/third")};
    EXPECT_EQ(0, service().UpdateStorage(replaced, 2));
    EXPECT_EQ("/archive|/first|/third", paths(service().QueryStorage("")));
    EXPECT_EQ(1, service().DeleteStorage("a"));
    EXPECT_EQ(2, service().DeleteStorage(replaced, 2));
    EXPECT_EQ("null", paths(service().QueryStorage("")));
}

TEST_P(ArchiveInfoLife, FromInsertToDelete) {
    const auto times = [](const char* guid) {
        return joined(service().QueryArchiveInfo(guid), &T_ArchiveInfo::ArchiveTime,
                      &DBService::ReleaseArchiveInfoList);
    };
    EXPECT_EQ("null", times(""));
    EXPECT_EQ(0, service().InsertArchiveInfo({"a", "2026-02"}));
    EXPECT_EQ(0, service().InsertArchiveInfo({"b", "2026-01"}));
    EXPECT_EQ(-1062, service().InsertArchiveInfo({"b", "2026-03"}));
    EXPECT_EQ("2026-01|2026-02", times(""));
    EXPECT_EQ(0, service().UpdateArchiveInfo({"b", "2026-09"}));
    EXPECT_EQ(0, service().UpdateArchiveInfo({"unknown", "2026-09"}));
    EXPECT_EQ("2026-09", times("b"));
    EXPECT_EQ(1, service().DeleteArchiveInfo("a"));
    EXPECT_EQ("2026-09", times(""));
}

TEST_P(CameraScheduleLife, FromInsertToDelete) {
    const auto types = [](const char* camera) {
        T_CameraScheduleList* list = service().QueryCameraSchedule(camera);
        std::string result = list == nullptr ? "null" : "";
        for (int i = 0; list != nullptr && i < list->count; ++i) {
            result += (i == 0 ? "" : "|") + list->items[i].Guid + "/" +
                      std::to_string(list->items[i].OnlineSchedulingType);
        }
        service().ReleaseCameraSchedule(list);
        return result;
    };
    const auto schedule = [](const char* guid, const char* camera, int type) {
        T_CameraSchedule record;
        record.Guid = guid;
        record.Camera_Guid = camera;
        record.OnlineSchedulingType = type;
        return record;
    };
    EXPECT_EQ(0, service().InsertCameraSchedule(schedule("a", "c", 1)));
    EXPECT_EQ(0, service().InsertCameraSchedule(schedule("b", "c", 2)));
    EXPECT_EQ(0, service().InsertCameraSchedule(schedule("x", "d", 3)));
    EXPECT_EQ("x/3", types("d"));
    EXPECT_EQ(0, service().UpdateCameraSchedule(schedule("ignored", "c", 9)));
    EXPECT_EQ("a/9|b/9", types("c"));  // every row of the camera
    EXPECT_EQ(0, service().DeleteCameraSchedule(""));
    EXPECT_EQ(2, service().DeleteCameraSchedule("c"));
    EXPECT_EQ("null", types("c"));
    EXPECT_EQ("x/3", types(""));
}

TEST_P(ScheduleLife, EachKind) {
    const auto life = [](auto insert, auto update, auto remove, auto query, auto release) {
        const auto names = [&](const char* guid) {
            return joined((service().*query)(guid), &T_Schedules::Name, release);
        };
        EXPECT_EQ("null", names(""));
        EXPECT_EQ(0, (service().*insert)({"a", "day", "text", 1}));
        EXPECT_EQ(0, (service().*insert)({"b", "night", std::string(65'535, 'x'), 2}));
        EXPECT_EQ(-1406, (service().*insert)({"c", "long", std::string(65'536, 'x'), 2}));
        EXPECT_EQ(-1062, (service().*insert)({"a", "again", "", 1}));
        EXPECT_EQ(0, (service().*update)({"a", "noon", "other", 3}));
        EXPECT_EQ("noon", names("a"));
        EXPECT_EQ(1, (service().*remove)("b"));
        EXPECT_EQ("noon", names(""));
    };
    life(&DBService::InsertOnlineSchedules, &DBService::UpdateOnlineSchedules,
         &DBService::DeleteOnlineSchedules, &DBService::QueryOnlineSchedules,
         &DBService::ReleaseOnlineSchedules);
    life(&DBService::InsertRecordSchedules, &DBService::UpdateRecordSchedules,
         &DBService::DeleteRecordSchedules, &DBService::QueryRecordSchedules,
         &DBService::ReleaseRecordSchedules);
    life(&DBService::InsertSpeedupSchedules, &DBService::UpdateSpeedupSchedules,
         &DBService::DeleteSpeedupSchedules, &DBService::QuerySpeedupSchedules,
         &DBService::ReleaseSpeedupSchedules);
}

INSTANTIATE_TEST_SUITE_P(Engines, StorageLife, kEngines, engineName);
INSTANTIATE_TEST_SUITE_P(Engines, ArchiveInfoLife, kEngines, engineName);
INSTANTIATE_TEST_SUITE_P(Engines, CameraScheduleLife, kEngines, engineName);
INSTANTIATE_TEST_SUITE_P(Engines, ScheduleLife, kEngines, engineName);

}  // namespace
}  // namespace dbservice
