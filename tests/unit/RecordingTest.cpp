#include "dbservice/recording/OnlineSchedulingDao.h"
#include "dbservice/recording/SchedulesMgr.h"
#include "dbservice/recording/SchedulingTypeDao.h"
#include "dbservice/recording/SpeedupSchedulingDao.h"
#include "dbservice/recording/StorageMgr.h"
#include "tests/unit/StatementCases.h"

namespace dbservice {
namespace {

using scripted::script;

using Storages = ScriptedService;
using ArchiveInfos = ScriptedService;
using CameraSchedules = ScriptedService;
using Schedules = ScriptedService;

T_Storage someStorage(const char* channel) {
    T_Storage storage;
    storage.Channel_Guid = channel;
    storage.DatabasePath = "p1";
    storage.DatabasePathNonUNC = "p2";
    storage.ArchivePath = "p3";
    storage.ArchivePathNonUNC = "p4";
    storage.DBRepairStrateqy = 1;
    storage.SaveOnMotion = 15;
    storage.SaveStartEvent = "e1";
    storage.SaveStopEvent = "e2";
    storage.SchedulesGuid = "s";
    storage.ManualRecordSecs = 60;
    storage.VideoStreamType = -1;
    return storage;
}

TEST_F(Storages, Statements) {
    const std::string columns =
        "Channel_Guid,DatabasePath,DatabasePathNonUNC,ArchivePath,ArchivePathNonUNC,DBRepairStrateqy,ArchiveDb,ArchiveWhenDBFull,ArchiveMaxAge,DbSaveMode,EnableDbPreSecs,EnableDbPostSecs,DbPreSecs,DbPostSecs,AdminDbPreSecs,AdminDbPostSecs,DbLimitType,DbLimitCount,SaveOnEvent,SaveOnMotion,SaveStartEvent,SaveStopEvent,SchedulesGuid,ManualRecordSecs,VideoStreamType";
    const std::string row =
        "', 'p1', 'p2', 'p3', 'p4', 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 15, 'e1', 'e2', 's', 60, -1";
    const std::string probe = "Query select max(Id) as Id from storage";
    const T_Storage two[] = {someStorage("a"), someStorage("b")};
    check({
        {"insert",
         [&] { service().InsertStorage(two, 2); },
         {probe, "Insert insert into storage(" + columns + ",Id) values('a" + row + ", 8),('b" +
                     row + ", 9);"}},
        {"insert without records looks for the next Id first",
         [&] {
             EXPECT_EQ(-1, service().InsertStorage(nullptr, 1));
             EXPECT_EQ(-1, service().InsertStorage(two, 0));
         },
         {probe, probe}},
        {"replace",
         [&] { service().UpdateStorage(two, 2); },
         {"Execute replace into storage(" + columns + ") values('a" + row + "),('b" + row + ");"}},
        {"batch delete",
         [&] { service().DeleteStorage(two, 2); },
         {"Execute delete from storage where Channel_Guid='a' or Channel_Guid='b'"}},
        {"delete",
         [] { service().DeleteStorage(""); },
         {"Execute delete from storage where Channel_Guid =''"}},
        {"query one",
         [] { service().ReleaseStorage(service().QueryStorage("c")); },
         {"Query select " + columns + " from storage where Channel_Guid='c' order by Id"}},
        {"query all",
         [] { service().ReleaseStorage(service().QueryStorage("")); },
         {"Query select " + columns + " from storage order by Id"}},
        {"no records",
         [&] {
             EXPECT_EQ(-1, service().UpdateStorage(nullptr, 1));
             EXPECT_EQ(-1, service().DeleteStorage(two, 0));
         },
         {}},
    });
}

TEST_F(Storages, Results) {
    const T_Storage one = someStorage("a");
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertStorage(&one, 1); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().UpdateStorage(&one, 1); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().UpdateStorage(one); }));
    EXPECT_EQ(passedThrough(), resultsOf([&] { return service().DeleteStorage(&one, 1); }));
    EXPECT_EQ(passedThrough(), resultsOf([] { return service().DeleteStorage("a"); }));
    EXPECT_EQ(nullptr, service().QueryStorage(""));
}

