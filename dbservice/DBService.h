#ifndef DBSERVICE_DBSERVICE_H
#define DBSERVICE_DBSERVICE_H

#include <cstdint>
#include <deque>
#include <memory>
#include <string>

#include "base/Export.h"
#include "dbaccess/ResultSet.h"
#include "dbservice/ConnectionProperty.h"
#include "dbservice/Helpers.h"
#include "dbservice/accounts/AccountRecords.h"
#include "dbservice/devices/DeviceRecords.h"
#include "dbservice/events/EventRecords.h"
#include "dbservice/layouts/LayoutRecords.h"
#include "dbservice/maps/MapRecords.h"
#include "dbservice/recording/RecordingRecords.h"

namespace dbaccess {
class DataAccess;
}

namespace dbservice {

class ArchiveInfoDao;
class CAlarmInfoDao;
class CEMapDao;
class CFaceCaptureDao;
class CFaceCompareDao;
class CameraScheduleDao;
class CarouselDao;
class ChannelConfigDao;
class ChannelDao;
class DeviceDao;
class DeviceMgr;
class GroupInfoDao;
class NodeElementParam;
class NodeInfo;
class OnlineSchedulesDao;
class RecordSchedulesDao;
class SchedulesMgr;
class ServerInfoDao;
class SpeedupSchedulesDao;
class StorageDao;
class StorageMgr;
class UserCamerasDao;
class UserInfoDao;
class UserMgr;
class UserRightsDao;
class ViewGroupInfoDao;
class ViewInfoDao;
class ViewItemDao;
class ViewItemInfoDao;

/// The configuration and event data of a video-surveillance management system, in a database.
///
/// One object serves the whole process: `Initialize` makes it, `GetDBServiceObject` gives it,
/// `Cleanup` destroys it. An object made by hand is connected to nothing.
///
/// What its operations have in common:
/// - Inserts and updates return 0 for success (also when no row was met, unless said otherwise), or
///   a negative number: the negated MySQL error number, as -1062 for a duplicate key, whatever the
///   engine. `dbaccess::LastError` tells the rest.
/// - Deletes return the number of rows deleted, or the negated error number. An empty key is a key
///   like any other, unless the operation says what else it means. Nothing is deleted with what
///   holds it.
/// - Queries return a list or record on the heap, to be given back to the Release operation of the
///   entity before `Cleanup`, once; Release operations ignore null. When there is nothing, those of
///   channels, layouts and maps and the search for alarms give an empty list, all others null: 0 in
///   `dbaccess::LastError` tells it from a failure. Operations that do otherwise say so.
/// - An object made by hand answers -1, null, false, or does nothing. `dbaccess::LastError` then
///   has the number 1, as after an operation that was given no records and sent nothing.
/// - Behind `Cleanup` the service's object answers like that too, until the next `Initialize`: the
///   message of `dbaccess::LastError` and the log say so. A list released then stays in memory.
/// - Numbers of types, levels, methods, streams and rights are the callers' own: they are stored,
///   and compared where an operation says so, but mean nothing to the library.
/// - Text values go into the statements as they are. A quote or backslash in a value becomes part
///   of the statement: callers escape text that they do not control.
/// - Keys (`Guid`) are made by the caller, see `getGuid`.
/// - "In the order of adding" is the order of a number that each insert takes from the largest one
///   so far. Two inserts at once may take the same number, and one that cannot read it takes 1.
/// - Nothing throws, but for std::bad_alloc when memory runs out.
///
/// The account on a server needs SELECT, INSERT, UPDATE and DELETE on the database, also where
/// nothing is ever deleted: batch updates replace rows. `schema::Create` needs CREATE, and INDEX to
/// add an index to a table that is there; `schema::Check` needs SELECT.
///
/// Threads: all operations may be called from any number of threads at once, once the first
/// `Initialize` has returned; `Cleanup` must not run beside any other.
class DBSERVICE_API DBService {
public:
    /// Makes the process-wide object and connects it. Prints a line on standard output, always.
    /// That a later call came with other settings is logged. It looks neither for the database nor
    /// for the tables: where these are not there, or the account has no right to them, each
    /// operation fails. `schema::Check` tells before.
    /// @return  1 when connected, and also, without looking at the settings, when the object is
    ///          there already, connected or not; -1 when the database could not be reached. The
    ///          object then exists all the same: with `accessFlagA` its operations keep trying, so
    ///          that a program started before its database recovers by itself. To try again or to
    ///          use other settings call `Cleanup` first.
    static int Initialize(const DB_CONNECTION_PROPERTY& settings);

