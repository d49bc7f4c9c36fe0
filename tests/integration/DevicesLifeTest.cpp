#include "dbaccess/DataAccess.h"
#include "dbservice/devices/DeviceDriverInfoDao.h"
#include "tests/support/engines/ServiceTest.h"

namespace dbservice {
namespace {

class DeviceLife : public ServiceTest {};
class ChannelLife : public ServiceTest {};
class ChannelConfigLife : public ServiceTest {};
class DeviceDriverLife : public ServiceTest {};

T_Device device(const std::string& guid, const std::string& name, const std::string& address) {
    T_Device device;
    device.Guid = guid;
    device.DisplayName = name;
    device.IPAddress = address;
    device.HttpPort = 80;
    return device;
}

std::string names(T_DeviceList* list) {
    return joined(list, &T_Device::DisplayName, &DBService::ReleaseDevice);
}

TEST_P(DeviceLife, FromInsertToDelete) {
    EXPECT_EQ(-1064, service().InsertDevice(nullptr, 0));
    EXPECT_FALSE(service().IsExistDevice({}));
    const T_Device three[] = {device("a", "north", "10.0.0.1"), device("b", "east", "10.0.0.2"),
                              device("c", "West", "10.0.0.3")};
    EXPECT_EQ(0, service().InsertDevice(three, 3));
    EXPECT_EQ(-1062, service().InsertDevice(three, 3));
    EXPECT_EQ("West|east|north", names(service().QueryDevice("")));  // by bytes
    EXPECT_TRUE(service().IsExistDevice(three[1]));
    EXPECT_FALSE(service().IsExistDevice(device("", "", "10.0.0.9")));
    EXPECT_TRUE(service().IsExistDevice({}));

    T_Device changed = three[0];
    changed.DisplayName = "south";
    EXPECT_EQ(0, service().UpdateDevice(changed));
    const T_Device replaced[] = {device("b", "ost", "10.0.0.2"), device("d", "gate", "10.0.0.4")};
    EXPECT_EQ(0, service().UpdateDevice(replaced, 2));
    EXPECT_EQ("West|gate|ost|south", names(service().QueryDevice("")));
    EXPECT_EQ("ost", names(service().QueryDevice("b")));

    EXPECT_EQ(2, service().DeleteDevice(three, 2));
    EXPECT_EQ(1, service().DeleteDevice("c"));
    EXPECT_EQ(0, service().DeleteDevice(""));
    EXPECT_EQ("gate", names(service().QueryDevice("")));
}

TEST_P(DeviceLife, BatchesOfTenThousand) {
    std::vector<T_Device> many;
    for (int i = 0; i < 10'000; ++i) {
        many.push_back(
            device(std::to_string(i), "device " + std::to_string(100'000 + i), "10.0.0.1"));
    }
    const int count = static_cast<int>(many.size());
    EXPECT_EQ(0, service().InsertDevice(many.data(), count));
    for (T_Device& one : many)
        one.HttpPort = 8080;
    EXPECT_EQ(0, service().UpdateDevice(many.data(), count));
    T_DeviceList* list = service().QueryDevice("");
    ASSERT_NE(nullptr, list);
    ASSERT_EQ(count, list->count);
    EXPECT_EQ("9999", list->items[count - 1].Guid);
    EXPECT_EQ(8080, list->items[count - 1].HttpPort);
    service().ReleaseDevice(list);
    EXPECT_EQ(1000, service().DeleteDevice(many.data(), 1000));
}

TEST_P(DeviceLife, BatchesOverThePacketLimitWriteNothing) {
    std::vector<T_Device> many(200, device("", std::string(100'000, 'x'), ""));
    EXPECT_EQ(-1153, service().InsertDevice(many.data(), 200));
    EXPECT_EQ(-1153, service().UpdateDevice(many.data(), 200));
    EXPECT_EQ("null", names(service().QueryDevice("")));

    // One record that does not fit takes its whole batch with it.
    T_Device three[] = {device("a", "x", ""), device("b", std::string(256, 'x'), ""),
                        device("c", "z", "")};
    EXPECT_EQ(-1406, service().InsertDevice(three, 3));
    EXPECT_EQ("null", names(service().QueryDevice("")));
}

T_Channel channel(const char* guid, const char* device, int number) {
    T_Channel channel;
    channel.Guid = guid;
    channel.Device_Guid = device;
    channel.Num = number;
    return channel;
}

std::string guids(T_CHANNEL_LIST* list) {
    return joined(list, &T_Channel::Guid, &DBService::ReleaseChannelList);
}

TEST_P(ChannelLife, FromInsertToDelete) {
    EXPECT_EQ("", guids(service().QueryChannel("", "")));  // empty, not null
    EXPECT_FALSE(service().IsExistChannel({}));
    const T_Channel four[] = {channel("a", "d", 2), channel("b", "d", 1), channel("c", "e", 3),
                              channel("x", "f", 4)};
    EXPECT_EQ(0, service().InsertChannel(four, 4));
    EXPECT_EQ(-1062, service().InsertChannel(four, 1));
    EXPECT_EQ("b|a|c|x", guids(service().QueryChannel("", "")));
    EXPECT_EQ("b|a", guids(service().QueryChannel("d", "c")));
    EXPECT_EQ("c", guids(service().QueryChannel("", "c")));
    EXPECT_EQ("", guids(service().QueryChannel("unknown", "")));
    EXPECT_TRUE(service().IsExistChannel(channel("", "d", 2)));
    EXPECT_FALSE(service().IsExistChannel(channel("", "d", 9)));
    EXPECT_TRUE(service().IsExistChannel({}));

    EXPECT_EQ("null", guids(service().QueryChannel("user")));  // the database refuses it
    EXPECT_EQ(1052, dbaccess::LastError().number);
    EXPECT_EQ("b|a|c|x", guids(service().QueryChannel("")));

    EXPECT_EQ(0, service().UpdateChannel(channel("a", "d", 0)));
    const T_Channel replaced[] = {channel("c", "e", -1), channel("y", "g", 9)};
    EXPECT_EQ(0, service().UpdateChannel(replaced, 2));
    EXPECT_EQ("c|a|b|x|y", guids(service().QueryChannel("", "")));

    const T_Channel keys[] = {channel("x", "d", 0), channel("", "e", 0)};
    EXPECT_EQ(2, service().DeleteChannel(keys, 2));
    EXPECT_EQ(1, service().DeleteChannel("", "y"));
    EXPECT_EQ("a|b", guids(service().QueryChannel("", "")));
    EXPECT_EQ(2, service().DeleteChannel("", ""));  // everything
}

TEST_P(ChannelConfigLife, FromInsertToDelete) {
    const auto preview = [](const char* guid) {
        T_ChannelConfig* config = service().QueryChannelConfig(guid);
        std::string result = config == nullptr
                                 ? "null"
                                 : config->Channel_Guid + "/" + std::to_string(config->Preview);
        service().ReleaseChannelConfig(config);
        return result;
    };
    T_ChannelConfig two[2];
    two[0].Channel_Guid = "a";
    two[1].Channel_Guid = "b";
    EXPECT_EQ("/0", preview("a"));
    EXPECT_EQ(0, service().InsertChannelConfig(two, 2));
    EXPECT_EQ(-1062, service().InsertChannelConfig(two, 1));
    two[0].Preview = 5;
    EXPECT_EQ(0, service().UpdateChannelConfig(two[0]));
    EXPECT_EQ("a/5", preview("a"));
    two[1].Preview = 6;
    EXPECT_EQ(0, service().UpdateChannelConfig(two, 2));
    EXPECT_EQ("b/6", preview("b"));
    EXPECT_EQ(1, service().DeleteChannelConfig("a"));
    EXPECT_EQ(1, service().DeleteChannelConfig(two, 2));
    EXPECT_EQ("/0", preview("b"));
}

TEST_P(DeviceDriverLife, FromInsertToDelete) {
    DeviceDriverInfoDao dao(&access(), dbName());
    const auto source = [&](int id) {
        T_DeviceDriverInfo* driver = dao.QueryDeviceDriverInfoImp(id);
        std::string result =
            driver == nullptr ? "null" : std::to_string(driver->Id) + "/" + driver->Source;
        dao.ReleaseChannelConfig(driver);
        return result;
    };
    T_DeviceDriverInfo driver;
    driver.Id = 1;
    driver.DriverKey = "key";
    driver.Source = "plain";
    EXPECT_EQ(-1054, dao.InsertDeviceDriverInfoImp(driver));  // a bare word
    driver.Source = "two words";
    EXPECT_EQ(-1064, dao.InsertDeviceDriverInfoImp(driver));
    driver.Source = "'cd'";
    EXPECT_EQ(0, dao.InsertDeviceDriverInfoImp(driver));
    EXPECT_EQ(-1062, dao.InsertDeviceDriverInfoImp(driver));
    driver.Id = 2;
    driver.Source = "7";
    EXPECT_EQ(0, dao.InsertDeviceDriverInfoImp(driver));
    EXPECT_EQ("1/cd", source(1));
    EXPECT_EQ("2/7", source(2));
    EXPECT_EQ("0/", source(3));
    driver.Source = "plain now";
    EXPECT_EQ(0, dao.UpdateDeviceDriverInfoImp(driver));
    EXPECT_EQ("2/plain now", source(2));
    EXPECT_EQ(2, dao.DeleteDeviceDriverInfoImp("key"));
}

INSTANTIATE_TEST_SUITE_P(Engines, DeviceLife, kEngines, engineName);
INSTANTIATE_TEST_SUITE_P(Engines, ChannelLife, kEngines, engineName);
INSTANTIATE_TEST_SUITE_P(Engines, ChannelConfigLife, kEngines, engineName);
INSTANTIATE_TEST_SUITE_P(Engines, DeviceDriverLife, kEngines, engineName);

}  // namespace
}  // namespace dbservice
