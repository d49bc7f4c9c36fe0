#ifndef EXAMPLES_SITE_H
#define EXAMPLES_SITE_H

#include <string>
#include <vector>

#include "dbservice/DBService.h"

namespace demo {

/// What the program does with the records of one kind, in this order.
template <class Record>
struct Plan {
    std::vector<Record> stored;
    std::vector<Record> changed;  ///< some of `stored`, with other values
    std::vector<Record> deleted;  ///< some of `stored`
};

/// A site as its file describes it. Its texts are `escaped`, ready for the service.
struct Site {
    std::string name;
    Plan<dbservice::T_ServerInfo> servers;
    Plan<dbservice::T_UserInfo> users;
    Plan<dbservice::T_UserRights> userRights;
    Plan<dbservice::T_UserCameras> userCameras;
    Plan<dbservice::T_Schedules> onlineSchedules;
    Plan<dbservice::T_Schedules> recordSchedules;
    Plan<dbservice::T_Schedules> speedupSchedules;
    Plan<dbservice::T_Device> devices;
    Plan<dbservice::T_Channel> channels;
    Plan<dbservice::T_ChannelConfig> channelConfigs;
    Plan<dbservice::T_Storage> storages;
    Plan<dbservice::T_CameraSchedule> cameraSchedules;
    Plan<dbservice::T_ViewGroupInfo> viewGroups;
    Plan<dbservice::T_GroupInfo> groups;
    Plan<dbservice::T_ViewInfo> views;
    Plan<dbservice::T_ViewItem> panes;
    Plan<dbservice::T_ViewItemInfo> sources;
    Plan<dbservice::T_CarouselInfo> carousels;
    Plan<dbservice::T_EMapInfo> maps;
    Plan<dbservice::T_EMapItemInfo> mapItems;
    Plan<dbservice::T_NodeParam> nodes;
    Plan<dbservice::T_NodeElementParam> nodeElements;
    Plan<dbservice::T_AlarmInfo> alarms;
    Plan<dbservice::T_FaceCapture> faceCaptures;
    Plan<dbservice::T_FaceCompare> faceComparisons;
};

/// Reads a site description: JSON whose members are named as the fields of the records; fields that
/// are left out are empty or 0. A record's member "then" holds the fields to change later, or
/// "delete". Records stand in the record they belong to, which fills in their reference to it and
/// takes them along when it is deleted. Throws std::runtime_error that names the file and the place
/// in it.
Site readSite(const std::string& file);

/// A text as it goes between the single quotes of a statement: both engines read a doubled quote or
/// backslash back as one. The service copies texts into statements as they are, and the name
/// Porter's Yard would end its literal after Porter.
std::string escaped(const std::string& text);

}  // namespace demo

#endif
