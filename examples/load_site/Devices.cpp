#include <map>

#include "examples/load_site/Loading.h"

namespace demo {
namespace {

using Names = std::map<std::string, std::string>;

std::string streamOf(DBService& service, const std::string& channelGuid) {
    const auto config =
        check(channelConfig(service, channelGuid), "Looking up a channel's properties");
    if (config->Disabled == 1) return "disabled";
    return fmt::format("{}{}", config->LiveStreamIndex, config->Hidden == 1 ? ", hidden" : "");
}

void add(Table& table, DBService& service, const T_Channel& channel, Names& scheduleNames) {
    const std::string guid = EscapeText(channel.Guid);
    // Of a channel without settings or schedules the default ones are shown.
    const auto settings = check(storages(service, guid), "Looking up a channel's storage");
    const T_Storage storage = settings.empty() ? T_Storage() : settings.front();
    const auto assignments =
        check(cameraSchedules(service, guid), "Looking up a camera's schedule");
    const T_CameraSchedule assigned =
        assignments.empty() ? T_CameraSchedule() : assignments.front();
    table.add({indented(1, fmt::format("{} {}", channel.Num, channel.DisplayName)),
               streamOf(service, guid), scheduleNames[assigned.OnlineSchedules_Guid],
               scheduleNames[storage.SchedulesGuid], scheduleNames[assigned.SpeedupSchedules_Guid],
               storage.DatabasePath});
}

void show(DBService& service) {
    Names names{{"", "-"}};  // of a channel without a schedule
    for (const auto& [purpose, schedule] : schedules(service))
        names[schedule.Guid] = schedule.Name;
    Table table({"Device, its channels", "Stream", "On line", "Recorded", "Speeded up", "Into"});
    for (const T_Device& device : check(devices(service), "Listing the devices")) {
        table.add(
            {fmt::format("{} at {}:{}", device.DisplayName, device.IPAddress, device.HttpPort), "",
             "", "", "", ""});
        for (const T_Channel& channel :
             check(channels(service, EscapeText(device.Guid)), "Listing a device's channels"))
            add(table, service, channel, names);
    }
    table.print("Devices");
}

}  // namespace

std::string cameraName(DBService& service, const std::string& guid) {
    if (guid.empty()) return "";  // which would be all channels
    const auto found = check(channels(service, "", EscapeText(guid)), "Looking up a channel");
    return found.empty() ? "" : found.front().DisplayName;
}

void loadDevices(DBService& service, const Site& site, Table& summary) {
    discreetly([&] {
        load(summary, "Devices", site.devices, all(service, &DBService::InsertDevice),
             all(service, &DBService::UpdateDevice), all(service, &DBService::DeleteDevice));
    });
    load(summary, "Channels", site.channels, all(service, &DBService::InsertChannel),
         all(service, &DBService::UpdateChannel), all(service, &DBService::DeleteChannel));
    load(summary, "Channel properties", site.channelConfigs,
         all(service, &DBService::InsertChannelConfig),
         all(service, &DBService::UpdateChannelConfig),
         all(service, &DBService::DeleteChannelConfig));
    show(service);
}

}  // namespace demo
