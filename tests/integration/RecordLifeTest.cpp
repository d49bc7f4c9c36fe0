// The life of every kind of record: the operations of the service meet their tables in a real
// database. What the statements say is the unit tests' business.
#include <algorithm>
#include <functional>

#include "dbservice/devices/DeviceDriverInfoDao.h"
#include "dbservice/maps/NodeElementParam.h"
#include "dbservice/maps/NodeInfo.h"
#include "schema/Tables.h"
#include "tests/support/engines/ServiceTest.h"

namespace dbservice {
namespace {

using S = DBService;
using schema::Column;
using schema::Type;

// The forms of operations, as functions of one record.

template <class Record>
using Operations = std::vector<std::function<int(const Record&)>>;

template <class Record>
auto each(int (S::*operation)(const Record&)) {
    return [operation](const Record& record) { return (service().*operation)(record); };
}

template <class Record, class Owner>
auto all(int (Owner::*operation)(const Record*, int), Owner& owner = service()) {
    return [&owner, operation](const Record& record) { return (owner.*operation)(&record, 1); };
}

template <class Record>
auto flagged(int (S::*operation)(const Record*, int), int flag) {
    return [operation, flag](Record record) {
        record.EditFlag = flag;
        return (service().*operation)(&record, 1);
    };
}

template <class Record, class Key>
auto byKey(int (S::*operation)(Key), std::string Record::*key) {
    return [operation, key](const Record& record) { return (service().*operation)(record.*key); };
}

/// A query with these keys.
template <class List, class... Parameters, class... Keys>
auto list(List* (S::*query)(Parameters...), void (S::*release)(List*), Keys... keys) {
    return [=] { return records((service().*query)(keys...), release); };
}

/// A query for one record, which may give one without a key for none.
template <class Record, class Owner, class Argument, class Key>
auto one(Record* (Owner::*query)(Argument), void (Owner::*release)(Record*), Key Record::*key,
         const std::decay_t<Argument>& argument, Owner& owner = service()) {
    return [=, &owner] {
        std::vector<Record> result;
        Record* record = (owner.*query)(argument);
        if (record != nullptr && record->*key != Key()) result.push_back(*record);
        (owner.*release)(record);
        return result;
    };
}

class RecordLife : public ServiceTest {
protected:
    /// Adds a row as another program would: each text is its column's name, each number another.
    int addRow(const std::string& table) {
        std::string names;
        std::string values;
        int number = 2147483647;
        for (const Column& column : columnsOf(table)) {
            names += "," + column.name;
            values += isText(column) ? ",'" + column.name + "'" : "," + std::to_string(number--);
        }
        return execute("insert into " + table + "(" + names.substr(1) + ") values(" +
                       values.substr(1) + ")");
    }

    /// Reads that row into a record, and lets every operation do its work with it.
    template <class Record>
    void live(const std::string& table, const std::function<std::vector<Record>()>& find,
              const Operations<Record>& inserts, const Operations<Record>& updates,
              const Operations<Record>& deletes) {
        SCOPED_TRACE(table);
        EXPECT_EQ(0U, find().size());
        EXPECT_EQ(1, addRow(table));
        const std::vector<Record> found = find();
        ASSERT_EQ(1U, found.size());
        const std::string row = content(table);
        for (std::size_t i = 0; i < std::max(inserts.size(), deletes.size()); ++i) {
            EXPECT_EQ(1, deletes[i % deletes.size()](found[0]));
            EXPECT_EQ(0, deletes[i % deletes.size()](found[0]));
            EXPECT_EQ(0, inserts[i % inserts.size()](found[0]));
            EXPECT_EQ(row, content(table));
        }
        for (const auto& update : updates) {
            changeRow(table);
            EXPECT_EQ(0, update(found[0]));
            EXPECT_EQ(row, content(table));
        }
        const bool hasKey = table != "userrights" && table != "facecompare";
        EXPECT_EQ(hasKey ? -1062 : 0, inserts[0](found[0]));
        EXPECT_EQ(hasKey ? 1 : 2, deletes[0](found[0]));
    }

private:
    static bool isText(const Column& column) { return column.type <= Type::LongText; }

    /// The columns that the database does not number by itself.
    static std::vector<Column> columnsOf(const std::string& table) {
        std::vector<Column> columns = schema::columnsOf(
            *std::find_if(schema::tables().begin(), schema::tables().end(),
                          [&](const schema::Table& known) { return known.name == table; }));
        if (columns.back().type >= Type::NextId) columns.pop_back();
        return columns;
    }

