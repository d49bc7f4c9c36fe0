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
    const auto add = [&all](const char* purpose, const auto& list) {
        for (const T_Schedules& schedule : list)
            all.emplace_back(purpose, schedule);
    };
    add("being on line", check(onlineSchedules(service), "Listing the on-line schedules"));
    add("recording", check(recordSchedules(service), "Listing the recording schedules"));
    add("speeding up", check(speedupSchedules(service), "Listing the speed-up schedules"));
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
