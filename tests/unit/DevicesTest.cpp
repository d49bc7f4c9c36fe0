#include "dbaccess/DataAccess.h"
#include "dbservice/devices/ChannelTypeDao.h"
#include "dbservice/devices/DeviceDriverInfoDao.h"
#include "dbservice/devices/DeviceMgr.h"
#include "dbservice/devices/DeviceTypeDao.h"
#include "tests/unit/StatementCases.h"

namespace dbservice {
namespace {

using scripted::Rows;
using scripted::script;

using Devices = ScriptedService;
using Channels = ScriptedService;
using ChannelConfigs = ScriptedService;
using DeviceDrivers = ScriptedService;

T_Device someDevice(const char* guid) {
    T_Device device;
    device.Guid = guid;
    device.ServerGuid = "s";
    device.Mac = "m";
    device.DriverKey = "k";
    device.DisplayName = "n";
    device.IPAddress = "i";
    device.HttpPort = 1;
    device.FtpPort = 2;
    device.DefaultHttpPort = 3;
    device.DefaultFtpPort = 4;
    device.State = 5;
    device.UserName = "u";
    device.Password = "p";
    device.Com1Driver = "c1";
    device.Com2Driver = "c2";
    device.Browsable = 6;
    device.VenderType = 7;
    device.DeviceType = 8;
    device.DriverType = 9;
    device.ChannelCount = 10;
    return device;
}

constexpr char kDeviceColumns[] =
    "Guid,ServerGuid,Mac,DriverKey,DisplayName,IPAddress,HttpPort,FtpPort,DefaultHttpPort,DefaultFtpPort,State,UserName,Password,Com1Driver,Com2Driver,Browsable,VenderType,DeviceType,DriverType,ChannelCount";

TEST_F(Devices, Statements) {
    const std::string columns = kDeviceColumns;
    const std::string row =
        "', 's', 'm', 'k', 'n', 'i', 1, 2, 3, 4, 5, 'u', 'p', 'c1', 'c2', 6,7,8,9,10";
    const std::string select = "Query select " + columns + " from device";
    const T_Device two[] = {someDevice("a"), someDevice("b")};
    T_Device anywhere;
    anywhere.HttpPort = 80;
    check({
        {"insert",
         [&] { service().InsertDevice(two, 2); },
         {"Query select max(Id) as Id from device", "Insert insert into device(" + columns +
                                                        ",Id) values('a" + row + ",8),('b" + row +
                                                        ",9);"}},
        {"insert without records is sent all the same",
         [] { service().InsertDevice(nullptr, 3); },
         {"Query select max(Id) as Id from device",
          "Insert insert into device(" + columns + ",Id) values;"}},
        {"replace",
         [&] { service().UpdateDevice(two, 2); },
         {"Execute replace into device(" + columns + ") values('a" + row + "),('b" + row + ");"}},
        {"batch delete",
         [&] { service().DeleteDevice(two, 2); },
         {"Execute delete from device where Guid='a' or Guid='b'"}},
        {"delete",
         [] { service().DeleteDevice(""); },
         {"Execute delete from device where Guid =''"}},
        {"query one",
         [] { service().ReleaseDevice(service().QueryDevice("g")); },
         {select + " where Guid='g' order by DisplayName"}},
        {"query all",
         [] { service().ReleaseDevice(service().QueryDevice("")); },
         {select + " order by DisplayName"}},
        {"exists",
         [&] { service().IsExistDevice(two[0]); },
         {"Query select * from device where IPAddress='i' and HttpPort=1"}},
        {"exists without an address",
         [&] { service().IsExistDevice(anywhere); },
         {"Query select * from device"}},
        {"no records",
         [&] {
             EXPECT_EQ(-1, service().UpdateDevice(nullptr, 5));
             EXPECT_EQ(-1, service().UpdateDevice(two, 0));
             EXPECT_EQ(-1, service().DeleteDevice(nullptr, 5));
         },
         {}},
    });
}

TEST_F(Devices, Results) {
    const T_Device device = someDevice("a");
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertDevice(&device, 1); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().UpdateDevice(&device, 1); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().UpdateDevice(device); }));
    EXPECT_EQ(passedThrough(), resultsOf([&] { return service().DeleteDevice(&device, 1); }));
    EXPECT_EQ(passedThrough(), resultsOf([] { return service().DeleteDevice("a"); }));
    EXPECT_EQ(nullptr, service().QueryDevice(""));

    script().queries = {Rows{{}, {{}}}, Rows{{}, {}}, std::nullopt};
    EXPECT_TRUE(service().IsExistDevice(device));
    EXPECT_FALSE(service().IsExistDevice(device));
    EXPECT_FALSE(service().IsExistDevice(device));
}

