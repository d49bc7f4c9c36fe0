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

/// @{
/// What the function of this name gives.
using Servers = ServiceList<T_ServerInfoList, &DBService::ReleaseServerInfo>;
using Users = ServiceList<T_UserInfoList, &DBService::ReleaseUser>;
using UserRights = Held<T_UserRights, DBService, &DBService::ReleaseUserRights>;
using UserCameras = ServiceList<T_UserCamerasList, &DBService::ReleaseUserCameras>;
using Devices = ServiceList<T_DeviceList, &DBService::ReleaseDevice>;
using Channels = ServiceList<T_CHANNEL_LIST, &DBService::ReleaseChannelList>;
using ChannelConfig = Held<T_ChannelConfig, DBService, &DBService::ReleaseChannelConfig>;
using DeviceDriver =
    Held<T_DeviceDriverInfo, DeviceDriverInfoDao, &DeviceDriverInfoDao::ReleaseChannelConfig>;
using Storages = ServiceList<T_StorageList, &DBService::ReleaseStorage>;
using Archives = ServiceList<T_ArchiveInfoList, &DBService::ReleaseArchiveInfoList>;
using CameraSchedules = ServiceList<T_CameraScheduleList, &DBService::ReleaseCameraSchedule>;
using OnlineSchedules = ServiceList<T_SchedulesList, &DBService::ReleaseOnlineSchedules>;
using SpeedupSchedules = ServiceList<T_SchedulesList, &DBService::ReleaseSpeedupSchedules>;
using RecordSchedules = ServiceList<T_SchedulesList, &DBService::ReleaseRecordSchedules>;
using ViewGroups = ServiceList<T_ViewGroupInfoList, &DBService::ReleaseViewGroupInfoList>;
using Groups = ServiceList<T_GroupInfoList, &DBService::ReleaseGroupInfoList>;
using Views = ServiceList<T_ViewInfoList, &DBService::ReleaseViewInfoList>;
using ViewItems = ServiceList<T_ViewItemList, &DBService::ReleaseViewItemList>;
using ViewItemSource = Held<T_ViewItemInfo, DBService, &DBService::ReleaseViewItemInfo>;
using ViewItemSources = ServiceList<T_ViewItemInfoList, &DBService::ReleaseViewItemInfoList>;
using Carousels = ServiceList<T_CarouselInfoList, &DBService::ReleaseCarouselList>;
using Maps = ServiceList<T_EMapInfoList, &DBService::ReleaseEMapInfoList>;
using MapItems = ServiceList<T_EMapItemInfoList, &DBService::ReleaseEMapItemInfoList>;
using Nodes = HeldList<T_NodeParamList, NodeInfo, &NodeInfo::ReleaseNodeInfo>;
using NodeElements =
    HeldList<T_NodeElementList, NodeElementParam, &NodeElementParam::ReleaseNodeElementList>;
using Alarms = ServiceList<T_AlarmInfoList, &DBService::ReleaseAlarmInfoList>;
using FaceCaptures = ServiceList<T_FaceCaptureList, &DBService::ReleaseFaceCaptureLsit>;
using FaceComparisons = ServiceList<T_FaceCompareList, &DBService::ReleaseFaceCompareLsit>;
/// @}

// Accounts.

/// `DBService::QueryServerInfo`
inline Servers servers(DBService& service, const std::string& guid = "") {
    return Servers(service, service.QueryServerInfo(guid));
}

/// `DBService::QueryUser`
inline Users users(DBService& service, const std::string& guid = "",
                   const std::string& userName = "", const std::string& password = "") {
    return Users(service, service.QueryUser(guid, userName, password));
}

/// `DBService::QueryUserRights`: a default record for a user who has none.
inline UserRights userRights(DBService& service, const std::string& userGuid) {
    return UserRights(service, service.QueryUserRights(userGuid));
}

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

/// `DBService::QueryDevice`
inline Devices devices(DBService& service, const std::string& guid = "") {
    return Devices(service, service.QueryDevice(guid));
}

/// `DBService::QueryChannel` with device and channel
inline Channels channels(DBService& service, const std::string& deviceGuid = "",
                         const std::string& guid = "") {
    return Channels(service, service.QueryChannel(deviceGuid, guid));
}
/// `DBService::QueryChannel` with a user, which is always refused (-1052) but for an empty key
inline Channels channelsOfUser(DBService& service, const std::string& userGuid) {
    return Channels(service, service.QueryChannel(userGuid));
}

/// `DBService::QueryChannelConfig`: a default record for a channel that has none.
inline ChannelConfig channelConfig(DBService& service, const std::string& channelGuid) {
    return ChannelConfig(service, service.QueryChannelConfig(channelGuid));
}

/// `DeviceDriverInfoDao::QueryDeviceDriverInfoImp`: a default record when there is none.
inline DeviceDriver deviceDriver(DeviceDriverInfoDao& drivers, int id) {
    return DeviceDriver(drivers, drivers.QueryDeviceDriverInfoImp(id));
}

