#include <map>

#include "examples/load_site/Loading.h"

namespace demo {
namespace {

using Names = std::map<std::string, std::string>;

std::string streamOf(DBService& service, const std::string& channelGuid) {
    const auto config = hold(service, service.QueryChannelConfig(channelGuid),
                             &DBService::ReleaseChannelConfig, "Looking up a channel's properties");
    if (config->Disabled == 1) return "disabled";
    return fmt::format("{}{}", config->LiveStreamIndex, config->Hidden == 1 ? ", hidden" : "");
}

void add(Table& table, DBService& service, const T_Channel& channel, Names& scheduleNames) {
    const std::string guid = EscapeText(channel.Guid);
    // Of a channel without settings or schedules the default ones are shown.
    auto storages = records(service, service.QueryStorage(guid), &DBService::ReleaseStorage,
                            "Looking up a channel's storage");
    storages.resize(1);
    auto assignments = records(service, service.QueryCameraSchedule(guid),
                               &DBService::ReleaseCameraSchedule, "Looking up a camera's schedule");
    assignments.resize(1);
    table.add({indented(1, fmt::format("{} {}", channel.Num, channel.DisplayName)),
               streamOf(service, guid), scheduleNames[assignments.front().OnlineSchedules_Guid],
               scheduleNames[storages.front().SchedulesGuid],
               scheduleNames[assignments.front().SpeedupSchedules_Guid],
               storages.front().DatabasePath});
}

void show(DBService& service) {
    Names names{{"", "-"}};  // of a channel without a schedule
    for (const auto& [purpose, schedule] : schedules(service))
        names[schedule.Guid] = schedule.Name;
    Table table({"Device, its channels", "Stream", "On line", "Recorded", "Speeded up", "Into"});
    for (const T_Device& device :
         records(service, service.QueryDevice(""), &DBService::ReleaseDevice, "Listing the devices",
                 Detail::NumberOnly)) {
        table.add(
            {fmt::format("{} at {}:{}", device.DisplayName, device.IPAddress, device.HttpPort), "",
             "", "", "", ""});
        for (const T_Channel& channel :
             records(service, service.QueryChannel(EscapeText(device.Guid), ""),
                     &DBService::ReleaseChannelList, "Listing a device's channels"))
            add(table, service, channel, names);
    }
    table.print("Devices");
}

}  // namespace

std::string cameraName(DBService& service, const std::string& guid) {
    if (guid.empty()) return "";  // which would be all channels
    const auto channels = records(service, service.QueryChannel("", EscapeText(guid)),
                                  &DBService::ReleaseChannelList, "Looking up a channel");
    return channels.empty() ? "" : channels.front().DisplayName;
}

void loadDevices(DBService& service, const Site& site, Table& summary) {
    load(summary, "Devices", site.devices, all(service, &DBService::InsertDevice),
         all(service, &DBService::UpdateDevice), all(service, &DBService::DeleteDevice),
         Detail::NumberOnly);
    load(summary, "Channels", site.channels, all(service, &DBService::InsertChannel),
         all(service, &DBService::UpdateChannel), all(service, &DBService::DeleteChannel));
    load(summary, "Channel properties", site.channelConfigs,
         all(service, &DBService::InsertChannelConfig),
         all(service, &DBService::UpdateChannelConfig),
         all(service, &DBService::DeleteChannelConfig));
    show(service);
}

}  // namespace demo
