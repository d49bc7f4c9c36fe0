#include "examples/Entities.h"

namespace demo {
namespace {

using dbservice::T_Schedules;
using dbservice::T_Storage;

void add(Table& table, const std::string& kind, const std::vector<T_Schedules>& schedules) {
    for (const T_Schedules& schedule : schedules)
        table.add({kind, schedule.Name, schedule.Schedules});
}

void show(DBService& service) {
    const std::string what = "Listing the schedules";
    Table table({"For", "Name", "Times"});
    add(table, "being on line",
        records(service, service.QueryOnlineSchedules(""), &DBService::ReleaseOnlineSchedules,
                what));
    add(table, "recording",
        records(service, service.QueryRecordSchedules(""), &DBService::ReleaseRecordSchedules,
                what));
    add(table, "speeding up",
        records(service, service.QuerySpeedupSchedules(""), &DBService::ReleaseSpeedupSchedules,
                what));
    table.print("Schedules");
}

}  // namespace

void loadRecording(DBService& service, const Site& site, Table& summary) {
    load(summary, "On-line schedules", site.onlineSchedules,
         each(service, &DBService::InsertOnlineSchedules),
         each(service, &DBService::UpdateOnlineSchedules),
         byKey(service, &DBService::DeleteOnlineSchedules, &T_Schedules::Guid));
    load(summary, "Recording schedules", site.recordSchedules,
         each(service, &DBService::InsertRecordSchedules),
         each(service, &DBService::UpdateRecordSchedules),
         byKey(service, &DBService::DeleteRecordSchedules, &T_Schedules::Guid));
    load(summary, "Speed-up schedules", site.speedupSchedules,
         each(service, &DBService::InsertSpeedupSchedules),
         each(service, &DBService::UpdateSpeedupSchedules),
         byKey(service, &DBService::DeleteSpeedupSchedules, &T_Schedules::Guid));
    load(summary, "Storage settings", site.storages, all(service, &DBService::InsertStorage),
         all(service, &DBService::UpdateStorage), all(service, &DBService::DeleteStorage));
    load(summary, "Camera schedules", site.cameraSchedules,
         each(service, &DBService::InsertCameraSchedule),
         each(service, &DBService::UpdateCameraSchedule),
         byKey(service, &DBService::DeleteCameraSchedule,
               &dbservice::T_CameraSchedule::Camera_Guid));
    show(service);
}

}  // namespace demo