TEST_F(Storages, Reads) {
    checkReads(
        {"string Channel_Guid",  "string DatabasePath",      "string DatabasePathNonUNC",
         "string ArchivePath",   "string ArchivePathNonUNC", "int DBRepairStrateqy",
         "int ArchiveDb",        "int ArchiveWhenDBFull",    "int ArchiveMaxAge",
         "int DbSaveMode",       "int EnableDbPreSecs",      "int EnableDbPostSecs",
         "int DbPreSecs",        "int DbPostSecs",           "int AdminDbPreSecs",
         "int AdminDbPostSecs",  "int DbLimitType",          "int DbLimitCount",
         "int SaveOnEvent",      "int SaveOnMotion",         "string SaveStartEvent",
         "string SaveStopEvent", "string SchedulesGuid",     "int ManualRecordSecs",
         "int VideoStreamType"},
        [] {
            T_StorageList* list = service().QueryStorage("");
            service().UpdateStorage(list->items[0]);
            service().ReleaseStorage(list);
        },
        "Update vms: update storage set DatabasePath = 'DatabasePath',DatabasePathNonUNC = 'DatabasePathNonUNC',ArchivePath = 'ArchivePath',ArchivePathNonUNC = 'ArchivePathNonUNC',DBRepairStrateqy = '6',ArchiveDb = '7',ArchiveWhenDBFull = '8',ArchiveMaxAge = '9',DbSaveMode = '10',EnableDbPreSecs = '11',EnableDbPostSecs = '12',DbPreSecs = '13',DbPostSecs = '14',AdminDbPreSecs = '15',AdminDbPostSecs = '16',DbLimitType = '17',DbLimitCount = '18',SaveOnEvent = '19',SaveOnMotion = '20',SaveStartEvent = 'SaveStartEvent',SaveStopEvent = 'SaveStopEvent',SchedulesGuid = 'SchedulesGuid',ManualRecordSecs = '24',VideoStreamType = '25' where Channel_Guid = 'Channel_Guid'");
}

TEST_F(Storages, AssignmentIsPartial) {
    T_Storage target;
    target.SchedulesGuid = "kept";
    target.ManualRecordSecs = 7;
    target.VideoStreamType = 8;
    target = someStorage("a");
    service().UpdateStorage(target);
    EXPECT_EQ(
        "Update vms: update storage set DatabasePath = 'p1',DatabasePathNonUNC = 'p2',ArchivePath = 'p3',ArchivePathNonUNC = 'p4',DBRepairStrateqy = '1',ArchiveDb = '0',ArchiveWhenDBFull = '0',ArchiveMaxAge = '0',DbSaveMode = '0',EnableDbPreSecs = '0',EnableDbPostSecs = '0',DbPreSecs = '0',DbPostSecs = '0',AdminDbPreSecs = '0',AdminDbPostSecs = '0',DbLimitType = '0',DbLimitCount = '0',SaveOnEvent = '0',SaveOnMotion = '15',SaveStartEvent = 'e1',SaveStopEvent = 'e2',SchedulesGuid = 'kept',ManualRecordSecs = '7',VideoStreamType = '8' where Channel_Guid = 'a'",
        script().calls.back());
}

TEST_F(ArchiveInfos, Statements) {
    const T_ArchiveInfo archive{"g", "2026-11-21 03:00"};
    check({
        {"insert",
         [&] { service().InsertArchiveInfo(archive); },
         {"Insert insert into archiveInfo(Guid,ArchiveTime) values('g', '2026-11-21 03:00');"}},
        {"delete",
         [] { service().DeleteArchiveInfo(""); },
         {"Execute delete from archiveInfo where Guid =''"}},
        {"query one",
         [] { service().ReleaseArchiveInfoList(service().QueryArchiveInfo("g")); },
         {"Query select Guid,ArchiveTime from archiveInfo where Guid='g' order by ArchiveTime"}},
        {"query all",
         [] { service().ReleaseArchiveInfoList(service().QueryArchiveInfo("")); },
         {"Query select Guid,ArchiveTime from archiveInfo order by ArchiveTime"}},
    });
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertArchiveInfo(archive); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().UpdateArchiveInfo(archive); }));
    EXPECT_EQ(passedThrough(), resultsOf([] { return service().DeleteArchiveInfo("g"); }));
    EXPECT_EQ(nullptr, service().QueryArchiveInfo(""));
    checkReads(
        {"string Guid", "string ArchiveTime"},
        [] {
            T_ArchiveInfoList* list = service().QueryArchiveInfo("");
            service().UpdateArchiveInfo(list->items[0]);
            service().ReleaseArchiveInfoList(list);
        },
        "Update vms: update archiveInfo set ArchiveTime = 'ArchiveTime' where Guid = 'Guid'");
}

TEST_F(CameraSchedules, Statements) {
    T_CameraSchedule schedule;
    schedule.Guid = "g";
    schedule.Camera_Guid = "c";
    schedule.OnlineSchedulingType = 1;
    schedule.OnlineSchedules_Guid = "o";
    schedule.SpeedupSchedulingType = -2;
    schedule.SpeedupSchedules_Guid = "s";
    const std::string columns =
        "Guid,Camera_Guid,OnlineSchedulingType,OnlineSchedules_Guid,SpeedupSchedulingType,SpeedupSchedules_Guid";
    check({
        {"insert",
         [&] { service().InsertCameraSchedule(schedule); },
         {"Insert insert into cameraschedule(" + columns + ") values('g','c',1,'o',-2,'s');"}},
        {"delete",
         [] { service().DeleteCameraSchedule(""); },
         {"Execute delete from cameraschedule where Camera_Guid=''"}},
        {"query one",
         [] { service().ReleaseCameraSchedule(service().QueryCameraSchedule("c")); },
         {"Query select " + columns + " from cameraschedule where Camera_Guid='c'"}},
        {"query all",
         [] { service().ReleaseCameraSchedule(service().QueryCameraSchedule("")); },
         {"Query select " + columns + " from cameraschedule"}},
    });
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertCameraSchedule(schedule); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().UpdateCameraSchedule(schedule); }));
    EXPECT_EQ(passedThrough(), resultsOf([] { return service().DeleteCameraSchedule("c"); }));
    EXPECT_EQ(nullptr, service().QueryCameraSchedule(""));
    checkReads(
        {"string Guid", "string Camera_Guid", "int OnlineSchedulingType",
         "string OnlineSchedules_Guid", "int SpeedupSchedulingType",
         "string SpeedupSchedules_Guid"},
        [] {
            T_CameraScheduleList* list = service().QueryCameraSchedule("");
            service().UpdateCameraSchedule(list->items[0]);
            service().ReleaseCameraSchedule(list);
        },
        "Update vms: update cameraschedule set Camera_Guid = 'Camera_Guid',OnlineSchedulingType = '3',OnlineSchedules_Guid = 'OnlineSchedules_Guid',SpeedupSchedulingType = '5',SpeedupSchedules_Guid = 'SpeedupSchedules_Guid' where Camera_Guid = 'Camera_Guid'");
}