    /// Disconnects and destroys the object, if there is one. Always returns 1. What queries gave is
    /// to be released before; how calls are answered that come too late is told above.
    static int Cleanup();

    /// The process-wide object; null before `Initialize` and after `Cleanup`.
    static DBService* GetDBServiceObject();

    /// Frees a set that `Query` returned; null is ignored.
    static void ReleaseResulitSet(dbaccess::ResultSet* set);

    /// An object made by hand, connected to nothing. The service's own is made by `Initialize`.
    DBService();
    DBService(const DBService&) = delete;
    DBService& operator=(const DBService&) = delete;
    /// Not to be called for the service's own object: `Cleanup` destroys it.
    virtual ~DBService();

    /// The database that all statements are for; empty for an object made by hand.
    std::string getDBName() const;

    // Raw statements.

    /// @{
    /// Runs a statement in MySQL's dialect, on both engines. Results as in dbaccess::DataAccess:
    /// the number of affected rows, 0, or the negated error number.
    std::int64_t Insert(std::string statement);
    int Update(std::string statement);
    /// All statements in one transaction: all take effect or none does.
    int Update(std::deque<std::string>& statements);
    int Execute(std::string statement);
    /// @}

    /// The rows, to be given to `ReleaseResulitSet`; null when the statement failed.
    dbaccess::ResultSet* Query(std::string statement);

    // Recording servers.

    /// Adds a server. -1062 when its Guid is there already.
    int InsertServerInfo(const T_ServerInfo& server);
    /// Changes the server with this Guid. 0 also when there is none.
    int UpdateServerInfo(const T_ServerInfo& server);
    /// Deletes the server with this Guid.
    int DeleteServerInfo(const std::string& guid);
    /// The server with this Guid, or with an empty Guid all servers in the order of adding;
    /// null when there is none and when the query failed.
    T_ServerInfoList* QueryServerInfo(const std::string& guid);
    void ReleaseServerInfo(T_ServerInfoList* list);  ///< frees such a list

    // Users.

    /// 0 when there is a user with this name and password, else -1, also when the query failed. An
    /// unescaped quote in either is a part of the statement: escape both.
    int Login(const std::string& userName, const std::string& password);
    /// Adds a user. -1062 when the Guid is there already; the name may be there already.
    int InsertUser(const T_UserInfo& user);
    /// Changes the user with this Guid. 0 also when there is none.
    int UpdateUser(const T_UserInfo& user);
    /// Deletes the user with this Guid. The user's rights and permissions stay: delete those too.
    int DeleteUser(std::string guid);
    /// The users that match all keys that are not empty, in the order of adding; all users when
    /// every key is empty; null when there is none and when the query failed.
    T_UserInfoList* QueryUser(std::string guid, std::string userName, std::string password);
    void ReleaseUser(T_UserInfoList* list);  ///< frees such a list

    // What a user may do anywhere: one row for each user.

    /// Adds the rights of a user. Nothing prevents a second row for the same user: update when
    /// there is one.
    int InsertUserRights(const T_UserRights& rights);
    /// Changes every row of the user. 0 also when there is none.
    int UpdateUserRights(const T_UserRights& rights);
    /// Deletes every row of the user.
    int DeleteUserRights(std::string userGuid);
    /// The rights of the user; of several rows whichever comes first. A user without a row gives a
    /// default record, never null: look at its `User_Guid`. Null only when the query failed.
    T_UserRights* QueryUserRights(std::string userGuid);
    void ReleaseUserRights(T_UserRights* rights);  ///< frees such a record

    // What a user may do with one camera.