TEST_F(Devices, Reads) {
    checkReads(
        {"string Guid",         "string ServerGuid",  "string Mac",        "string DriverKey",
         "string DisplayName",  "string IPAddress",   "int HttpPort",      "int FtpPort",
         "int DefaultHttpPort", "int DefaultFtpPort", "int State",         "string UserName",
         "string Password",     "string Com1Driver",  "string Com2Driver", "int Browsable",
         "int VenderType",      "int DeviceType",     "int DriverType",    "int ChannelCount"},
        [] {
            T_DeviceList* list = service().QueryDevice("");
            service().UpdateDevice(list->items[0]);
            service().ReleaseDevice(list);
        },
        "Update vms: update device set ServerGuid = 'ServerGuid',Mac = 'Mac',DriverKey = 'DriverKey',DisplayName = 'DisplayName',IPAddress = 'IPAddress',HttpPort = '7',FtpPort = '8',DefaultHttpPort = '9',DefaultFtpPort = '10',State = '11',UserName = 'UserName',Password = 'Password',Com1Driver = 'Com1Driver',Com2Driver = 'Com2Driver',Browsable = '16',VenderType = '17',DeviceType = '18',DriverType = '19',ChannelCount = '20' where Guid = 'Guid'");
}

TEST_F(Devices, AssignmentIsPartial) {
    T_Device target;
    target.ServerGuid = "kept";
    target.VenderType = target.DeviceType = target.DriverType = target.ChannelCount = -1;
    target = someDevice("a");
    service().UpdateDevice(target);
    EXPECT_EQ(
        "Update vms: update device set ServerGuid = 'kept',Mac = 'm',DriverKey = 'k',DisplayName = 'n',IPAddress = 'i',HttpPort = '1',FtpPort = '2',DefaultHttpPort = '3',DefaultFtpPort = '4',State = '5',UserName = 'u',Password = 'p',Com1Driver = 'c1',Com2Driver = 'c2',Browsable = '6',VenderType = '-1',DeviceType = '-1',DriverType = '-1',ChannelCount = '-1' where Guid = 'a'",
        script().calls.back());
    const T_Device copy(someDevice("a"));
    EXPECT_EQ("s", copy.ServerGuid);
    EXPECT_EQ(10, copy.ChannelCount);
}

T_Channel channel(const char* guid, const char* device) {
    T_Channel channel;
    channel.Guid = guid;
    channel.Device_Guid = device;
    channel.DisplayName = "n";
    channel.Num = 4;
    channel.Type = -1;
    return channel;
}

TEST_F(Channels, Statements) {
    const T_Channel two[] = {channel("a", "d"), channel("", "e")};
    const std::string select = "Query select Guid,Device_Guid,DisplayName,Num,Type from channel";
    const auto query = [](const char* device, const char* guid) {
        return [=] { service().ReleaseChannelList(service().QueryChannel(device, guid)); };
    };
    check({
        {"insert",
         [&] { service().InsertChannel(two, 2); },
         {"Query select max(Id) as Id from channel",
          "Insert insert into channel(Guid,Device_Guid,DisplayName,Num,Type,Id) values('a', 'd', 'n', 4, -1, 8),('', 'e', 'n', 4, -1, 9);"}},
        {"replace",
         [&] { service().UpdateChannel(two, 2); },
         {"Execute replace into channel(Guid,Device_Guid,DisplayName,Num,Type) values('a', 'd', 'n', 4, -1),('', 'e', 'n', 4, -1);"}},
        {"batch delete",
         [&] { service().DeleteChannel(two, 2); },
         {"Execute delete from channel where Guid='a' or Device_Guid='e'"}},
        {"delete by device",
         [] { service().DeleteChannel("d", "g"); },
         {"Execute delete from channel where Device_Guid ='d'"}},
        {"delete by guid",
         [] { service().DeleteChannel("", "g"); },
         {"Execute delete from channel where Guid ='g'"}},
        {"delete by nothing",
         [] { service().DeleteChannel("", ""); },
         {"Execute delete from channel"}},
        {"query by device", query("d", "g"), {select + " where Device_Guid='d' order by Num"}},
        {"query by guid", query("", "g"), {select + " where Guid='g' order by Num"}},
        {"query all", query("", ""), {select + " order by Num"}},
        {"query by user",
         [] { service().ReleaseChannelList(service().QueryChannel("u")); },
         {select + ",usercameras where usercameras.User_Guid='u' order by Num"}},
        {"query by no user",
         [] { service().ReleaseChannelList(service().QueryChannel("")); },
         {select + " order by Num"}},
        {"exists",
         [&] { service().IsExistChannel(two[0]); },
         {"Query select * from channel where Device_Guid='d' and Num=4"}},
        {"exists without a device",
         [] { service().IsExistChannel(channel("a", "")); },
         {"Query select * from channel"}},
        {"no records",
         [&] {
             EXPECT_EQ(-1, service().InsertChannel(nullptr, 1));
             EXPECT_EQ(-1, service().UpdateChannel(two, 0));
             EXPECT_EQ(-1, service().DeleteChannel(nullptr, 1));
         },
         {}},
    });
}