// Recording.

/// `DBService::QueryStorage`
inline Storages storages(DBService& service, const std::string& channelGuid = "") {
    return Storages(service, service.QueryStorage(channelGuid));
}

/// `DBService::QueryArchiveInfo`
inline Archives archives(DBService& service, const std::string& guid = "") {
    return Archives(service, service.QueryArchiveInfo(guid));
}

/// `DBService::QueryCameraSchedule`
inline CameraSchedules cameraSchedules(DBService& service, const std::string& cameraGuid = "") {
    return CameraSchedules(service, service.QueryCameraSchedule(cameraGuid));
}

/// `DBService::QueryOnlineSchedules`
inline OnlineSchedules onlineSchedules(DBService& service, const std::string& guid = "") {
    return OnlineSchedules(service, service.QueryOnlineSchedules(guid));
}

/// `DBService::QuerySpeedupSchedules`
inline SpeedupSchedules speedupSchedules(DBService& service, const std::string& guid = "") {
    return SpeedupSchedules(service, service.QuerySpeedupSchedules(guid));
}

/// `DBService::QueryRecordSchedules`
inline RecordSchedules recordSchedules(DBService& service, const std::string& guid = "") {
    return RecordSchedules(service, service.QueryRecordSchedules(guid));
}

// Layouts.

/// `DBService::QueryViewGroupInfo`
inline ViewGroups viewGroups(DBService& service, const std::string& guid = "",
                             const std::string& userGuid = "", bool includeType1 = false) {
    return ViewGroups(service, service.QueryViewGroupInfo(guid, userGuid, includeType1));
}

/// `DBService::QueryGroupInfo`
inline Groups groups(DBService& service, const std::string& viewGroupGuid = "") {
    return Groups(service, service.QueryGroupInfo(viewGroupGuid));
}

/// `DBService::QueryViewInfo`
inline Views views(DBService& service, const std::string& groupGuid = "") {
    return Views(service, service.QueryViewInfo(groupGuid));
}

/// `DBService::QueryViewItem`
inline ViewItems viewItems(DBService& service, const std::string& viewInfoGuid = "") {
    return ViewItems(service, service.QueryViewItem(viewInfoGuid));
}

/// `DBService::QueryViewItemInfo` with a key: one of the sources; nothing when there is none.
inline ViewItemSource viewItemSource(DBService& service, const std::string& viewItemGuid) {
    return ViewItemSource(service, service.QueryViewItemInfo(viewItemGuid));
}

/// `DBService::QueryViewItemInfo` with items
inline ViewItemSources viewItemSources(DBService& service, const T_ViewItem* items, int count) {
    return ViewItemSources(service, service.QueryViewItemInfo(items, count));
}

/// `DBService::QueryCarousel`
inline Carousels carousels(DBService& service, const std::string& itemInfoGuid = "") {
    return Carousels(service, service.QueryCarousel(itemInfoGuid));
}
/// `DBService::QueryCarousel`
inline Carousels carousels(DBService& service, const T_ViewItemInfo* sources, int count) {
    return Carousels(service, service.QueryCarousel(sources, count));
}

// Maps and the resource tree.

/// `DBService::QueryEMapInfo`
inline Maps maps(DBService& service, const T_EMapInfo* keys, int count) {
    return Maps(service, service.QueryEMapInfo(keys, count, false));
}

/// `DBService::QueryEMapItemInfo`
inline MapItems mapItems(DBService& service, const T_EMapInfo* maps, int count) {
    return MapItems(service, service.QueryEMapItemInfo(maps, count));
}

/// `NodeInfo::QueryNodeInfoImp`; without keys all. Those of the service always answer null.
inline Nodes nodes(NodeInfo& tree, const T_NodeParam* keys = nullptr, int count = 0) {
    return Nodes(tree, tree.QueryNodeInfoImp(keys, count));
}

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

/// `DBService::QueryAlarmInfo` with keys
inline Alarms alarms(DBService& service, const std::string& guid = "",
                     const std::string& channelGuid = "") {
    return Alarms(service, service.QueryAlarmInfo(guid, channelGuid));
}
/// `DBService::QueryAlarmInfo` with a request
inline Alarms alarms(DBService& service, const T_SearchAlarmParam& request, int& total) {
    return Alarms(service, service.QueryAlarmInfo(&request, total));
}

/// `DBService::QueryFaceCapture`
inline FaceCaptures faceCaptures(DBService& service, unsigned int beginTime = 0,
                                 unsigned int endTime = 0) {
    return FaceCaptures(service, service.QueryFaceCapture(beginTime, endTime));
}

/// `DBService::QueryFaceCompare`
inline FaceComparisons faceComparisons(DBService& service, unsigned int beginTime = 0,
                                       unsigned int endTime = 0) {
    return FaceComparisons(service, service.QueryFaceCompare(beginTime, endTime));
}

}  // namespace dbservice

#endif
