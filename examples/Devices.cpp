#include <map>

#include "examples/Entities.h"

namespace demo {
namespace {

using dbservice::T_Channel;
using dbservice::T_ChannelConfig;
using dbservice::T_Device;
using dbservice::T_Schedules;

/// The names of schedules of all kinds by their keys.
using Names = std::map<std::string, std::string>;

void add(Names& names, const std::vector<T_Schedules>& schedules) {
    for (const T_Schedules& schedule : schedules)
        names[schedule.Guid] = schedule.Name;
}

Names scheduleNames(DBService& service) {
    const std::string what = "Listing the schedules";
    Names names{{"", "-"}};  // of a channel without a schedule
    add(names, records(service, service.QueryOnlineSchedules(""),
                       &DBService::ReleaseOnlineSchedules, what));
    add(names, records(service, service.QueryRecordSchedules(""),
                       &DBService::ReleaseRecordSchedules, what));
    add(names, records(service, service.QuerySpeedupSchedules(""),
                       &DBService::ReleaseSpeedupSchedules, what));
    return names;
}

std::string streamOf(DBService& service, const std::string& channelGuid) {
    const auto config = hold(service, service.QueryChannelConfig(channelGuid),
                             &DBService::ReleaseChannelConfig, "Looking up a channel's properties");
    if (config->Disabled == 1) return "disabled";
    return fmt::format("{}{}", config->LiveStreamIndex, config->Hidden == 1 ? ", hidden" : "");
}

void add(Table& table, DBService& service, const T_Channel& channel, Names& names) {
    const std::string guid = escaped(channel.Guid);
    // A channel without settings or schedules shows the default ones.
    auto storages = records(service, service.QueryStorage(guid), &DBService::ReleaseStorage,
                            "Looking up a channel's storage");
    storages.resize(1);
    auto schedules = records(service, service.QueryCameraSchedule(guid),
                             &DBService::ReleaseCameraSchedule, "Looking up a camera's schedule");
    schedules.resize(1);
    table.add({fmt::format("  {} {}", channel.Num, channel.DisplayName), streamOf(service, guid),
               names[schedules.front().OnlineSchedules_Guid], names[storages.front().SchedulesGuid],
               names[schedules.front().SpeedupSchedules_Guid], storages.front().DatabasePath});
}

void show(DBService& service) {
    Names names = scheduleNames(service);
    Table table({"Device, its channels", "Stream", "On line", "Recorded", "Speeded up", "Into"});
    for (const T_Device& device :
         records(service, service.QueryDevice(""), &DBService::ReleaseDevice, "Listing the devices",
                 Detail::NumberOnly)) {
        table.add(
            {fmt::format("{} at {}:{}", device.DisplayName, device.IPAddress, device.HttpPort), "",
             "", "", "", ""});
        for (const T_Channel& channel :
             records(service, service.QueryChannel(escaped(device.Guid), ""),
                     &DBService::ReleaseChannelList, "Listing a device's channels"))
            add(table, service, channel, names);
    }
    table.print("Devices");
}

}  // namespace

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