    /// Adds permissions, all or none. -1 without records.
    int InsertUserCameras(const T_UserCameras* cameras, int count);
    /// Replaces permissions by their Guid, all or none; those that are not there are added. A
    /// replaced row goes to the end of the order. -1 without records.
    int UpdateUserCameras(const T_UserCameras* cameras, int count);
    /// Changes the permission with this Guid. 0 also when there is none.
    int UpdateUserCameras(const T_UserCameras& camera);
    /// Deletes what matches any of the records: each by all its keys (`Guid`, `User_Guid`,
    /// `Camera_Guid`) that are not empty. **When no record has a key the whole table is emptied**;
    /// a record without keys behind others is refused by the database. -1 without records.
    int DeleteUserCameras(const T_UserCameras* cameras, int count);
    /// Deletes what matches all keys that are not empty. **With three empty keys the whole table is
    /// emptied.**
    int DeleteUserCameras(std::string guid, std::string userGuid, std::string cameraGuid);
    /// What matches any of the records, as in the delete; without records or keys everything. In
    /// the order of adding; null when there is none and when the query failed.
    T_UserCamerasList* QueryUserCameras(const T_UserCameras* cameras, int count);
    /// What matches all keys that are not empty; everything when all are empty. Null as above.
    T_UserCamerasList* QueryUserCameras(std::string guid, std::string userGuid,
                                        std::string cameraGuid);
    void ReleaseUserCameras(T_UserCamerasList* list);  ///< frees such a list

    // Devices.

    /// Adds devices, all or none. Without records the database refuses the statement (-1064).
    int InsertDevice(const T_Device* devices, int count);
    /// Replaces devices by their Guid, all or none; those that are not there are added. -1 without
    /// records.
    int UpdateDevice(const T_Device* devices, int count);
    /// Changes the device with this Guid. 0 also when there is none.
    int UpdateDevice(const T_Device& device);
    /// Deletes the devices with these Guids. Their channels stay: delete those too. -1 without
    /// records.
    int DeleteDevice(const T_Device* devices, int count);
    int DeleteDevice(const std::string& guid);  ///< deletes the one with this Guid
    /// The device with this Guid, or with an empty Guid all devices by display name; null when
    /// there is none and when the query failed.
    T_DeviceList* QueryDevice(const std::string& guid);
    /// Whether there is a device with this `IPAddress` and `HttpPort`. With an empty address the
    /// port is ignored: whether there is any device. False when the query failed.
    bool IsExistDevice(const T_Device& device);
    void ReleaseDevice(T_DeviceList* list);  ///< frees such a list

    // Channels.

    /// Adds channels, all or none. -1 without records.
    int InsertChannel(const T_Channel* channels, int count);
    /// Replaces channels by their Guid, all or none; those that are not there are added. -1 without
    /// records.
    int UpdateChannel(const T_Channel* channels, int count);
    /// Changes the channel with this Guid. 0 also when there is none.
    int UpdateChannel(const T_Channel& channel);
    /// Deletes for each record the channel with its Guid, or, **when that is empty, all channels of
    /// its device**; their properties, storage settings, schedules and permissions stay. -1 without
    /// records.
    int DeleteChannel(const T_Channel* channels, int count);
    /// Deletes all channels of a device, whatever the second key, or, when the first is empty, the
    /// channel with this Guid. **With both keys empty the whole table is emptied.**
    int DeleteChannel(const std::string& deviceGuid, std::string guid);
    /// All channels of a device, whatever the second key, or, when the first is empty, the channel
    /// with this Guid; with both keys empty all channels. By number. An empty list when there is
    /// none; null when the query failed.
    T_CHANNEL_LIST* QueryChannel(const std::string& deviceGuid, std::string guid);
    /// Meant as the channels that a user may see, but **always null for a user**: the database
    /// refuses the statement (-1052). Use `QueryUserCameras` and look the channels up. With an
    /// empty key all channels by number.
    T_CHANNEL_LIST* QueryChannel(std::string userGuid);
    /// Whether there is a channel with this `Device_Guid` and `Num`. With an empty device the
    /// number is ignored: whether there is any channel. False when the query failed.
    bool IsExistChannel(const T_Channel& channel);
    void ReleaseChannelList(T_CHANNEL_LIST* list);  ///< frees such a list

