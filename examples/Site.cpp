#include "examples/Site.h"

#include <fmt/format.h>

#include <fstream>
#include <limits>
#include <nlohmann/json.hpp>
#include <stdexcept>

namespace dbservice {

// The fields that the file may give.
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_ServerInfo, Guid, DisplayName, PrivateAddress, PrivatePort,
                                   EnabledPublic, PublicAddress, PublicPort, MaxClient)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_UserInfo, Guid, UserId, AdsPath, UserName, Password, Type, SId,
                                   SamacCountName)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_UserRights, User_Guid, SharedViews, PrivateViews, ViewLive,
                                   ViewBrowse, ViewSetup, ManagementAccess)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_UserCameras, Guid, User_Guid, Camera_Guid, Access, AviExport,
                                   JpegExport, DatabaseExport, VideoLive, VideoBrowse, Ptz,
                                   ManagePresets, Outputs, Presets, Events, SmartSearch, Sequences,
                                   StartRecording, AudioLive, AudioBrowse, SpeakerLive,
                                   SpeakerSpeak, SubscriptionAlarm)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_Schedules, Guid, Name, Schedules, SchedulesType)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_Device, Guid, ServerGuid, Mac, DriverKey, DisplayName,
                                   IPAddress, HttpPort, FtpPort, DefaultHttpPort, DefaultFtpPort,
                                   State, UserName, Password, Com1Driver, Com2Driver, Browsable,
                                   VenderType, DeviceType, DriverType, ChannelCount)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_Channel, Guid, Device_Guid, DisplayName, Num, Type)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_ChannelConfig, Channel_Guid, Hidden, Disabled, Preview,
                                   HalfSize, DeviceIndex, DBRepairStrateqy, LiveStreamIndex,
                                   LiveStreamSettings)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_Storage, Channel_Guid, DatabasePath, DatabasePathNonUNC,
                                   ArchivePath, ArchivePathNonUNC, DBRepairStrateqy, ArchiveDb,
                                   ArchiveWhenDBFull, ArchiveMaxAge, DbSaveMode, EnableDbPreSecs,
                                   EnableDbPostSecs, DbPreSecs, DbPostSecs, AdminDbPreSecs,
                                   AdminDbPostSecs, DbLimitType, DbLimitCount, SaveOnEvent,
                                   SaveOnMotion, SaveStartEvent, SaveStopEvent, SchedulesGuid,
                                   ManualRecordSecs, VideoStreamType)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_CameraSchedule, Guid, Camera_Guid, OnlineSchedulingType,
                                   OnlineSchedules_Guid, SpeedupSchedulingType,
                                   SpeedupSchedules_Guid)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_ViewGroupInfo, Guid, UserGuid, ReadOnly, Name, ViewGroupType,
                                   LastModifiedTime, LastModifiedUser)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_GroupInfo, GroupGuid, ViewGroupInfoGuid, DisplayName,
                                   ParentGroupGuid)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_ViewInfo, ViewGuid, GroupGuid, DisplayName, ViewLayoutType,
                                   ViewScaleType, ShowTime, EnableCarousel)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_ViewItem, Guid, ViewInfoGuid, DisplayName, ItemNumber,
                                   ViewItemType)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_ViewItemInfo, Guid, ViewItemGuid, CameraGuid, Url, DisplayName,
                                   VideoStreamType)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_CarouselInfo, Guid, ItemInfoGuid, ChannelGuid, ShowTime,
                                   nIndex, DisplayName, VideoStreamType)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_EMapInfo, MapGuid, UserGuid, ParentMapGuid, MapType, MapName,
                                   Gis_CenterCityName, Gis_Pos_X, Gis_Pos_Y, Gis_Zoom,
                                   Customize_Image_Path, Customize_Image_Size, Customize_Image_Type)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_EMapItemInfo, Guid, MapInfoGuid, MapItemGuid, MapItemType,
                                   DisplayName, Discription, MapItemPos_X, MapItemPos_Y)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_NodeParam, NodeGuid, ParentNodeGuid, ServerGuid, NodeName,
                                   NodeType)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_NodeElementParam, Guid, UserGuid, NodeGuid, DeviceGuid,
                                   ChannelGuid, DisplayName, StreamType, VenderType, DeviceType)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_AlarmInfo, Guid, DeviceGuid, ChannelGuid, AlarmLevel,
                                   AlarmMethod, BeginTime, EndTime, AlarmContent, AlarmSource)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_FaceCapture, filePath, age, beard, eyeOCC, eyeClose, headWear,
                                   minority, mouthClose, mouthOCC, noseOCC, sex, addTime)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(T_FaceCompare, basePath, facePath, name, faceID, similarity,
                                   addTime)

}  // namespace dbservice