/// The operations of one kind of schedules, which all kinds have in common.
struct ScheduleOperations {
    std::string table;
    int (DBService::*insert)(const T_Schedules&);
    int (DBService::*update)(const T_Schedules&);
    int (DBService::*remove)(const std::string&);
    T_SchedulesList* (DBService::*query)(const std::string&);
    void (DBService::*release)(T_SchedulesList*);
};

const ScheduleOperations kKinds[] = {
    {"onlineschedules", &DBService::InsertOnlineSchedules, &DBService::UpdateOnlineSchedules,
     &DBService::DeleteOnlineSchedules, &DBService::QueryOnlineSchedules,
     &DBService::ReleaseOnlineSchedules},
    {"recordschedules", &DBService::InsertRecordSchedules, &DBService::UpdateRecordSchedules,
     &DBService::DeleteRecordSchedules, &DBService::QueryRecordSchedules,
     &DBService::ReleaseRecordSchedules},
    {"speedupschedules", &DBService::InsertSpeedupSchedules, &DBService::UpdateSpeedupSchedules,
     &DBService::DeleteSpeedupSchedules, &DBService::QuerySpeedupSchedules,
     &DBService::ReleaseSpeedupSchedules},
};

TEST_F(Schedules, StatementsOfEachKind) {
    const T_Schedules schedule{"g", "na'me", "mo-fr", 2};
    for (const ScheduleOperations& kind : kKinds) {
        SCOPED_TRACE(kind.table);
        // The Id is the largest one itself, and the speed-up schedules have none.
        std::vector<std::string> insert{
            "Query select max(Id) as Id from " + kind.table,
            "Insert insert into " + kind.table +
                "(Guid,Name,Schedules,SchedulesType,Id) values('g','na'me','mo-fr',2,7);"};
        if (kind.table == "speedupschedules") {
            insert = {
                "Insert insert into speedupschedules(Guid,Name,Schedules,SchedulesType) values('g','na'me','mo-fr',2);"};
        }
        const auto query = [&](const char* guid) {
            return [&kind, guid] { (service().*kind.release)((service().*kind.query)(guid)); };
        };
        const std::string select =
            "Query select Guid,Name,Schedules,SchedulesType from " + kind.table;
        check({
            {"insert", [&] { (service().*kind.insert)(schedule); }, insert},
            {"delete",
             [&] { (service().*kind.remove)(""); },
             {"Execute delete from " + kind.table + " where Guid=''"}},
            {"query one", query("g"), {select + " where Guid='g'"}},
            {"query all", query(""), {select}},
        });
        EXPECT_EQ(folded(), resultsOf([&] { return (service().*kind.insert)(schedule); }));
        EXPECT_EQ(folded(), resultsOf([&] { return (service().*kind.update)(schedule); }));
        EXPECT_EQ(passedThrough(), resultsOf([&] { return (service().*kind.remove)("g"); }));
        EXPECT_EQ(nullptr, (service().*kind.query)("unknown"));
        checkReads(
            {"string Guid", "string Name", "string Schedules", "int SchedulesType"},
            [&] {
                T_SchedulesList* list = (service().*kind.query)("");
                (service().*kind.update)(list->items[0]);
                (service().*kind.release)(list);
            },
            "Update vms: update " + kind.table +
                " set Guid = 'Guid',Name = 'Name',Schedules = 'Schedules',SchedulesType = '4' where Guid = 'Guid'");
    }
}

TEST_F(Schedules, FirstIdIsZero) {
    check(
        {{"into an empty table",
          [] {
              service().InsertOnlineSchedules({"g", "", "", 1});
          },
          {"Query select max(Id) as Id from onlineschedules",
           "Insert insert into onlineschedules(Guid,Name,Schedules,SchedulesType,Id) values('g','','',1,0);"}}},
        "0");
}

TEST_F(Schedules, PlaceholdersTouchNoTable) {
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