    // How a channel is shown and streamed: one row for each channel.

    /// Adds the properties of channels, all or none. -1 without records.
    int InsertChannelConfig(const T_ChannelConfig* configs, int count);
    /// Replaces the properties of channels, all or none; those that are not there are added. -1
    /// without records.
    int UpdateChannelConfig(const T_ChannelConfig* configs, int count);
    /// Changes the properties of a channel. 0 also when it has none.
    int UpdateChannelConfig(const T_ChannelConfig& config);
    /// Deletes the properties of these channels. -1 without records.
    int DeleteChannelConfig(const T_ChannelConfig* configs, int count);
    int DeleteChannelConfig(const std::string& channelGuid);  ///< deletes those of this channel
    /// The properties of the channel. A channel without a row gives a default record, never null:
    /// look at its `Channel_Guid`. Null only when the query failed.
    T_ChannelConfig* QueryChannelConfig(const std::string& channelGuid);
    void ReleaseChannelConfig(T_ChannelConfig* config);  ///< frees such a record

    // How a channel is recorded: one row for each channel.

    /// Adds settings, all or none. -1 without records.
    int InsertStorage(const T_Storage* storages, int count);
    /// Replaces settings by their channel, all or none; those that are not there are added. A
    /// replaced row goes to the end of the order. -1 without records.
    int UpdateStorage(const T_Storage* storages, int count);
    /// Changes the settings of a channel. 0 also when it has none.
    int UpdateStorage(const T_Storage& storage);
    /// Deletes the settings of these channels. -1 without records.
    int DeleteStorage(const T_Storage* storages, int count);
    int DeleteStorage(std::string channelGuid);  ///< deletes those of this channel
    /// The settings of a channel, or with an empty key all, in the order of adding; null when there
    /// is none and when the query failed.
    T_StorageList* QueryStorage(std::string channelGuid);
    void ReleaseStorage(T_StorageList* list);  ///< frees such a list

    // Archive runs.

    /// Adds a run. -1062 when its Guid is there already.
    int InsertArchiveInfo(const T_ArchiveInfo& archive);
    /// Changes the time of the run with this Guid. 0 also when there is none.
    int UpdateArchiveInfo(const T_ArchiveInfo& archive);
    int DeleteArchiveInfo(std::string guid);  ///< deletes the run with this Guid
    /// The run with this Guid, or with an empty Guid all, by the text of their time; null when
    /// there is none and when the query failed.
    T_ArchiveInfoList* QueryArchiveInfo(std::string guid);
    void ReleaseArchiveInfoList(T_ArchiveInfoList* list);  ///< frees such a list

    // The schedules of cameras. Updates, deletes and queries go by `Camera_Guid`.

    /// Adds a row. -1062 when its Guid is there already; the camera may have one already.
    int InsertCameraSchedule(const T_CameraSchedule& schedule);
    /// Changes every row of the camera; their Guids stay. 0 also when there is none.
    int UpdateCameraSchedule(const T_CameraSchedule& schedule);
    int DeleteCameraSchedule(const std::string& cameraGuid);  ///< deletes every row of the camera
    /// The rows of a camera, or with an empty key all, in no certain order; null when there is none
    /// and when the query failed.
    T_CameraScheduleList* QueryCameraSchedule(const std::string& cameraGuid);
    void ReleaseCameraSchedule(T_CameraScheduleList* list);  ///< frees such a list

    // Schedules.

    /// @{
    /// Schedules of three kinds, with the same operations. Inserts add one (-1062 when its Guid is
    /// there already), updates change and deletes delete the one with this Guid. Queries give it,
    /// or with an empty Guid all, in no certain order; null when there is none and when the query
    /// failed. Release operations free such a list.
    int InsertOnlineSchedules(const T_Schedules& schedules);
    int UpdateOnlineSchedules(const T_Schedules& schedules);
    int DeleteOnlineSchedules(const std::string& guid);
    T_SchedulesList* QueryOnlineSchedules(const std::string& guid);
    void ReleaseOnlineSchedules(T_SchedulesList* list);

