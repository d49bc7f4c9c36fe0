#include "examples/load_site/Site.h"

#include <fmt/format.h>

#include <fstream>
#include <limits>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "dbservice/convenience/Escaped.h"

namespace dbservice {

// The fields that the file may give.
#define FIELDS NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE
FIELDS(T_ServerInfo, Guid, DisplayName, PrivateAddress, PrivatePort, EnabledPublic, PublicAddress,
       PublicPort, MaxClient)
FIELDS(T_UserInfo, Guid, UserId, AdsPath, UserName, Password, Type, SId, SamacCountName)
FIELDS(T_UserRights, User_Guid, SharedViews, PrivateViews, ViewLive, ViewBrowse, ViewSetup,
       ManagementAccess)
FIELDS(T_UserCameras, Guid, User_Guid, Camera_Guid, Access, AviExport, JpegExport, DatabaseExport,
       VideoLive, VideoBrowse, Ptz, ManagePresets, Outputs, Presets, Events, SmartSearch, Sequences,
       StartRecording, AudioLive, AudioBrowse, SpeakerLive, SpeakerSpeak, SubscriptionAlarm)
FIELDS(T_Schedules, Guid, Name, Schedules, SchedulesType)
FIELDS(T_Device, Guid, ServerGuid, Mac, DriverKey, DisplayName, IPAddress, HttpPort, FtpPort,
       DefaultHttpPort, DefaultFtpPort, State, UserName, Password, Com1Driver, Com2Driver,
       Browsable, VenderType, DeviceType, DriverType, ChannelCount)
FIELDS(T_Channel, Guid, Device_Guid, DisplayName, Num, Type)
FIELDS(T_ChannelConfig, Channel_Guid, Hidden, Disabled, Preview, HalfSize, DeviceIndex,
       DBRepairStrateqy, LiveStreamIndex, LiveStreamSettings)
FIELDS(T_Storage, Channel_Guid, DatabasePath, DatabasePathNonUNC, ArchivePath, ArchivePathNonUNC,
       DBRepairStrateqy, ArchiveDb, ArchiveWhenDBFull, ArchiveMaxAge, DbSaveMode, EnableDbPreSecs,
       EnableDbPostSecs, DbPreSecs, DbPostSecs, AdminDbPreSecs, AdminDbPostSecs, DbLimitType,
       DbLimitCount, SaveOnEvent, SaveOnMotion, SaveStartEvent, SaveStopEvent, SchedulesGuid,
       ManualRecordSecs, VideoStreamType)
FIELDS(T_CameraSchedule, Guid, Camera_Guid, OnlineSchedulingType, OnlineSchedules_Guid,
       SpeedupSchedulingType, SpeedupSchedules_Guid)
FIELDS(T_ViewGroupInfo, Guid, UserGuid, ReadOnly, Name, ViewGroupType, LastModifiedTime,
       LastModifiedUser)
FIELDS(T_GroupInfo, GroupGuid, ViewGroupInfoGuid, DisplayName, ParentGroupGuid)
FIELDS(T_ViewInfo, ViewGuid, GroupGuid, DisplayName, ViewLayoutType, ViewScaleType, ShowTime,
       EnableCarousel)
FIELDS(T_ViewItem, Guid, ViewInfoGuid, DisplayName, ItemNumber, ViewItemType)
FIELDS(T_ViewItemInfo, Guid, ViewItemGuid, CameraGuid, Url, DisplayName, VideoStreamType)
FIELDS(T_CarouselInfo, Guid, ItemInfoGuid, ChannelGuid, ShowTime, nIndex, DisplayName,
       VideoStreamType)
FIELDS(T_EMapInfo, MapGuid, UserGuid, ParentMapGuid, MapType, MapName, Gis_CenterCityName,
       Gis_Pos_X, Gis_Pos_Y, Gis_Zoom, Customize_Image_Path, Customize_Image_Size,
       Customize_Image_Type)
FIELDS(T_EMapItemInfo, Guid, MapInfoGuid, MapItemGuid, MapItemType, DisplayName, Discription,
       MapItemPos_X, MapItemPos_Y)
FIELDS(T_NodeParam, NodeGuid, ParentNodeGuid, ServerGuid, NodeName, NodeType)
FIELDS(T_NodeElementParam, Guid, UserGuid, NodeGuid, DeviceGuid, ChannelGuid, DisplayName,
       StreamType, VenderType, DeviceType)
FIELDS(T_AlarmInfo, Guid, DeviceGuid, ChannelGuid, AlarmLevel, AlarmMethod, BeginTime, EndTime,
       AlarmContent, AlarmSource)
FIELDS(T_FaceCapture, filePath, age, beard, eyeOCC, eyeClose, headWear, minority, mouthClose,
       mouthOCC, noseOCC, sex, addTime)
FIELDS(T_FaceCompare, basePath, facePath, name, faceID, similarity, addTime)
#undef FIELDS

}  // namespace dbservice