    /// Gives all but the keys and references other values.
    void changeRow(const std::string& table) {
        std::string list;
        for (const Column& column : columnsOf(table)) {
            if (column.type != Type::NumberKey && column.name.find("Guid") == std::string::npos)
                list += "," + column.name + (isText(column) ? "='x'" : "=1");
        }
        EXPECT_EQ(1, execute("update " + table + " set " + list.substr(1)));
    }

    /// All columns but the time that the library sets.
    std::string content(const std::string& table) {
        std::string all;
        for (const Column& column : columnsOf(table))
            if (column.name != "LastTime")
                all += query("select " + column.name + " as v from " + table) + " ";
        return all;
    }
};

TEST_P(RecordLife, Accounts) {
    live<T_ServerInfo>("serverinfo", list(&S::QueryServerInfo, &S::ReleaseServerInfo, "Guid"),
                       {each(&S::InsertServerInfo)}, {each(&S::UpdateServerInfo)},
                       {byKey(&S::DeleteServerInfo, &T_ServerInfo::Guid)});
    live<T_UserInfo>(
        "userinfo", list(&S::QueryUser, &S::ReleaseUser, "Guid", "UserName", "Password"),
        {each(&S::InsertUser)}, {each(&S::UpdateUser)}, {byKey(&S::DeleteUser, &T_UserInfo::Guid)});
    live<T_UserRights>(
        "userrights",
        one(&S::QueryUserRights, &S::ReleaseUserRights, &T_UserRights::User_Guid, "User_Guid"),
        {each(&S::InsertUserRights)}, {each(&S::UpdateUserRights)},
        {byKey(&S::DeleteUserRights, &T_UserRights::User_Guid)});
    const auto cameras = [] {
        return records(service().QueryUserCameras("Guid", "User_Guid", "Camera_Guid"),
                       &S::ReleaseUserCameras);
    };
    const auto deleteCamera = [](const T_UserCameras& record) {
        return service().DeleteUserCameras(record.Guid, record.User_Guid, record.Camera_Guid);
    };
    live<T_UserCameras>("usercameras", cameras, {all(&S::InsertUserCameras)},
                        {each(&S::UpdateUserCameras), all(&S::UpdateUserCameras)},
                        {all(&S::DeleteUserCameras), deleteCamera});
}

TEST_P(RecordLife, Devices) {
    live<T_Device>("device", list(&S::QueryDevice, &S::ReleaseDevice, "Guid"),
                   {all(&S::InsertDevice)}, {each(&S::UpdateDevice), all(&S::UpdateDevice)},
                   {all(&S::DeleteDevice), byKey(&S::DeleteDevice, &T_Device::Guid)});
    const auto channels = [] {
        return records(service().QueryChannel("Device_Guid", "Guid"), &S::ReleaseChannelList);
    };
    const auto deleteChannel = [](const T_Channel& record) {
        return service().DeleteChannel(record.Device_Guid, record.Guid);
    };
    live<T_Channel>("channel", channels, {all(&S::InsertChannel)},
                    {each(&S::UpdateChannel), all(&S::UpdateChannel)},
                    {all(&S::DeleteChannel), deleteChannel});
    live<T_ChannelConfig>("channelproperty",
                          one(&S::QueryChannelConfig, &S::ReleaseChannelConfig,
                              &T_ChannelConfig::Channel_Guid, "Channel_Guid"),
                          {all(&S::InsertChannelConfig)},
                          {each(&S::UpdateChannelConfig), all(&S::UpdateChannelConfig)},
                          {all(&S::DeleteChannelConfig),
                           byKey(&S::DeleteChannelConfig, &T_ChannelConfig::Channel_Guid)});

    using Driver = T_DeviceDriverInfo;
    DeviceDriverInfoDao dao(&access(), dbName());
    const auto insert = [&](Driver record) {
        record.Source = "'" + record.Source + "'";
        return dao.InsertDeviceDriverInfoImp(record);
    };
    live<Driver>("devicedriverinfo",
                 one(&DeviceDriverInfoDao::QueryDeviceDriverInfoImp,
                     &DeviceDriverInfoDao::ReleaseChannelConfig, &Driver::Id, 2147483647, dao),
                 {insert},
                 {[&](const Driver& record) { return dao.UpdateDeviceDriverInfoImp(record); }},
                 {[&](const Driver&) { return dao.DeleteDeviceDriverInfoImp("DriverKey"); }});
}

TEST_P(RecordLife, Recording) {
    live<T_Storage>("storage", list(&S::QueryStorage, &S::ReleaseStorage, "Channel_Guid"),
                    {all(&S::InsertStorage)}, {each(&S::UpdateStorage), all(&S::UpdateStorage)},
                    {all(&S::DeleteStorage), byKey(&S::DeleteStorage, &T_Storage::Channel_Guid)});
    live<T_ArchiveInfo>("archiveInfo",
                        list(&S::QueryArchiveInfo, &S::ReleaseArchiveInfoList, "Guid"),
                        {each(&S::InsertArchiveInfo)}, {each(&S::UpdateArchiveInfo)},
                        {byKey(&S::DeleteArchiveInfo, &T_ArchiveInfo::Guid)});
    live<T_CameraSchedule>("cameraschedule",
                           list(&S::QueryCameraSchedule, &S::ReleaseCameraSchedule, "Camera_Guid"),
                           {each(&S::InsertCameraSchedule)}, {each(&S::UpdateCameraSchedule)},
                           {byKey(&S::DeleteCameraSchedule, &T_CameraSchedule::Camera_Guid)});
    const auto schedules = [this](const char* table, auto find, auto release, auto insert,
                                  auto update, auto remove) {
        live<T_Schedules>(table, list(find, release, "Guid"), {each(insert)}, {each(update)},
                          {byKey(remove, &T_Schedules::Guid)});
    };
    schedules("onlineschedules", &S::QueryOnlineSchedules, &S::ReleaseOnlineSchedules,
              &S::InsertOnlineSchedules, &S::UpdateOnlineSchedules, &S::DeleteOnlineSchedules);
    schedules("recordschedules", &S::QueryRecordSchedules, &S::ReleaseRecordSchedules,
              &S::InsertRecordSchedules, &S::UpdateRecordSchedules, &S::DeleteRecordSchedules);
    schedules("speedupschedules", &S::QuerySpeedupSchedules, &S::ReleaseSpeedupSchedules,
              &S::InsertSpeedupSchedules, &S::UpdateSpeedupSchedules, &S::DeleteSpeedupSchedules);
}

TEST_P(RecordLife, Layouts) {
    const auto deleteGroup = [](const T_ViewGroupInfo& record) {
        return service().DeleteViewGroupInfo(record.Guid, record.UserGuid);
    };
    live<T_ViewGroupInfo>(
        "viewgroupinfo",
        list(&S::QueryViewGroupInfo, &S::ReleaseViewGroupInfoList, "Guid", "UserGuid", true),
        {each(&S::InsertViewGroupInfo), all(&S::InsertViewGroupInfo)}, {}, {deleteGroup});
    live<T_GroupInfo>(
        "groupinfo", list(&S::QueryGroupInfo, &S::ReleaseGroupInfoList, "ViewGroupInfoGuid"),
        {each(&S::InsertGroupInfo), all(&S::InsertGroupInfo)}, {},
        {all(&S::DeleteGroupInfo), byKey(&S::DeleteGroupInfo, &T_GroupInfo::ViewGroupInfoGuid)});
    live<T_ViewInfo>("viewinfo", list(&S::QueryViewInfo, &S::ReleaseViewInfoList, "GroupGuid"),
                     {each(&S::InsertViewInfo1), all(&S::InsertViewInfo)},
                     {each(&S::UpdateViewInfo)},
                     {all(&S::DeleteViewInfo), byKey(&S::DeleteViewInfo, &T_ViewInfo::GroupGuid)});
    live<T_ViewItem>(
        "viewitem", list(&S::QueryViewItem, &S::ReleaseViewItemList, "ViewInfoGuid"),
        {all(&S::InsertViewItem)}, {each(&S::UpdateViewItem)},
        {all(&S::DeleteViewItem), byKey(&S::DeleteViewItem, &T_ViewItem::ViewInfoGuid)});
    live<T_ViewItemInfo>(
        "viewiteminfo",
        one(&S::QueryViewItemInfo, &S::ReleaseViewItemInfo, &T_ViewItemInfo::Guid, "ViewItemGuid"),
        {each(&S::InsertViewItemInfo), all(&S::InsertViewItemInfo)}, {each(&S::UpdateViewItemInfo)},
        {all(&S::DeleteViewItemInfo),
         byKey(&S::DeleteViewItemInfo, &T_ViewItemInfo::ViewItemGuid)});
    const auto entries = [] {
        return records(service().QueryCarousel("ItemInfoGuid"), &S::ReleaseCarouselList);
    };
    live<T_CarouselInfo>(
        "carousel", entries, {each(&S::InsertCarousel), all(&S::InsertCarousel)}, {},
        {all(&S::DeleteCarousel), byKey(&S::DeleteCarousel, &T_CarouselInfo::ItemInfoGuid)});
}

TEST_P(RecordLife, Maps) {
    const auto user = keyed(&T_EMapInfo::UserGuid, "UserGuid");
    live<T_EMapInfo>("mapinfo", list(&S::QueryEMapInfo, &S::ReleaseEMapInfoList, &user, 1, true),
                     {flagged(&S::InsertEMapInfo, kEMapNew)},
                     {flagged(&S::UpdateEMapInfo, kEMapChanged)},
                     {flagged(&S::DeleteEMapInfo, kEMapRemoved)});
    auto map = keyed(&T_EMapInfo::MapGuid, "MapInfoGuid");
    map.EditFlag = kEMapRemoved;
    live<T_EMapItemInfo>(
        "mapitemparam", list(&S::QueryEMapItemInfo, &S::ReleaseEMapItemInfoList, &map, 1),
        {flagged(&S::InsertEMapItemInfo, kEMapNew)},
        {flagged(&S::UpdateEMapItemInfo, kEMapChanged)},
        {flagged<T_EMapItemInfo>(&S::DeleteEMapItemInfo, kEMapRemoved),
         [&](const T_EMapItemInfo&) { return service().DeleteEMapItemInfo(&map, 1); }});

    const auto node = keyed(&T_NodeParam::NodeGuid, "NodeGuid");
    NodeInfo nodes(&access(), dbName());
    live<T_NodeParam>(
        "nodeinfo",
        [&] {
            return records(nodes.QueryNodeInfoImp(&node, 1), &NodeInfo::ReleaseNodeInfo, nodes);
        },
        {all(&NodeInfo::InsertNodeInfoImp, nodes)}, {all(&NodeInfo::UpdateNodeInfoImp, nodes)},
        {all(&NodeInfo::DeleteNodeInfoImp, nodes)});
    using Elements = NodeElementParam;
    Elements elements(&access(), dbName());
    const auto inNode = [&] {
        return records(elements.QueryNodeElementImp(&node, 1), &Elements::ReleaseNodeElementList,
                       elements);
    };
    live<T_NodeElementParam>(
        "nodeelement", inNode, {all(&Elements::InsertNodeElementImp, elements)},
        {all(&Elements::UpdateNodeElementImp, elements)},
        {all<T_NodeElementParam>(&Elements::DeleteNodeElementImp, elements),
         [&](const T_NodeElementParam&) { return elements.DeleteNodeElementImp(&node, 1); }});
}

TEST_P(RecordLife, Events) {
    const auto alarms = [] {
        return records(service().QueryAlarmInfo("Guid", "ChannelGuid"), &S::ReleaseAlarmInfoList);
    };
    const auto insertAlarm = [this](const T_AlarmInfo& record) {
        EXPECT_EQ(0, service().InsertAlarmInfo(record));  // stores nothing
        return std::min(0, addRow("alarminfo"));
    };
    const auto deleteAlarm = [](const T_AlarmInfo& record) {
        return service().DeleteAlarmInfo(record.Guid, record.ChannelGuid);
    };
    live<T_AlarmInfo>("alarminfo", alarms, {insertAlarm}, {each(&S::UpdateAlarmInfo)},
                      {deleteAlarm});
    live<T_FaceCompare>(
        "facecompare", list(&S::QueryFaceCompare, &S::ReleaseFaceCompareLsit, 0U, 0U),
        {each(&S::InsertFaceCompare)}, {},
        {[this](const T_FaceCompare&) { return execute("delete from facecompare"); }});
}

INSTANTIATE_TEST_SUITE_P(Engines, RecordLife, kEngines, engineName);

}  // namespace
}  // namespace dbservice