    int InsertSpeedupSchedules(const T_Schedules& schedules);
    int UpdateSpeedupSchedules(const T_Schedules& schedules);
    int DeleteSpeedupSchedules(const std::string& guid);
    T_SchedulesList* QuerySpeedupSchedules(const std::string& guid);
    void ReleaseSpeedupSchedules(T_SchedulesList* list);

    int InsertRecordSchedules(const T_Schedules& schedules);
    int UpdateRecordSchedules(const T_Schedules& schedules);
    int DeleteRecordSchedules(const std::string& guid);
    T_SchedulesList* QueryRecordSchedules(const std::string& guid);
    void ReleaseRecordSchedules(T_SchedulesList* list);
    /// @}

    // Live-view layouts: view groups hold groups, these views, these items, these sources, these
    // carousel entries. Nothing is deleted with what holds it: delete level by level, from below.

    /// Adds a view group.
    int InsertViewGroupInfo(const T_ViewGroupInfo& viewGroup);
    /// Adds view groups, all or none. -1 without records.
    int InsertViewGroupInfo(const T_ViewGroupInfo* viewGroups, int count);
    /// **Always refused** (-1064): the statement is ill-formed by contract. Send an UPDATE of your
    /// own by the raw `Update`.
    int UpdateViewGroupInfo(const T_ViewGroupInfo& viewGroup);
    /// Deletes what matches all keys that are not empty. **With two empty keys the whole table is
    /// emptied.**
    int DeleteViewGroupInfo(std::string guid, std::string userGuid);
    /// The view groups that match all keys that are not empty, or all, by type. With `includeType1`
    /// and a key, all view groups of type 1 besides, whether they match a key or not. An empty list
    /// when there is none; null when the query failed.
    T_ViewGroupInfoList* QueryViewGroupInfo(std::string guid, std::string userGuid,
                                            bool includeType1);
    void ReleaseViewGroupInfoList(T_ViewGroupInfoList* list);  ///< frees such a list

    /// Adds a group.
    int InsertGroupInfo(const T_GroupInfo& group);
    /// Adds groups, all or none. -1 without records.
    int InsertGroupInfo(const T_GroupInfo* groups, int count);
    /// **Always refused** (-1064): the statement is ill-formed by contract. Send an UPDATE of your
    /// own by the raw `Update`.
    int UpdateGroupInfo(const T_GroupInfo& group);
    /// Deletes all groups of a view group; for one alone use the raw `Execute`. **With an empty key
    /// the whole table is emptied.**
    int DeleteGroupInfo(const std::string& viewGroupGuid);
    /// Deletes all groups of the view groups of these records. -1 without records.
    int DeleteGroupInfo(const T_GroupInfo* groups, int count);
    /// The groups of a view group, or with an empty key all, in the order of adding. An empty list
    /// when there is none; null when the query failed.
    T_GroupInfoList* QueryGroupInfo(const std::string& viewGroupGuid);
    void ReleaseGroupInfoList(T_GroupInfoList* list);  ///< frees such a list

    /// Adds a view. The name is that of the batch form with a 1 behind.
    int InsertViewInfo1(const T_ViewInfo& view);
    /// Adds views, all or none. -1 without records.
    int InsertViewInfo(const T_ViewInfo* views, int count);
    /// Changes the view with this ViewGuid. 0 also when there is none.
    int UpdateViewInfo(const T_ViewInfo& view);
    /// Deletes all views of a group; for one alone use the raw `Execute`. **With an empty key the
    /// whole table is emptied.**
    int DeleteViewInfo(const std::string& groupGuid);
    /// Deletes all views of the groups of these records. -1 without records.
    int DeleteViewInfo(const T_ViewInfo* views, int count);
    /// The views of a group, or with an empty key all, in the order of adding. An empty list when
    /// there is none; null when the query failed.
    T_ViewInfoList* QueryViewInfo(const std::string& groupGuid);
    void ReleaseViewInfoList(T_ViewInfoList* list);  ///< frees such a list