namespace demo {
namespace {

using nlohmann::json;

[[noreturn]] void refuse(const std::string& place, const std::string& why) {
    throw std::runtime_error(fmt::format("{} {}", place, why));
}

/// The document with its texts escaped and its numbers checked: records hold 32 bits, ports 16.
json prepared(const json& document) {
    json values = document.flatten();  // each value by its place, as /servers/2/PrivatePort
    for (const auto& [place, value] : values.items()) {
        const bool port = place.size() > 4 && place.compare(place.size() - 4, 4, "Port") == 0;
        const int most = port ? 65535 : std::numeric_limits<int>::max();
        if (value.is_string()) {
            value = escaped(value.get_ref<const std::string&>());
        } else if (!value.is_null() && (!value.is_number_integer() || value < 0 || value > most)) {
            refuse(place, fmt::format("is not a whole number from 0 to {}", most));
        }
    }
    return values.unflatten();  // empty lists have become nulls
}

/// A record of the file before it is known of what kind.
struct Node {
    json fields;
    std::string place;  ///< as /users/2/cameras/0
    std::string key;    ///< the name of its key

    const json& keyValue() const { return fields.at(key); }
};
using Nodes = std::vector<Node>;

bool goes(const Node& node) {
    const auto then = node.fields.find("then");
    return then != node.fields.end() && *then == "delete";
}

/// Completes a record by its reference to the holder, if any, and its holder's end.
void attach(Node& node, const Node& holder, const char* reference) {
    if (!node.fields.is_object()) refuse(node.place, "is no record");
    if (reference != nullptr && !node.fields.emplace(reference, holder.keyValue()).second)
        refuse(node.place + "/" + reference, "is given by what the record stands in");
    if (node.fields.value(node.key, json("")) == "") refuse(node.place, "has no " + node.key);
    if (goes(holder)) node.fields["then"] = "delete";
}

/// Takes from all these records those that stand in the member, a list or a single one.
Nodes take(Nodes& holders, const char* member, const char* key, const char* reference = nullptr) {
    Nodes nodes;
    for (Node& holder : holders) {
        const json found = holder.fields.value(member, json());
        holder.fields.erase(member);
        const json list = found.is_object() ? json::array({found}) : found;
        for (std::size_t i = 0; i < list.size(); ++i) {
            nodes.push_back({list[i], fmt::format("{}/{}/{}", holder.place, member, i), key});
            attach(nodes.back(), holder, reference);
        }
    }
    return nodes;
}

/// The record with these fields.
template <class Record>
Record recordOf(const json& fields, const std::string& place) {
    json all = Record();
    for (const auto& [name, value] : fields.items()) {
        const auto field = all.find(name);
        if (field == all.end()) refuse(place + "/" + name, "is no field of such a record");
        if (field->is_string() ? !value.is_string() : !value.is_number())
            refuse(place + "/" + name, field->is_string() ? "is no text" : "is no number");
        *field = value;
    }
    return all.get<Record>();
}

template <class Record>
Plan<Record> plan(const Nodes& nodes) {
    Plan<Record> plan;
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
    return plan;
}

// Of each record those inside are taken first: what is left must be its fields.

void readUsers(Nodes& root, Site& site) {
    Nodes users = take(root, "users", "Guid");
    site.userRights =
        plan<dbservice::T_UserRights>(take(users, "rights", "User_Guid", "User_Guid"));
    site.userCameras = plan<dbservice::T_UserCameras>(take(users, "cameras", "Guid", "User_Guid"));
    site.users = plan<dbservice::T_UserInfo>(users);
}

void readSchedules(Nodes& root, Site& site) {
    site.onlineSchedules = plan<dbservice::T_Schedules>(take(root, "onlineSchedules", "Guid"));
    site.recordSchedules = plan<dbservice::T_Schedules>(take(root, "recordSchedules", "Guid"));
    site.speedupSchedules = plan<dbservice::T_Schedules>(take(root, "speedupSchedules", "Guid"));
}

void readDevices(Nodes& root, Site& site) {
    Nodes devices = take(root, "devices", "Guid");
    Nodes channels = take(devices, "channels", "Guid", "Device_Guid");
    site.channelConfigs = plan<dbservice::T_ChannelConfig>(
        take(channels, "properties", "Channel_Guid", "Channel_Guid"));
    site.storages =
        plan<dbservice::T_Storage>(take(channels, "storage", "Channel_Guid", "Channel_Guid"));
    site.cameraSchedules =
        plan<dbservice::T_CameraSchedule>(take(channels, "schedule", "Guid", "Camera_Guid"));
    site.channels = plan<dbservice::T_Channel>(channels);
    site.devices = plan<dbservice::T_Device>(devices);
}

void readLayouts(Nodes& root, Site& site) {
    Nodes viewGroups = take(root, "viewGroups", "Guid");
    Nodes groups = take(viewGroups, "groups", "GroupGuid", "ViewGroupInfoGuid");
    Nodes views = take(groups, "views", "ViewGuid", "GroupGuid");
    Nodes panes = take(views, "panes", "Guid", "ViewInfoGuid");
    Nodes sources = take(panes, "source", "Guid", "ViewItemGuid");
    site.carousels =
        plan<dbservice::T_CarouselInfo>(take(sources, "carousel", "Guid", "ItemInfoGuid"));
    site.sources = plan<dbservice::T_ViewItemInfo>(sources);
    site.panes = plan<dbservice::T_ViewItem>(panes);
    site.views = plan<dbservice::T_ViewInfo>(views);
    site.groups = plan<dbservice::T_GroupInfo>(groups);
    site.viewGroups = plan<dbservice::T_ViewGroupInfo>(viewGroups);
}

void readMaps(Nodes& root, Site& site) {
    Nodes maps = take(root, "maps", "MapGuid");
    site.mapItems = plan<dbservice::T_EMapItemInfo>(take(maps, "items", "Guid", "MapInfoGuid"));
    site.maps = plan<dbservice::T_EMapInfo>(maps);
    Nodes nodes = take(root, "nodes", "NodeGuid");
    site.nodeElements =
        plan<dbservice::T_NodeElementParam>(take(nodes, "elements", "Guid", "NodeGuid"));
    site.nodes = plan<dbservice::T_NodeParam>(nodes);
}

void readEvents(Nodes& root, Site& site) {
    site.alarms = plan<dbservice::T_AlarmInfo>(take(root, "alarms", "Guid"));
    Nodes captures = take(root, "faceCaptures", "filePath");
    site.faceComparisons =
        plan<dbservice::T_FaceCompare>(take(captures, "comparison", "facePath", "facePath"));
    site.faceCaptures = plan<dbservice::T_FaceCapture>(captures);
}

Site read(const json& document) {
    Site site;
    site.name = document.at("name").get<std::string>();
    Nodes root{{prepared(document), "", "name"}};
    root.front().fields.erase("name");
    site.servers = plan<dbservice::T_ServerInfo>(take(root, "servers", "Guid"));
    readUsers(root, site);
    readSchedules(root, site);
    readDevices(root, site);
    readLayouts(root, site);
    readMaps(root, site);
    readEvents(root, site);
    for (const auto& [name, value] : root.front().fields.items())
        refuse("/" + name, "is no kind of record");
    return site;
}

}  // namespace

std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (c == '\'' || c == '\\') result += c;
        result += c;
    }
    return result;
}

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
