#include "examples/load_site/Loading.h"

namespace demo {
namespace {

void show(DBService& service) {
    Table table({"For", "Name", "Times"});
    for (const auto& [purpose, schedule] : schedules(service))
        table.add({purpose, schedule.Name, schedule.Schedules});
    table.print("Schedules");
}

}  // namespace

std::vector<std::pair<std::string, T_Schedules>> schedules(DBService& service) {
    std::vector<std::pair<std::string, T_Schedules>> all;
    const auto add = [&](const char* purpose,
                         T_SchedulesList* (DBService::*query)(const std::string&),
                         void (DBService::*release)(T_SchedulesList*)) {
        for (T_Schedules& schedule :
             records(service, (service.*query)(""), release, "Listing the schedules"))
            all.emplace_back(purpose, schedule);
    };
    add("being on line", &DBService::QueryOnlineSchedules, &DBService::ReleaseOnlineSchedules);
    add("recording", &DBService::QueryRecordSchedules, &DBService::ReleaseRecordSchedules);
    add("speeding up", &DBService::QuerySpeedupSchedules, &DBService::ReleaseSpeedupSchedules);
    return all;
}

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
         byKey(service, &DBService::DeleteCameraSchedule, &T_CameraSchedule::Camera_Guid));
    show(service);
}

}  // namespace demo
