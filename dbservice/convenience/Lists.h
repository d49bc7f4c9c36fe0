#ifndef DBSERVICE_CONVENIENCE_LISTS_H
#define DBSERVICE_CONVENIENCE_LISTS_H

#include <string>

#include "dbservice/DBService.h"
#include "dbservice/convenience/Held.h"
#include "dbservice/devices/DeviceDriverInfoDao.h"
#include "dbservice/maps/NodeElementParam.h"
#include "dbservice/maps/NodeInfo.h"

// Every query as a function whose answer releases itself, with the keys as the operation takes
// them: texts are escaped by the caller, and what an empty key means stands with the operation. A
// key that may be left out is an empty one.

namespace dbservice {

/// A list of the service, with the operation that releases it.
template <class List, void (DBService::*release)(List*)>
using ServiceList = HeldList<List, DBService, release>;

// Accounts.

using Servers = ServiceList<T_ServerInfoList, &DBService::ReleaseServerInfo>;
/// `DBService::QueryServerInfo`
inline Servers servers(DBService& service, const std::string& guid = "") {
    return Servers(service, service.QueryServerInfo(guid));
}

using Users = ServiceList<T_UserInfoList, &DBService::ReleaseUser>;
/// `DBService::QueryUser`
inline Users users(DBService& service, const std::string& guid = "",
                   const std::string& userName = "", const std::string& password = "") {
    return Users(service, service.QueryUser(guid, userName, password));
}

using UserRights = Held<T_UserRights, DBService, &DBService::ReleaseUserRights>;
/// `DBService::QueryUserRights`: a default record for a user who has none.
inline UserRights userRights(DBService& service, const std::string& userGuid) {
    return UserRights(service, service.QueryUserRights(userGuid));
}

using UserCameras = ServiceList<T_UserCamerasList, &DBService::ReleaseUserCameras>;
/// `DBService::QueryUserCameras`
inline UserCameras userCameras(DBService& service, const std::string& guid = "",
                               const std::string& userGuid = "",
                               const std::string& cameraGuid = "") {
    return UserCameras(service, service.QueryUserCameras(guid, userGuid, cameraGuid));
}
/// `DBService::QueryUserCameras`
inline UserCameras userCameras(DBService& service, const T_UserCameras* cameras, int count) {
    return UserCameras(service, service.QueryUserCameras(cameras, count));
}

// Devices.

using Devices = ServiceList<T_DeviceList, &DBService::ReleaseDevice>;
/// `DBService::QueryDevice`
inline Devices devices(DBService& service, const std::string& guid = "") {
    return Devices(service, service.QueryDevice(guid));
}

using Channels = ServiceList<T_CHANNEL_LIST, &DBService::ReleaseChannelList>;
/// `DBService::QueryChannel` with device and channel
inline Channels channels(DBService& service, const std::string& deviceGuid = "",
                         const std::string& guid = "") {
    return Channels(service, service.QueryChannel(deviceGuid, guid));
}
/// `DBService::QueryChannel` with a user, which is always refused (-1052) but for an empty key
inline Channels channelsOfUser(DBService& service, const std::string& userGuid) {
    return Channels(service, service.QueryChannel(userGuid));
}

using ChannelConfig = Held<T_ChannelConfig, DBService, &DBService::ReleaseChannelConfig>;
/// `DBService::QueryChannelConfig`: a default record for a channel that has none.
inline ChannelConfig channelConfig(DBService& service, const std::string& channelGuid) {
    return ChannelConfig(service, service.QueryChannelConfig(channelGuid));
}

using DeviceDriver =
    Held<T_DeviceDriverInfo, DeviceDriverInfoDao, &DeviceDriverInfoDao::ReleaseChannelConfig>;
/// `DeviceDriverInfoDao::QueryDeviceDriverInfoImp`: a default record when there is none.
inline DeviceDriver deviceDriver(DeviceDriverInfoDao& drivers, int id) {
    return DeviceDriver(drivers, drivers.QueryDeviceDriverInfoImp(id));
}

// Recording.

using Storages = ServiceList<T_StorageList, &DBService::ReleaseStorage>;
/// `DBService::QueryStorage`
inline Storages storages(DBService& service, const std::string& channelGuid = "") {
    return Storages(service, service.QueryStorage(channelGuid));
}

using Archives = ServiceList<T_ArchiveInfoList, &DBService::ReleaseArchiveInfoList>;
/// `DBService::QueryArchiveInfo`
inline Archives archives(DBService& service, const std::string& guid = "") {
    return Archives(service, service.QueryArchiveInfo(guid));
}

using CameraSchedules = ServiceList<T_CameraScheduleList, &DBService::ReleaseCameraSchedule>;
/// `DBService::QueryCameraSchedule`
inline CameraSchedules cameraSchedules(DBService& service, const std::string& cameraGuid = "") {
    return CameraSchedules(service, service.QueryCameraSchedule(cameraGuid));
}

using OnlineSchedules = ServiceList<T_SchedulesList, &DBService::ReleaseOnlineSchedules>;
/// `DBService::QueryOnlineSchedules`
inline OnlineSchedules onlineSchedules(DBService& service, const std::string& guid = "") {
    return OnlineSchedules(service, service.QueryOnlineSchedules(guid));
}

using SpeedupSchedules = ServiceList<T_SchedulesList, &DBService::ReleaseSpeedupSchedules>;
/// `DBService::QuerySpeedupSchedules`
inline SpeedupSchedules speedupSchedules(DBService& service, const std::string& guid = "") {
    return SpeedupSchedules(service, service.QuerySpeedupSchedules(guid));
}

using RecordSchedules = ServiceList<T_SchedulesList, &DBService::ReleaseRecordSchedules>;
/// `DBService::QueryRecordSchedules`
inline RecordSchedules recordSchedules(DBService& service, const std::string& guid = "") {
    return RecordSchedules(service, service.QueryRecordSchedules(guid));
}

// Layouts.

using ViewGroups = ServiceList<T_ViewGroupInfoList, &DBService::ReleaseViewGroupInfoList>;
/// `DBService::QueryViewGroupInfo`
inline ViewGroups viewGroups(DBService& service, const std::string& guid = "",
                             const std::string& userGuid = "", bool includeType1 = false) {
    return ViewGroups(service, service.QueryViewGroupInfo(guid, userGuid, includeType1));
}

using Groups = ServiceList<T_GroupInfoList, &DBService::ReleaseGroupInfoList>;
/// `DBService::QueryGroupInfo`
inline Groups groups(DBService& service, const std::string& viewGroupGuid = "") {
    return Groups(service, service.QueryGroupInfo(viewGroupGuid));
}

using Views = ServiceList<T_ViewInfoList, &DBService::ReleaseViewInfoList>;
/// `DBService::QueryViewInfo`
inline Views views(DBService& service, const std::string& groupGuid = "") {
    return Views(service, service.QueryViewInfo(groupGuid));
}

using ViewItems = ServiceList<T_ViewItemList, &DBService::ReleaseViewItemList>;
/// `DBService::QueryViewItem`
inline ViewItems viewItems(DBService& service, const std::string& viewInfoGuid = "") {
    return ViewItems(service, service.QueryViewItem(viewInfoGuid));
}

using ViewItemSource = Held<T_ViewItemInfo, DBService, &DBService::ReleaseViewItemInfo>;
/// `DBService::QueryViewItemInfo` with a key: one of the sources; nothing when there is none.
inline ViewItemSource viewItemSource(DBService& service, const std::string& viewItemGuid) {
    return ViewItemSource(service, service.QueryViewItemInfo(viewItemGuid));
}

using ViewItemSources = ServiceList<T_ViewItemInfoList, &DBService::ReleaseViewItemInfoList>;
/// `DBService::QueryViewItemInfo` with items
inline ViewItemSources viewItemSources(DBService& service, const T_ViewItem* items, int count) {
    return ViewItemSources(service, service.QueryViewItemInfo(items, count));
}

using Carousels = ServiceList<T_CarouselInfoList, &DBService::ReleaseCarouselList>;
/// `DBService::QueryCarousel`
inline Carousels carousels(DBService& service, const std::string& itemInfoGuid = "") {
    return Carousels(service, service.QueryCarousel(itemInfoGuid));
}
/// `DBService::QueryCarousel`
inline Carousels carousels(DBService& service, const T_ViewItemInfo* sources, int count) {
    return Carousels(service, service.QueryCarousel(sources, count));
}

// Maps and the resource tree.

using Maps = ServiceList<T_EMapInfoList, &DBService::ReleaseEMapInfoList>;
/// `DBService::QueryEMapInfo`
inline Maps maps(DBService& service, const T_EMapInfo* keys, int count) {
    return Maps(service, service.QueryEMapInfo(keys, count, false));
}

using MapItems = ServiceList<T_EMapItemInfoList, &DBService::ReleaseEMapItemInfoList>;
/// `DBService::QueryEMapItemInfo`
inline MapItems mapItems(DBService& service, const T_EMapInfo* maps, int count) {
    return MapItems(service, service.QueryEMapItemInfo(maps, count));
}

using Nodes = HeldList<T_NodeParamList, NodeInfo, &NodeInfo::ReleaseNodeInfo>;
/// `NodeInfo::QueryNodeInfoImp`; without keys all. Those of the service always answer null.
inline Nodes nodes(NodeInfo& tree, const T_NodeParam* keys = nullptr, int count = 0) {
    return Nodes(tree, tree.QueryNodeInfoImp(keys, count));
}

using NodeElements =
    HeldList<T_NodeElementList, NodeElementParam, &NodeElementParam::ReleaseNodeElementList>;
/// `NodeElementParam::QueryNodeElementImp` with folders
inline NodeElements nodeElements(NodeElementParam& tree, const T_NodeParam* nodes, int count) {
    return NodeElements(tree, tree.QueryNodeElementImp(nodes, count));
}
/// `NodeElementParam::QueryNodeElementImp` with elements
inline NodeElements nodeElements(NodeElementParam& tree, const T_NodeElementParam* elements,
                                 int count) {
    return NodeElements(tree, tree.QueryNodeElementImp(elements, count));
}

// Events. Pages of a time range are in Events.h.

using Alarms = ServiceList<T_AlarmInfoList, &DBService::ReleaseAlarmInfoList>;
/// `DBService::QueryAlarmInfo` with keys
inline Alarms alarms(DBService& service, const std::string& guid = "",
                     const std::string& channelGuid = "") {
    return Alarms(service, service.QueryAlarmInfo(guid, channelGuid));
}
/// `DBService::QueryAlarmInfo` with a request
inline Alarms alarms(DBService& service, const T_SearchAlarmParam& request, int& total) {
    return Alarms(service, service.QueryAlarmInfo(&request, total));
}

using FaceCaptures = ServiceList<T_FaceCaptureList, &DBService::ReleaseFaceCaptureLsit>;
/// `DBService::QueryFaceCapture`
inline FaceCaptures faceCaptures(DBService& service, unsigned int beginTime = 0,
                                 unsigned int endTime = 0) {
    return FaceCaptures(service, service.QueryFaceCapture(beginTime, endTime));
}

using FaceComparisons = ServiceList<T_FaceCompareList, &DBService::ReleaseFaceCompareLsit>;
/// `DBService::QueryFaceCompare`
inline FaceComparisons faceComparisons(DBService& service, unsigned int beginTime = 0,
                                       unsigned int endTime = 0) {
    return FaceComparisons(service, service.QueryFaceCompare(beginTime, endTime));
}

}  // namespace dbservice

#endif