    /// **Always refused** (-1064): the statement is ill-formed by contract. Use the batch form with
    /// a count of 1.
    int InsertViewItem(const T_ViewItem& item);
    /// Adds items, all or none. -1 without records.
    int InsertViewItem(const T_ViewItem* items, int count);
    /// Changes the item with this Guid. 0 also when there is none.
    int UpdateViewItem(const T_ViewItem& item);
    /// Deletes all items of a view; for one alone use the raw `Execute`. **With an empty key the
    /// whole table is emptied.**
    int DeleteViewItem(const std::string& viewInfoGuid);
    /// Deletes all items of the views of these records. -1 without records.
    int DeleteViewItem(const T_ViewItem* items, int count);
    /// The items of a view, or with an empty key all, in the order of adding. An empty list when
    /// there is none; null when the query failed.
    T_ViewItemList* QueryViewItem(const std::string& viewInfoGuid);
    void ReleaseViewItemList(T_ViewItemList* list);  ///< frees such a list

    /// Adds a source.
    int InsertViewItemInfo(const T_ViewItemInfo& source);
    /// Adds sources, all or none. -1 without records.
    int InsertViewItemInfo(const T_ViewItemInfo* sources, int count);
    /// Changes **every** source of the record's item; their Guids stay. For one alone use the raw
    /// `Update`. 0 also when there is none.
    int UpdateViewItemInfo(const T_ViewItemInfo& source);
    /// Deletes all sources of an item. An empty key is a key like any other.
    int DeleteViewItemInfo(const std::string& viewItemGuid);
    /// Deletes all sources of the items of these records. -1 without records.
    int DeleteViewItemInfo(const T_ViewItemInfo* sources, int count);
    /// One source of an item, whichever comes first; with an empty key one of any. Null when there
    /// is none and when the query failed.
    T_ViewItemInfo* QueryViewItemInfo(const std::string& viewItemGuid);
    /// All sources of these items, in no certain order. An empty list when there is none; null
    /// without records and when the query failed.
    T_ViewItemInfoList* QueryViewItemInfo(const T_ViewItem* items, int count);
    void ReleaseViewItemInfo(T_ViewItemInfo* source);        ///< frees such a record
    void ReleaseViewItemInfoList(T_ViewItemInfoList* list);  ///< frees such a list

    /// Adds an entry, and writes the statement to standard output.
    int InsertCarousel(const T_CarouselInfo& entry);
    /// Adds entries, all or none. -1 without records.
    int InsertCarousel(const T_CarouselInfo* entries, int count);
    /// **Always refused** (-1064): the statement is ill-formed by contract. Send an UPDATE of your
    /// own by the raw `Update`.
    int UpdateCarousel(const T_CarouselInfo& entry);
    /// Deletes all entries of a source. **With an empty key the whole table is emptied.**
    int DeleteCarousel(const std::string& itemInfoGuid);
    /// Deletes all entries of the sources of these records. -1 without records.
    int DeleteCarousel(const T_CarouselInfo* entries, int count);
    /// The entries of a source, or with an empty key all, in the order of the rotation. An empty
    /// list when there is none; null when the query failed.
    T_CarouselInfoList* QueryCarousel(std::string itemInfoGuid);
    /// The entries of these sources, in no certain order. An empty list when there is none; null
    /// without records and when the query failed.
    T_CarouselInfoList* QueryCarousel(const T_ViewItemInfo* sources, int count);
    void ReleaseCarouselList(T_CarouselInfoList* list);  ///< frees such a list

    // Electronic maps and the items on them. One array may go to the insert, the update and the
    // delete in turn: each takes the records whose `EditFlag` is its own (0 new, 1 changed, 2
    // removed).

    /// Adds the maps that are new, all or none; `LastTime` is now. 0 also when none is new; -1
    /// without records.
    int InsertEMapInfo(const T_EMapInfo* maps, int count);
    /// Replaces the maps that are changed by their MapGuid, all or none; those that are not there
    /// are added. A replaced row goes to the end of the order, and `LastTime` is now. 0 also when
    /// none is changed; -1 without records.
    int UpdateEMapInfo(const T_EMapInfo* maps, int count);
    /// Deletes the maps that are removed, but not the items on them: delete those first. -1 without
    /// records, when none is to be removed, and when none of those has a MapGuid; -1064 when one
    /// without follows one with it.
    int DeleteEMapInfo(const T_EMapInfo* maps, int count);
    /// For each record the maps of its user, or, when that is empty, the map with its MapGuid, in
    /// the order of adding. The last argument has no effect. An empty list when there is none; null
    /// without records, when no record has a key, when one without follows one with a key, and when
    /// the query failed. `EditFlag` is not set in what is returned: set it before you pass it on.
    T_EMapInfoList* QueryEMapInfo(const T_EMapInfo* keys, int count, bool unused);
    void ReleaseEMapInfoList(T_EMapInfoList* list);  ///< frees such a list

