#include "dbservice/recording/OnlineSchedulingDao.h"
#include "dbservice/recording/SchedulesMgr.h"
#include "dbservice/recording/SchedulingTypeDao.h"
#include "dbservice/recording/SpeedupSchedulingDao.h"
#include "dbservice/recording/StorageMgr.h"
#include "tests/unit/Operations.h"

namespace dbservice {
namespace {

using scripted::script;
using Schedules = ScriptedService;

TEST_F(Operations, Storages) {
    const auto release = &DBService::ReleaseStorage;
    const auto storages = recordsOf(db().QueryStorage(""), release);
    T_Storage assigned(storages[1]);
    assigned = storages[0];
    const Answers kRefused = {{"-1", "-1", "-1", "-1", "-1"}, {}, "-1"};
    check("InsertStorage", kZero, [&] { return db().InsertStorage(storages.data(), 2); });
    check("InsertStorage (null array)", kRefused, [] { return db().InsertStorage(nullptr, 1); });
    check("InsertStorage (count of 0)", kRefused,
          [&] { return db().InsertStorage(storages.data(), 0); });
    batch("UpdateStorage (batch)", kZero, storages, &DBService::UpdateStorage);
    single("UpdateStorage", storages[0], &DBService::UpdateStorage);
    single("UpdateStorage (the first assigned to the second)", assigned, &DBService::UpdateStorage);
    keyed("QueryStorage", kListOrNull, "Channel_Guid", &DBService::QueryStorage, release);
    batch("DeleteStorage (batch)", kCount, storages, &DBService::DeleteStorage);
    keyed("DeleteStorage", kCount, "Channel_Guid", &DBService::DeleteStorage);
}

TEST_F(Operations, ArchiveInfos) {
    const auto release = &DBService::ReleaseArchiveInfoList;
    const auto archives = recordsOf(db().QueryArchiveInfo(""), release);
    single("InsertArchiveInfo", archives[0], &DBService::InsertArchiveInfo);
    single("UpdateArchiveInfo", archives[0], &DBService::UpdateArchiveInfo);
    keyed("QueryArchiveInfo", kListOrNull, "Guid", &DBService::QueryArchiveInfo, release);
    keyed("DeleteArchiveInfo", kCount, "Guid", &DBService::DeleteArchiveInfo);
}

TEST_F(Operations, CameraSchedules) {
    const auto release = &DBService::ReleaseCameraSchedule;
    const auto schedules = recordsOf(db().QueryCameraSchedule(""), release);
    single("InsertCameraSchedule", schedules[0], &DBService::InsertCameraSchedule);
    single("UpdateCameraSchedule", schedules[0], &DBService::UpdateCameraSchedule);
    keyed("QueryCameraSchedule", kListOrNull, "Camera_Guid", &DBService::QueryCameraSchedule,
          release);
    keyed("DeleteCameraSchedule", kCount, "Camera_Guid", &DBService::DeleteCameraSchedule);
}

TEST_F(Operations, OnlineSchedules) {
    const auto release = &DBService::ReleaseOnlineSchedules;
    const auto schedules = recordsOf(db().QueryOnlineSchedules(""), release);
    single("InsertOnlineSchedules", schedules[0], &DBService::InsertOnlineSchedules);
    single("UpdateOnlineSchedules", schedules[0], &DBService::UpdateOnlineSchedules);
    keyed("QueryOnlineSchedules", kListOrNull, "Guid", &DBService::QueryOnlineSchedules, release);
    keyed("DeleteOnlineSchedules", kCount, "Guid", &DBService::DeleteOnlineSchedules);
}

TEST_F(Operations, RecordSchedules) {
    const auto release = &DBService::ReleaseRecordSchedules;
    const auto schedules = recordsOf(db().QueryRecordSchedules(""), release);
    single("InsertRecordSchedules", schedules[0], &DBService::InsertRecordSchedules);
    single("UpdateRecordSchedules", schedules[0], &DBService::UpdateRecordSchedules);
    keyed("QueryRecordSchedules", kListOrNull, "Guid", &DBService::QueryRecordSchedules, release);
    keyed("DeleteRecordSchedules", kCount, "Guid", &DBService::DeleteRecordSchedules);
}

TEST_F(Operations, SpeedupSchedules) {
    const auto release = &DBService::ReleaseSpeedupSchedules;
    const auto schedules = recordsOf(db().QuerySpeedupSchedules(""), release);
    single("InsertSpeedupSchedules", schedules[0], &DBService::InsertSpeedupSchedules);
    single("UpdateSpeedupSchedules", schedules[0], &DBService::UpdateSpeedupSchedules);
    keyed("QuerySpeedupSchedules", kListOrNull, "Guid", &DBService::QuerySpeedupSchedules, release);
    keyed("DeleteSpeedupSchedules", kCount, "Guid", &DBService::DeleteSpeedupSchedules);
}

TEST_F(Schedules, TheFirstIdIsZero) {
    script().columnsHoldTheirNames = false;
    db().InsertOnlineSchedules({"g", "n", "s", 1});
    EXPECT_EQ(
        "Insert vms: insert into onlineschedules(Guid,Name,Schedules,SchedulesType,Id) values('g','n','s',1,0);",
        script().calls.back());
}

TEST(RecordingPlaceholders, TouchNoTable) {
    const StorageMgr storages(nullptr, "vms");
    const SchedulesMgr schedules(nullptr, "vms");
    OnlineSchedulingDao online(nullptr, "vms");
    EXPECT_EQ(0, online.InsertOnlineSchedulingImp({}) + online.UpdateOnlineSchedulingImp({}) +
                     online.DeleteOnlineSchedulingImp("g"));
    EXPECT_EQ("", online.QueryOnlineSchedulingImp("g").Guid);
    SpeedupSchedulingDao speedup(nullptr, "vms");
    EXPECT_EQ(0, speedup.InsertSpeedupSchedulingImp({}) + speedup.UpdateSpeedupSchedulingImp({}) +
                     speedup.DeleteSpeedupSchedulingImp("g"));
    EXPECT_EQ("", speedup.QuerySpeedupSchedulingImp("g").Guid);
    EXPECT_EQ(0, SchedulingTypeDao(nullptr, "vms").Load());
    EXPECT_EQ("", SchedulingTypeDao(nullptr, "vms").QuerySchedulingTypeImp(1));
}

}  // namespace
}  // namespace dbservice
