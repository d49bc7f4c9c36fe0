#include "tools/dbservicectl/Entities.h"

#include <fmt/format.h>

#include <algorithm>

#include "tools/dbservicectl/Failure.h"

namespace dbservicectl {

const std::vector<Entity>& entities() {
    static const std::vector<Entity> all{
        {"servers", "serverinfo", false},
        {"users", "userinfo", false},
        {"user-rights", "userrights", false},
        {"user-cameras", "usercameras", false},
        {"drivers", "devicedriverinfo", false},
        {"devices", "device", false},
        {"channels", "channel", false},
        {"channel-properties", "channelproperty", false},
        {"online-schedules", "onlineschedules", false},
        {"record-schedules", "recordschedules", false},
        {"speedup-schedules", "speedupschedules", false},
        {"camera-schedules", "cameraschedule", false},
        {"storages", "storage", false},
        {"archives", "archiveInfo", false},
        {"view-groups", "viewgroupinfo", false},
        {"groups", "groupinfo", false},
        {"views", "viewinfo", false},
        {"view-items", "viewitem", false},
        {"view-sources", "viewiteminfo", false},
        {"carousels", "carousel", false},
        {"maps", "mapinfo", false},
        {"map-items", "mapitemparam", false},
        {"nodes", "nodeinfo", false},
        {"node-elements", "nodeelement", false},
        {"alarms", "alarminfo", true},
        {"face-captures", "facecapture", true},
        {"face-comparisons", "facecompare", true},
    };
    return all;
}

const Entity& entityOf(const std::string& name) {
    std::string names;
    for (const Entity& entity : entities()) {
        if (name == entity.name || name == entity.table) return entity;
        names += std::string(names.empty() ? "" : ", ") + entity.name;
    }
    throw Failure(fmt::format("'{}' is no kind of record", name), "There are " + names,
                  Exit::WrongUsage);
}

const schema::Table& tableOf(const Entity& entity) {
    return *std::find_if(
        schema::tables().begin(), schema::tables().end(),
        [&](const schema::Table& table) { return std::string(table.name) == entity.table; });
}

const std::vector<Reference>& references() {
    static const std::vector<Reference> all{
        {"userrights", "User_Guid", "userinfo", "Guid"},
        {"usercameras", "User_Guid", "userinfo", "Guid"},
        {"usercameras", "Camera_Guid", "channel", "Guid"},
        {"device", "ServerGuid", "serverinfo", "Guid"},
        {"device", "DriverKey", "devicedriverinfo", "DriverKey"},
        {"channel", "Device_Guid", "device", "Guid"},
        {"channelproperty", "Channel_Guid", "channel", "Guid"},
        {"storage", "Channel_Guid", "channel", "Guid"},
        {"storage", "SchedulesGuid", "recordschedules", "Guid"},
        {"cameraschedule", "Camera_Guid", "channel", "Guid"},
        {"cameraschedule", "OnlineSchedules_Guid", "onlineschedules", "Guid"},
        {"cameraschedule", "SpeedupSchedules_Guid", "speedupschedules", "Guid"},
        {"viewgroupinfo", "UserGuid", "userinfo", "Guid"},
        {"groupinfo", "ViewGroupInfoGuid", "viewgroupinfo", "Guid"},
        {"groupinfo", "ParentGroupGuid", "groupinfo", "GroupGuid"},
        {"viewinfo", "GroupGuid", "groupinfo", "GroupGuid"},
        {"viewitem", "ViewInfoGuid", "viewinfo", "ViewGuid"},
        {"viewiteminfo", "ViewItemGuid", "viewitem", "Guid"},
        {"viewiteminfo", "CameraGuid", "channel", "Guid"},
        {"carousel", "ItemInfoGuid", "viewiteminfo", "Guid"},
        {"carousel", "ChannelGuid", "channel", "Guid"},
        {"mapinfo", "UserGuid", "userinfo", "Guid"},
        {"mapinfo", "ParentMapGuid", "mapinfo", "MapGuid"},
        {"mapitemparam", "MapInfoGuid", "mapinfo", "MapGuid"},
        {"nodeinfo", "ParentNodeGuid", "nodeinfo", "NodeGuid"},
        {"nodeinfo", "ServerGuid", "serverinfo", "Guid"},
        {"nodeelement", "UserGuid", "userinfo", "Guid"},
        {"nodeelement", "NodeGuid", "nodeinfo", "NodeGuid"},
        {"nodeelement", "DeviceGuid", "device", "Guid"},
        {"nodeelement", "ChannelGuid", "channel", "Guid"},
        {"alarminfo", "DeviceGuid", "device", "Guid"},
        {"alarminfo", "ChannelGuid", "channel", "Guid"},
    };
    return all;
}

bool isNumber(schema::Type type) {
    return type != schema::Type::Key && type != schema::Type::ShortText &&
           type != schema::Type::LongText;
}

bool isRowNumber(schema::Type type) {
    return type == schema::Type::RowNumber;
}

bool isSecret(const schema::Column& column) {
    return column.name == "Password";
}

}  // namespace dbservicectl