    /// Adds the items that are new, all or none. -1 when none is new and without records.
    int InsertEMapItemInfo(const T_EMapItemInfo* items, int count);
    /// Replaces the items that are changed by their Guid, all or none; those that are not there are
    /// added. -1 when none is changed and without records.
    int UpdateEMapItemInfo(const T_EMapItemInfo* items, int count);
    /// Deletes all items of the maps that are removed. -1 and -1064 as for the maps themselves.
    int DeleteEMapItemInfo(const T_EMapInfo* maps, int count);
    /// Deletes the items that are removed: each by its Guid, or, when that is empty, all with its
    /// MapItemGuid **on every map**. -1 without records, when none is to be removed, and when none
    /// of those has a key; -1064 when one without follows one with a key.
    int DeleteEMapItemInfo(const T_EMapItemInfo* items, int count);
    /// The items of these maps, in no certain order. Empty, null and `EditFlag` as for maps.
    T_EMapItemInfoList* QueryEMapItemInfo(const T_EMapInfo* maps, int count);
    void ReleaseEMapItemInfoList(T_EMapItemInfoList* list);  ///< frees such a list

    // The resource tree.

    /// @{
    /// The service has no objects behind the operations of the resource tree, by contract: they
    /// **always** return -1 or null, or do nothing. Construct `NodeInfo` and `NodeElementParam`
    /// over a DataAccess of your own, and give their lists back to them.
    int InsertNodeInfo(const T_NodeParam* nodes, int count);
    int UpdateNodeInfo(const T_NodeParam* nodes, int count);
    int DeleteNodeInfo(const T_NodeParam* nodes, int count);
    T_NodeParamList* QueryNodeInfo(const T_NodeParam* keys, int count);
    void ReleaseNodeInfo(T_NodeParamList* list);

    int InsertNodeElement(const T_NodeElementParam* elements, int count);
    int UpdateNodeElement(const T_NodeElementParam* elements, int count);
    int DeleteNodeElement(const T_NodeParam* nodes, int count);
    int DeleteNodeElement(const T_NodeElementParam* elements, int count);
    T_NodeElementList* QueryNodeElement(const T_NodeParam* nodes, int count);
    T_NodeElementList* QueryNodeElement(const T_NodeElementParam* elements, int count);
    void ReleaseNodeElementList(T_NodeElementList* list);
    /// @}

    // Alarms.

    /// **Stores nothing** and returns 0, by contract. Store an alarm by the raw `Insert`:
    /// insert into alarminfo(Guid,DeviceGuid,ChannelGuid,AlarmLevel,AlarmMethod,BeginTime,EndTime,
    /// AlarmContent,AlarmSource) values(...); the database gives the SN.
    int InsertAlarmInfo(const T_AlarmInfo& alarm);
    /// Changes the alarm with this Guid. 0 also when there is none.
    int UpdateAlarmInfo(const T_AlarmInfo& alarm);
    /// Deletes what matches all keys that are not empty. **With two empty keys the whole table is
    /// emptied.**
    int DeleteAlarmInfo(const std::string& guid, std::string channelGuid);
    /// The alarms that match all keys that are not empty, or all, by SN; null when there is none
    /// and when the query failed.
    T_AlarmInfoList* QueryAlarmInfo(const std::string& guid, std::string channelGuid);
    /// Searches for alarms, a page at a time, in no certain order: a row may come on two pages, or
    /// on none. Of the channels of the request the level, method and times are asked for with the
    /// **last** one only, by contract: search channel by channel. Times are met exactly, not as
    /// bounds.
    /// @param total  set to the number of all matching rows, when there is any and the range is not
    ///               empty; else left as it was.
    /// @return  the rows `BeginIndex` to `EndIndex`; an empty list when nothing matches or when the
    ///          range is empty; null without a request or channels, and when the query failed. When
    ///          fewer rows lie in the range than it is wide, records at the end may be default
    ///          ones: their `Guid` is empty.
    T_AlarmInfoList* QueryAlarmInfo(const T_SearchAlarmParam* request, int& total);
    void ReleaseAlarmInfoList(T_AlarmInfoList* list);  ///< frees such a list