TEST_F(Channels, Results) {
    const T_Channel one = channel("a", "d");
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertChannel(&one, 1); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().UpdateChannel(&one, 1); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().UpdateChannel(one); }));
    EXPECT_EQ(passedThrough(), resultsOf([&] { return service().DeleteChannel(&one, 1); }));
    EXPECT_EQ(passedThrough(), resultsOf([] { return service().DeleteChannel("d", ""); }));
    script().queries = {Rows{{}, {{}}}, std::nullopt};
    EXPECT_TRUE(service().IsExistChannel(one));
    EXPECT_FALSE(service().IsExistChannel(one));
}

TEST_F(Channels, NoRowsGiveAnEmptyList) {
    T_CHANNEL_LIST* list = service().QueryChannel("d", "");
    ASSERT_NE(nullptr, list);
    EXPECT_EQ(0, list->count);
    EXPECT_EQ(nullptr, list->items);
    service().ReleaseChannelList(list);
    script().queries = {std::nullopt, std::nullopt};
    EXPECT_EQ(nullptr, service().QueryChannel("d", ""));
    EXPECT_EQ(nullptr, service().QueryChannel("u"));
}

TEST_F(Channels, Reads) {
    checkReads(
        {"string Guid", "string Device_Guid", "string DisplayName", "int Num", "int Type"},
        [] {
            T_CHANNEL_LIST* list = service().QueryChannel("", "");
            service().UpdateChannel(list->items[0]);
            service().ReleaseChannelList(list);
        },
        "Update vms: update channel set Device_Guid = 'Device_Guid',DisplayName = 'DisplayName',Num = '4',Type = '5' where Guid = 'Guid'");
}

T_ChannelConfig config(const char* channel) {
    T_ChannelConfig config;
    config.Channel_Guid = channel;
    config.Hidden = 1;
    config.LiveStreamSettings = 8;
    return config;
}

TEST_F(ChannelConfigs, Statements) {
    const T_ChannelConfig two[] = {config("a"), config("b")};
    const std::string columns =
        "Channel_Guid,Hidden,Disabled,Preview,HalfSize,DeviceIndex,DBRepairStrateqy,LiveStreamIndex,LiveStreamSettings";
    const std::string rows = "('a', 1, 0, 0, 0, 0, 0, 0, 8),('b', 1, 0, 0, 0, 0, 0, 0, 8);";
    check({
        {"insert",
         [&] { service().InsertChannelConfig(two, 2); },
         {"Insert insert into channelproperty(" + columns + ") values" + rows}},
        {"replace",
         [&] { service().UpdateChannelConfig(two, 2); },
         {"Execute replace into channelproperty(" + columns + ") values" + rows}},
        {"batch delete",
         [&] { service().DeleteChannelConfig(two, 2); },
         {"Execute delete from channelproperty where Channel_Guid='a' or Channel_Guid='b'"}},
        {"delete",
         [] { service().DeleteChannelConfig("c"); },
         {"Execute delete from channelproperty where Channel_Guid ='c'"}},
        {"query, its condition also with an empty key",
         [] { service().ReleaseChannelConfig(service().QueryChannelConfig("")); },
         {"Query select " + columns +
          " from channelproperty where Channel_Guid='' order by Channel_Guid"}},
        {"no records",
         [&] {
             EXPECT_EQ(-1, service().InsertChannelConfig(nullptr, 1));
             EXPECT_EQ(-1, service().UpdateChannelConfig(two, 0));
             EXPECT_EQ(-1, service().DeleteChannelConfig(nullptr, 1));
         },
         {}},
    });
}

