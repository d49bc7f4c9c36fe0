#ifndef DBSERVICE_CONVENIENCE_ESCAPED_H
#define DBSERVICE_CONVENIENCE_ESCAPED_H

#include <string>

#include "dbaccess/EscapeText.h"
#include "dbservice/accounts/AccountRecords.h"
#include "dbservice/devices/DeviceRecords.h"
#include "dbservice/events/EventRecords.h"
#include "dbservice/layouts/LayoutRecords.h"
#include "dbservice/maps/MapRecords.h"
#include "dbservice/recording/RecordingRecords.h"

// Records with all their texts escaped by `dbaccess::EscapeText`, keys too, so that they may go
// into any operation. Once: what is escaped twice is stored with backslashes. Not for drivers,
// whose `Source` is no text to every operation.

namespace dbservice {

/// @cond internal

/// Ends the recursion.
inline void escapeEach() {}

/// Escapes texts in place.
template <class... Texts>
void escapeEach(std::string& first, Texts&... rest) {
    first = dbaccess::EscapeText(first);
    escapeEach(rest...);
}

/// @endcond

/// @{
/// Escapes a record's texts in place.
inline void escapeTexts(T_ServerInfo& r) {
    escapeEach(r.Guid, r.DisplayName, r.PrivateAddress, r.PublicAddress);
}
inline void escapeTexts(T_UserInfo& r) {
    escapeEach(r.Guid, r.UserId, r.AdsPath, r.UserName, r.Password, r.SId, r.SamacCountName);
}
inline void escapeTexts(T_UserRights& r) {
    escapeEach(r.User_Guid);
}
inline void escapeTexts(T_UserCameras& r) {
    escapeEach(r.Guid, r.User_Guid, r.Camera_Guid);
}
inline void escapeTexts(T_Device& r) {
    escapeEach(r.Guid, r.ServerGuid, r.Mac, r.DriverKey, r.DisplayName, r.IPAddress, r.UserName,
               r.Password, r.Com1Driver, r.Com2Driver);
}
inline void escapeTexts(T_Channel& r) {
    escapeEach(r.Guid, r.Device_Guid, r.DisplayName);
}
inline void escapeTexts(T_ChannelConfig& r) {
    escapeEach(r.Channel_Guid);
}
inline void escapeTexts(T_Storage& r) {
    escapeEach(r.Channel_Guid, r.DatabasePath, r.DatabasePathNonUNC, r.ArchivePath,
               r.ArchivePathNonUNC, r.SaveStartEvent, r.SaveStopEvent, r.SchedulesGuid);
}
inline void escapeTexts(T_ArchiveInfo& r) {
    escapeEach(r.Guid, r.ArchiveTime);
}
inline void escapeTexts(T_CameraSchedule& r) {
    escapeEach(r.Guid, r.Camera_Guid, r.OnlineSchedules_Guid, r.SpeedupSchedules_Guid);
}
inline void escapeTexts(T_Schedules& r) {
    escapeEach(r.Guid, r.Name, r.Schedules);
}
inline void escapeTexts(T_ViewGroupInfo& r) {
    escapeEach(r.Guid, r.UserGuid, r.Name, r.LastModifiedUser);
}
inline void escapeTexts(T_GroupInfo& r) {
    escapeEach(r.GroupGuid, r.ViewGroupInfoGuid, r.DisplayName, r.ParentGroupGuid);
}
inline void escapeTexts(T_ViewInfo& r) {
    escapeEach(r.ViewGuid, r.GroupGuid, r.DisplayName);
}
inline void escapeTexts(T_ViewItem& r) {
    escapeEach(r.Guid, r.ViewInfoGuid, r.DisplayName);
}
inline void escapeTexts(T_ViewItemInfo& r) {
    escapeEach(r.Guid, r.ViewItemGuid, r.CameraGuid, r.Url, r.DisplayName);
}
inline void escapeTexts(T_CarouselInfo& r) {
    escapeEach(r.Guid, r.ItemInfoGuid, r.ChannelGuid, r.DisplayName);
}
inline void escapeTexts(T_EMapInfo& r) {
    escapeEach(r.MapGuid, r.UserGuid, r.ServerGuid, r.ParentMapGuid, r.MapName,
               r.Gis_CenterCityName, r.Gis_Pos_X, r.Gis_Pos_Y, r.Customize_Image_Path);
}
inline void escapeTexts(T_EMapItemInfo& r) {
    escapeEach(r.Guid, r.MapInfoGuid, r.MapItemGuid, r.DisplayName, r.Discription, r.MapItemPos_X,
               r.MapItemPos_Y);
}
inline void escapeTexts(T_NodeParam& r) {
    escapeEach(r.NodeGuid, r.ParentNodeGuid, r.ServerGuid, r.NodeName);
}
inline void escapeTexts(T_NodeElementParam& r) {
    escapeEach(r.Guid, r.UserGuid, r.NodeGuid, r.DeviceGuid, r.ChannelGuid, r.DisplayName);
}
inline void escapeTexts(T_AlarmInfo& r) {
    escapeEach(r.Guid, r.ChannelGuid, r.DeviceGuid, r.AlarmName, r.BeginTime, r.EndTime,
               r.AlarmContent, r.AlarmSource, r.ChannelName, r.DeviceName, r.UserName);
}
/// Escapes the request's texts in place, but not the keys of its channels, which are not owned.
inline void escapeTexts(T_SearchAlarmParam& r) {
    escapeEach(r.BeginTime, r.EndTime);
}
inline void escapeTexts(T_FaceCapture& r) {
    escapeEach(r.filePath);
}
inline void escapeTexts(T_FaceCompare& r) {
    escapeEach(r.basePath, r.facePath, r.name, r.faceID);
}
/// @}

/// A copy of a record with all its texts escaped: `service.InsertUser(escaped(user))`.
template <class Record>
Record escaped(Record record) {
    escapeTexts(record);
    return record;
}

}  // namespace dbservice

#endif
