#ifndef EXAMPLES_LOAD_SITE_SITE_H
#define EXAMPLES_LOAD_SITE_SITE_H

#include <string>
#include <vector>

#include "dbaccess/EscapeText.h"
#include "dbservice/DBService.h"

namespace demo {

using dbaccess::EscapeText;

using namespace dbservice;

/// What the program does with the records of one kind, in this order.
template <class Record>
struct Plan {
    std::vector<Record> stored;
    std::vector<Record> changed;  ///< some of `stored`, with other values
    std::vector<Record> deleted;  ///< some of `stored`
};

/// A site as its file describes it. Its texts are escaped, ready for the service.
struct Site {
    std::string name;
    Plan<T_ServerInfo> servers;
    Plan<T_UserInfo> users;
    Plan<T_UserRights> userRights;
    Plan<T_UserCameras> userCameras;
    Plan<T_Schedules> onlineSchedules;
    Plan<T_Schedules> recordSchedules;
    Plan<T_Schedules> speedupSchedules;
    Plan<T_Device> devices;
    Plan<T_Channel> channels;
    Plan<T_ChannelConfig> channelConfigs;
    Plan<T_Storage> storages;
    Plan<T_CameraSchedule> cameraSchedules;
    Plan<T_ViewGroupInfo> viewGroups;
    Plan<T_GroupInfo> groups;
    Plan<T_ViewInfo> views;
    Plan<T_ViewItem> panes;
    Plan<T_ViewItemInfo> sources;
    Plan<T_CarouselInfo> carousels;
    Plan<T_EMapInfo> maps;
    Plan<T_EMapItemInfo> mapItems;
    Plan<T_NodeParam> nodes;
    Plan<T_NodeElementParam> nodeElements;
    Plan<T_AlarmInfo> alarms;
    Plan<T_FaceCapture> faceCaptures;
    Plan<T_FaceCompare> faceComparisons;
};

/// Reads a site description: JSON whose members are named as the fields of the records; fields that
/// are left out are empty or 0. A record's member "then" holds the fields to change later, or
/// "delete". Records stand in the record they belong to, which fills in their reference to it and
/// takes them along when it is deleted. Throws std::runtime_error that names the file and the place
/// in it.
Site readSite(const std::string& file);

}  // namespace demo

#endif