    // Faces: captured, and compared with stored ones.

    /// Adds captures, all or none. Numbers from 2^31 on are stored negative, and read back as they
    /// were. Without records the database refuses the statement (-1064).
    int InsertFaceCapture(const T_FaceCapture* faces, int count);
    /// The captures between two times, themselves excluded, by time; 0 leaves an end open. A time
    /// from 2^31 on counts as a negative number. In a record that was read `minority` holds
    /// the time and `mouthClose` the minority, by contract; the stored `mouthClose` takes a raw
    /// `Query`. Null when there is none and when the query failed.
    T_FaceCaptureList* QueryFaceCapture(unsigned int beginTime, unsigned int endTime);
    void ReleaseFaceCaptureLsit(T_FaceCaptureList* list);  ///< frees such a list

    int InsertFaceCompare(const T_FaceCompare& comparison);  ///< adds a comparison
    /// The comparisons between two times, as for captures.
    T_FaceCompareList* QueryFaceCompare(unsigned int beginTime, unsigned int endTime);
    void ReleaseFaceCompareLsit(T_FaceCompareList* list);  ///< frees such a list

private:
    bool creatDBAccess(DB_CONNECTION_PROPERTY settings);

    std::unique_ptr<dbaccess::DataAccess> dataAccess_;
    std::string dbName_;
    std::unique_ptr<SchedulesMgr> schedulesMgr_;
    std::unique_ptr<DeviceMgr> deviceMgr_;
    std::unique_ptr<StorageMgr> storageMgr_;
    std::unique_ptr<UserMgr> userMgr_;
    std::unique_ptr<UserInfoDao> userInfoDao_;
    std::unique_ptr<UserRightsDao> userRightsDao_;
    std::unique_ptr<ServerInfoDao> serverInfoDao_;
    std::unique_ptr<DeviceDao> deviceDao_;
    std::unique_ptr<ChannelDao> channelDao_;
    std::unique_ptr<ChannelConfigDao> channelConfigDao_;
    std::unique_ptr<StorageDao> storageDao_;
    std::unique_ptr<CameraScheduleDao> cameraScheduleDao_;
    std::unique_ptr<OnlineSchedulesDao> onlineSchedulesDao_;
    std::unique_ptr<SpeedupSchedulesDao> speedupSchedulesDao_;
    std::unique_ptr<RecordSchedulesDao> recordSchedulesDao_;
    std::unique_ptr<ViewItemInfoDao> viewItemInfoDao_;
    std::unique_ptr<ViewItemDao> viewItemDao_;
    std::unique_ptr<ViewInfoDao> viewInfoDao_;
    std::unique_ptr<GroupInfoDao> groupInfoDao_;
    std::unique_ptr<ViewGroupInfoDao> viewGroupInfoDao_;
    std::unique_ptr<UserCamerasDao> userCamerasDao_;
    std::unique_ptr<CarouselDao> carouselDao_;
    std::unique_ptr<ArchiveInfoDao> archiveInfoDao_;
    std::unique_ptr<CAlarmInfoDao> alarmInfoDao_;
    std::unique_ptr<CEMapDao> eMapDao_;
    std::unique_ptr<NodeInfo> nodeInfo_;  // stays null, and so does the next one
    std::unique_ptr<NodeElementParam> nodeElementParam_;
    std::unique_ptr<CFaceCaptureDao> faceCaptureDao_;
    std::unique_ptr<CFaceCompareDao> faceCompareDao_;
};

}  // namespace dbservice

#endif
