#include "dbaccess/DataAccess.h"
#include "dbservice/devices/ChannelTypeDao.h"
#include "dbservice/devices/DeviceDriverInfoDao.h"
#include "dbservice/devices/DeviceMgr.h"
#include "dbservice/devices/DeviceTypeDao.h"
#include "tests/unit/Operations.h"

namespace dbservice {
namespace {

TEST_F(Operations, Devices) {
    const auto release = &DBService::ReleaseDevice;
    const auto devices = recordsOf(db().QueryDevice(""), release);
    T_Device assigned(devices[1]);
    assigned = devices[0];
    T_Device noAddress(devices[0]);
    noAddress.IPAddress = "";
    check("InsertDevice", kZero, [&] { return db().InsertDevice(devices.data(), 2); });
    check("InsertDevice (null array)", kZero, [] { return db().InsertDevice(nullptr, 3); });
    check("InsertDevice (count of 0)", kZero, [&] { return db().InsertDevice(devices.data(), 0); });
    batch("UpdateDevice (batch)", kZero, devices, &DBService::UpdateDevice);
    single("UpdateDevice", devices[0], &DBService::UpdateDevice);
    single("UpdateDevice (the first assigned to the second)", assigned, &DBService::UpdateDevice);
    keyed("QueryDevice", kListOrNull, "Guid", &DBService::QueryDevice, release);
    check("IsExistDevice", kWhetherAny, [&] { return db().IsExistDevice(devices[0]); });
    check("IsExistDevice (no address)", kWhetherAny, [&] { return db().IsExistDevice(noAddress); });
    batch("DeleteDevice (batch)", kCount, devices, &DBService::DeleteDevice);
    keyed("DeleteDevice", kCount, "Guid", &DBService::DeleteDevice);
}

TEST_F(Operations, Channels) {
    const auto release = &DBService::ReleaseChannelList;
    const auto channels = recordsOf(db().QueryChannel(""), release);
    auto noGuid = channels;
    noGuid[1].Guid = "";
    T_Channel noDevice = channels[0];
    noDevice.Device_Guid = "";
    const auto query = [&](const char* device, const char* guid) {
        return [=] { return Answer(db().QueryChannel(device, guid), release); };
    };
    const auto remove = [](const char* device, const char* guid) {
        return [=] { return db().DeleteChannel(device, guid); };
    };
    batch("InsertChannel", kZero, channels, &DBService::InsertChannel);
    batch("UpdateChannel (batch)", kZero, channels, &DBService::UpdateChannel);
    single("UpdateChannel", channels[0], &DBService::UpdateChannel);
    check("QueryChannel", kListOrEmpty, query("Device_Guid", "Guid"));
    check("QueryChannel (no device)", kListOrEmpty, query("", "Guid"));
    check("QueryChannel (no keys)", kListOrEmpty, query("", ""));
    keyed("QueryChannel (user)", kListOrEmpty, "User_Guid", &DBService::QueryChannel, release);
    check("IsExistChannel", kWhetherAny, [&] { return db().IsExistChannel(channels[0]); });
    check("IsExistChannel (no device)", kWhetherAny, [&] { return db().IsExistChannel(noDevice); });
    batch("DeleteChannel (batch)", kCount, channels, &DBService::DeleteChannel);
    batch("DeleteChannel (batch, second without Guid)", kCount, noGuid, &DBService::DeleteChannel);
    check("DeleteChannel", kCount, remove("Device_Guid", "Guid"));
    check("DeleteChannel (no device)", kCount, remove("", "Guid"));
    check("DeleteChannel (no keys)", kCount, remove("", ""));
}

TEST_F(Operations, ChannelConfigs) {
    const auto release = &DBService::ReleaseChannelConfig;
    const std::vector<T_ChannelConfig> configs = {recordOf(db().QueryChannelConfig(""), release),
                                                  {}};
    batch("InsertChannelConfig", kZero, configs, &DBService::InsertChannelConfig);
    batch("UpdateChannelConfig (batch)", kZero, configs, &DBService::UpdateChannelConfig);
    single("UpdateChannelConfig", configs[0], &DBService::UpdateChannelConfig);
    keyed("QueryChannelConfig", kRecordOrDefault, "Channel_Guid", &DBService::QueryChannelConfig,
          release);
    batch("DeleteChannelConfig (batch)", kCount, configs, &DBService::DeleteChannelConfig);
    keyed("DeleteChannelConfig", kCount, "Channel_Guid", &DBService::DeleteChannelConfig);
}

TEST_F(Operations, DeviceDrivers) {
    throughService_ = false;
    dbaccess::DataAccess access("", 0, "", "");
    DeviceDriverInfoDao dao(&access, "vms");
    const auto release = &DeviceDriverInfoDao::ReleaseChannelConfig;
    const auto driver = recordOf(dao.QueryDeviceDriverInfoImp(1), release, dao);
    const auto remove = [&](const char* key) {
        return [&dao, key] { return dao.DeleteDeviceDriverInfoImp(key); };
    };
    check("InsertDeviceDriverInfo", kZero, [&] { return dao.InsertDeviceDriverInfoImp(driver); });
    check("UpdateDeviceDriverInfo", kZero, [&] { return dao.UpdateDeviceDriverInfoImp(driver); });
    check("QueryDeviceDriverInfo", kRecordOrDefault,
          [&] { return Answer(dao.QueryDeviceDriverInfoImp(-3), release, dao); });
    check("DeleteDeviceDriverInfo", kCount, remove("DriverKey"));
    check("DeleteDeviceDriverInfo (empty key)", kCount, remove(""));
}

TEST(DevicePlaceholders, TouchNoTable) {
    const DeviceMgr manager(nullptr, "vms");
    EXPECT_EQ(0, DeviceTypeDao(nullptr, "vms").Load());
    EXPECT_EQ(nullptr, DeviceTypeDao(nullptr, "vms").QueryDeviceTypeDaoImp(1));
    EXPECT_EQ(0, ChannelTypeDao(nullptr, "vms").Load());
    EXPECT_EQ(nullptr, ChannelTypeDao(nullptr, "vms").QueryChannelTypeImp("t"));
}

}  // namespace
}  // namespace dbservice