namespace demo {
namespace {

using nlohmann::json;

[[noreturn]] void refuse(const std::string& place, const std::string& why) {
    throw std::runtime_error(fmt::format("{} {}", place, why));
}

/// The document with its numbers checked: records hold 32 bits, ports 16.
json checked(const json& document) {
    const json values = document.flatten();  // each value by its place, as /servers/2/PrivatePort
    for (const auto& [place, value] : values.items()) {
        const bool port = place.size() > 4 && place.compare(place.size() - 4, 4, "Port") == 0;
        const int most = port ? 65535 : std::numeric_limits<int>::max();
        if (value.is_string() || value.is_null()) continue;
        if (!value.is_number_integer() || value < 0 || value > most)
            refuse(place, fmt::format("is not a whole number from 0 to {}", most));
    }
    return values.unflatten();  // empty lists have become nulls
}

/// A record of the file before it is known of what kind.
struct Node {
    json fields;
    std::string place;  ///< as /users/2/cameras/0
    std::string key;    ///< the name of its key
};
using Nodes = std::vector<Node>;

bool goes(const Node& node) {
    const auto then = node.fields.find("then");
    return then != node.fields.end() && *then == "delete";
}

/// Completes a record by its reference to the holder, if any, and its holder's end.
void attach(Node& node, const Node& holder, const char* reference) {
    if (!node.fields.is_object()) refuse(node.place, "is no record");
    if (reference != nullptr &&
        !node.fields.emplace(reference, holder.fields.at(holder.key)).second)
        refuse(node.place + "/" + reference, "is given by what the record stands in");
    const auto key = node.fields.find(node.key);
    if (key == node.fields.end() || !key->is_string() || key->get_ref<const std::string&>().empty())
        refuse(node.place, "has no " + node.key);
    if (goes(holder)) node.fields["then"] = "delete";
}

/// Takes from all these records those that stand in the member, a list or a single one.
Nodes take(Nodes& holders, const char* member, const char* key, const char* reference = nullptr) {
    Nodes nodes;
    for (Node& holder : holders) {
        const json found = holder.fields.value(member, json());
        holder.fields.erase(member);
        const bool one = !found.is_array() && !found.is_null();
        const json list = one ? json::array({found}) : found;
        for (std::size_t i = 0; i < list.size(); ++i) {
            nodes.push_back({list[i], fmt::format("{}/{}/{}", holder.place, member, i), key});
            attach(nodes.back(), holder, reference);
        }
    }
    return nodes;
}

/// The record with these fields, its texts escaped.
template <class Record>
Record recordOf(const json& fields, const std::string& place) {
    json all = Record();
    for (const auto& [name, value] : fields.items()) {
        const auto field = all.find(name);
        const std::string valuePlace = fmt::format("{}/{}", place, name);
        if (field == all.end()) refuse(valuePlace, "is no field of such a record");
        if (field->is_string() ? !value.is_string() : !value.is_number())
            refuse(valuePlace, field->is_string() ? "is no text" : "is no number");
        *field = value;
    }
    return escaped(all.get<Record>());
}

template <class Record>
void fill(Plan<Record>& plan, const Nodes& nodes) {
    for (const Node& node : nodes) {
        json fields = node.fields;
        fields.erase("then");
        plan.stored.push_back(recordOf<Record>(fields, node.place));
        if (goes(node)) {
            plan.deleted.push_back(plan.stored.back());
        } else if (node.fields.contains("then")) {
            const json& then = node.fields["then"];
            if (!then.is_object()) refuse(node.place + "/then", "is neither fields nor delete");
            if (then.contains(node.key)) refuse(node.place + "/then", "changes the key");
            fields.update(then);
            plan.changed.push_back(recordOf<Record>(fields, node.place + "/then"));
        }
    }
}

// Of each record those inside are taken first: what is left must be its fields.

void readUsers(Nodes& root, Site& site) {
    Nodes users = take(root, "users", "Guid");
    fill(site.userRights, take(users, "rights", "User_Guid", "User_Guid"));
    fill(site.userCameras, take(users, "cameras", "Guid", "User_Guid"));
    fill(site.users, users);
}

void readDevices(Nodes& root, Site& site) {
    Nodes devices = take(root, "devices", "Guid");
    Nodes channels = take(devices, "channels", "Guid", "Device_Guid");
    fill(site.channelConfigs, take(channels, "properties", "Channel_Guid", "Channel_Guid"));
    fill(site.storages, take(channels, "storage", "Channel_Guid", "Channel_Guid"));
    fill(site.cameraSchedules, take(channels, "schedule", "Guid", "Camera_Guid"));
    fill(site.channels, channels);
    fill(site.devices, devices);
}

void readLayouts(Nodes& root, Site& site) {
    Nodes viewGroups = take(root, "viewGroups", "Guid");
    Nodes groups = take(viewGroups, "groups", "GroupGuid", "ViewGroupInfoGuid");
    Nodes views = take(groups, "views", "ViewGuid", "GroupGuid");
    Nodes panes = take(views, "panes", "Guid", "ViewInfoGuid");
    Nodes sources = take(panes, "source", "Guid", "ViewItemGuid");
    fill(site.carousels, take(sources, "carousel", "Guid", "ItemInfoGuid"));
    fill(site.sources, sources);
    fill(site.panes, panes);
    fill(site.views, views);
    fill(site.groups, groups);
    fill(site.viewGroups, viewGroups);
}

void readMaps(Nodes& root, Site& site) {
    Nodes maps = take(root, "maps", "MapGuid");
    fill(site.mapItems, take(maps, "items", "Guid", "MapInfoGuid"));
    fill(site.maps, maps);
    Nodes nodes = take(root, "nodes", "NodeGuid");
    fill(site.nodeElements, take(nodes, "elements", "Guid", "NodeGuid"));
    fill(site.nodes, nodes);
}

void readEvents(Nodes& root, Site& site) {
    fill(site.alarms, take(root, "alarms", "Guid"));
    Nodes captures = take(root, "faceCaptures", "filePath");
    fill(site.faceComparisons, take(captures, "comparison", "facePath", "facePath"));
    fill(site.faceCaptures, captures);
}

Site read(const json& document) {
    if (!document.is_object() || !document.value("name", json()).is_string())
        refuse("/name", "is no text");
    Site site;
    site.name = document.at("name").get<std::string>();
    Nodes root{{checked(document), "", "name"}};
    root.front().fields.erase("name");
    fill(site.servers, take(root, "servers", "Guid"));
    readUsers(root, site);
    fill(site.onlineSchedules, take(root, "onlineSchedules", "Guid"));
    fill(site.recordSchedules, take(root, "recordSchedules", "Guid"));
    fill(site.speedupSchedules, take(root, "speedupSchedules", "Guid"));
    readDevices(root, site);
    readLayouts(root, site);
    readMaps(root, site);
    readEvents(root, site);
    for (const auto& [name, value] : root.front().fields.items())
        refuse("/" + name, "is no kind of record");
    return site;
}

}  // namespace

Site readSite(const std::string& file) {
    std::ifstream stream(file);
    try {
        if (!stream) throw std::runtime_error("cannot be read");
        return read(json::parse(stream));
    } catch (const std::exception& error) {
        throw std::runtime_error(fmt::format("{}: {}", file, error.what()));
    }
}

}  // namespace demo