TEST_F(ChannelConfigs, Results) {
    const T_ChannelConfig one = config("a");
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertChannelConfig(&one, 1); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().UpdateChannelConfig(&one, 1); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().UpdateChannelConfig(one); }));
    EXPECT_EQ(passedThrough(), resultsOf([&] { return service().DeleteChannelConfig(&one, 1); }));
    EXPECT_EQ(passedThrough(), resultsOf([] { return service().DeleteChannelConfig("a"); }));

    T_ChannelConfig* none = service().QueryChannelConfig("unknown");
    ASSERT_NE(nullptr, none);
    EXPECT_EQ("", none->Channel_Guid);
    service().ReleaseChannelConfig(none);
    script().queries.push_back(std::nullopt);
    EXPECT_EQ(nullptr, service().QueryChannelConfig("a"));
}

TEST_F(ChannelConfigs, Reads) {
    checkReads(
        {"string Channel_Guid", "int Hidden", "int Disabled", "int Preview", "int HalfSize",
         "int DeviceIndex", "int DBRepairStrateqy", "int LiveStreamIndex",
         "int LiveStreamSettings"},
        [] {
            T_ChannelConfig* config = service().QueryChannelConfig("c");
            service().UpdateChannelConfig(*config);
            service().ReleaseChannelConfig(config);
        },
        "Update vms: update channelproperty set Hidden = '2',Disabled = '3',Preview = '4',HalfSize = '5',DeviceIndex = '6',DBRepairStrateqy = '7',LiveStreamIndex = '8',LiveStreamSettings = '9' where Channel_Guid = 'Channel_Guid'");
}

TEST_F(DeviceDrivers, Statements) {
    dbaccess::DataAccess access("", 0, "", "");
    DeviceDriverInfoDao dao(&access, "vms");
    T_DeviceDriverInfo driver;
    driver.Id = 3;
    driver.DriverKey = "k";
    driver.DriverName = "n";
    driver.DriverType = 2;
    driver.Source = "plain text";
    check({
        {"insert, the source bare",
         [&] { dao.InsertDeviceDriverInfoImp(driver); },
         {"Insert insert into devicedriverinfo(Id,DriverKey,DriverName,DriverType,Source) values(3, 'k', 'n', 2, plain text);"}},
        {"delete by key",
         [&] { dao.DeleteDeviceDriverInfoImp("k"); },
         {"Execute delete from devicedriverinfo where DriverKey ='k'"}},
        {"query by Id",
         [&] { dao.ReleaseChannelConfig(dao.QueryDeviceDriverInfoImp(-3)); },
         {"Query select Id,DriverKey,DriverName,DriverType,Source from devicedriverinfo where Id='-3'"}},
    });
    EXPECT_EQ(folded(), resultsOf([&] { return dao.InsertDeviceDriverInfoImp(driver); }));
    EXPECT_EQ(folded(), resultsOf([&] { return dao.UpdateDeviceDriverInfoImp(driver); }));
    EXPECT_EQ(passedThrough(), resultsOf([&] { return dao.DeleteDeviceDriverInfoImp("k"); }));
    checkReads(
        {"int Id", "string DriverKey", "string DriverName", "int DriverType", "string Source"},
        [&] {
            T_DeviceDriverInfo* found = dao.QueryDeviceDriverInfoImp(1);
            dao.UpdateDeviceDriverInfoImp(*found);
            dao.ReleaseChannelConfig(found);
        },
        "Update vms: update devicedriverinfo set DriverKey = 'DriverKey',DriverName = 'DriverName',DriverType = '4',Source = 'Source' where Id = '1'");
    script().queries.push_back(std::nullopt);
    EXPECT_EQ(nullptr, dao.QueryDeviceDriverInfoImp(1));
    dao.ReleaseChannelConfig(nullptr);
}

TEST_F(DeviceDrivers, PlaceholdersTouchNoTable) {
    const DeviceMgr manager(nullptr, "vms");
    EXPECT_EQ(0, DeviceTypeDao(nullptr, "vms").Load());
    EXPECT_EQ(nullptr, DeviceTypeDao(nullptr, "vms").QueryDeviceTypeDaoImp(1));
    EXPECT_EQ(0, ChannelTypeDao(nullptr, "vms").Load());
    EXPECT_EQ(nullptr, ChannelTypeDao(nullptr, "vms").QueryChannelTypeImp("t"));
}

}  // namespace
}  // namespace dbservice
