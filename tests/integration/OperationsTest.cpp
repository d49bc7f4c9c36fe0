// What only a real database shows of the service's operations, beside the lives of records.
#include <ctime>

#include "dbaccess/EscapeText.h"
#include "dbaccess/LastError.h"
#include "dbservice/devices/DeviceDriverInfoDao.h"
#include "dbservice/maps/NodeInfo.h"
#include "tests/support/Threads.h"
#include "tests/support/engines/ServiceTest.h"

namespace dbservice {
namespace {

using Operations = ServiceTest;
using S = DBService;

T_ServerInfo server(const std::string& guid) {
    return keyed(&T_ServerInfo::Guid, guid);
}

std::string servers(const char* guid = "") {
    return joined(records(service().QueryServerInfo(guid), &S::ReleaseServerInfo),
                  &T_ServerInfo::Guid);
}

TEST_P(Operations, RefusedByContract) {
    for (const int result : {service().InsertDevice(nullptr, 0), service().UpdateGroupInfo({}),
                             service().InsertFaceCapture(nullptr, 0), service().UpdateCarousel({}),
                             service().UpdateViewGroupInfo({}), service().InsertViewItem({})})
        EXPECT_EQ(-1064, result);

    const T_UserCameras keyedAndNot[] = {keyed(&T_UserCameras::Guid, "g"), {}};
    EXPECT_EQ(-1064, service().DeleteUserCameras(keyedAndNot, 2));
    EXPECT_EQ(nullptr, service().QueryUserCameras(keyedAndNot, 2));
    EXPECT_EQ(1064, dbaccess::LastError().number);
    const T_EMapInfo noKey{};
    EXPECT_EQ(nullptr, service().QueryEMapInfo(&noKey, 1, true));
    EXPECT_EQ(1064, dbaccess::LastError().number);
    EXPECT_EQ(nullptr, service().QueryChannel("user"));
    EXPECT_EQ(1052, dbaccess::LastError().number);
    const T_NodeParam noNode{};
    EXPECT_EQ(-1064, NodeInfo(&access(), dbName()).DeleteNodeInfoImp(&noNode, 1));

    T_DeviceDriverInfo driver;
    driver.Source = "word";
    EXPECT_EQ(-1054, DeviceDriverInfoDao(&access(), dbName()).InsertDeviceDriverInfoImp(driver));
    driver.Source = "two words";
    EXPECT_EQ(-1064, DeviceDriverInfoDao(&access(), dbName()).InsertDeviceDriverInfoImp(driver));
}

TEST_P(Operations, RecordsComeInTheOrderOfAdding) {
    EXPECT_EQ(0, service().InsertServerInfo(server("b")));
    EXPECT_EQ(0, service().InsertServerInfo(server("a")));
    EXPECT_EQ(0, service().UpdateServerInfo(server("b")));
    EXPECT_EQ("b|a", servers());
    const auto cameras = [] {
        return joined(records(service().QueryUserCameras("", "", ""), &S::ReleaseUserCameras),
                      &T_UserCameras::Guid);
    };
    T_UserCameras four[4];
    for (T_UserCameras& camera : four)
        camera.Guid = "badc"[&camera - four];
    EXPECT_EQ(0, service().InsertUserCameras(four, 3));
    EXPECT_EQ("b|a|d", cameras());
    EXPECT_EQ(0, service().UpdateUserCameras(four + 1, 3));  // replaced rows go to the end
    EXPECT_EQ("b|a|d|c", cameras());
    EXPECT_EQ(0, service().UpdateUserCameras(four, 1));
    EXPECT_EQ("a|d|c|b", cameras());
}

TEST_P(Operations, ColumnsThatAreNullReadAsTheirPresets) {
    expectOk(execute("insert into serverinfo(Guid) values('g')"));
    const auto all = records(service().QueryServerInfo("g"), &S::ReleaseServerInfo);
    ASSERT_EQ(1U, all.size());
    EXPECT_EQ(500, all[0].MaxClient);
    EXPECT_EQ("", all[0].DisplayName);
}

TEST_P(Operations, LoginNeedsTheExactNameAndPassword) {
    const auto login = [](const std::string& name, const std::string& password) {
        return service().Login(dbaccess::EscapeText(name), dbaccess::EscapeText(password));
    };
    T_UserInfo user;
    user.UserName = dbaccess::EscapeText("O'Hara");
    user.Password = dbaccess::EscapeText("Back\\slash");
    EXPECT_EQ(0, service().InsertUser(user));
    EXPECT_EQ(0, login("O'Hara", "Back\\slash"));
    for (const char* password : {"", "back\\slash", "BACK\\SLASH", "Back\\slash ", " Back\\slash",
                                 "B\xC3\xA4"
                                 "ck\\slash",
                                 "' or '1'='1"})
        EXPECT_EQ(-1, login("O'Hara", password)) << password;
    EXPECT_EQ(-1, login("o'hara", "Back\\slash"));
    EXPECT_EQ(-1, login("O'Hara' -- ", ""));
    EXPECT_EQ(-1, login("\\", " or 1=1 -- "));
    EXPECT_EQ(-1, login("", ""));
    EXPECT_EQ(0, service().Login("' or '1'='1", "' or '1'='1"));  // by contract
}

TEST_P(Operations, BatchesOfTenThousand) {
    std::vector<T_Device> many(10'000);
    for (std::size_t i = 0; i < many.size(); ++i) {
        many[i].Guid = std::to_string(i);
        many[i].DisplayName = (i == 5000 ? "a" : "B") + std::to_string(100'000 + i);
    }
    EXPECT_EQ(0, service().InsertDevice(many.data(), 10'000));
    for (T_Device& device : many)
        device.HttpPort = 8080;
    EXPECT_EQ(0, service().UpdateDevice(many.data(), 10'000));
    const auto stored = records(service().QueryDevice(""), &S::ReleaseDevice);
    ASSERT_EQ(many.size(), stored.size());
    EXPECT_EQ("9999", stored[9998].Guid);
    EXPECT_EQ("5000", stored[9999].Guid);  // by the bytes of the name
    EXPECT_EQ(8080, stored[9999].HttpPort);
    EXPECT_EQ(1000, service().DeleteDevice(many.data(), 1000));
}

TEST_P(Operations, MapsHaveTheTimeOfTheirLastWrite) {
    const auto map = keyed(&T_EMapInfo::MapGuid, "m");
    EXPECT_EQ(0, service().InsertEMapInfo(&map, 1));
    const auto all = records(service().QueryEMapInfo(&map, 1, false), &S::ReleaseEMapInfoList);
    ASSERT_EQ(1U, all.size());
    EXPECT_NEAR(static_cast<double>(std::time(nullptr)), static_cast<double>(all[0].LastTime), 10);
}

TEST_P(Operations, AlarmSearches) {
    std::string rows;
    for (const char* guid : {"c0 t1", "c0 t2", "c1 t1", "c1 t2"})
        for (const char* number : {"1", "2", "3", "4", "5"})
            rows += std::string(",('") + guid + number + "','" + std::string(guid, 2) +
                    "',1,2,'begin','" + (guid + 3) + "')";
    EXPECT_EQ(20, execute("insert into alarminfo(Guid,ChannelGuid,AlarmLevel,AlarmMethod,BeginTime,"
                          "EndTime) values" +
                          rows.substr(1)));
    const T_Channel channels[] = {keyed(&T_Channel::Guid, "c1"), keyed(&T_Channel::Guid, "c0")};
    T_SearchAlarmParam request;
    request.AlarmLevel = 1;
    request.AlarmMethod = 2;
    request.BeginTime = "begin";
    request.EndTime = "t2";
    request.BeginIndex = 1;
    request.EndIndex = 3;
    int total = 0;
    for (const int count : {1, 2}) {
        request.ChannelCount = count;
        request.Channels = channels + 2 - count;
        const auto page =
            records(service().QueryAlarmInfo(&request, total), &S::ReleaseAlarmInfoList);
        EXPECT_EQ(3U, page.size());
        for (const T_AlarmInfo& alarm : page)
            EXPECT_TRUE(alarm.EndTime == "t2" || (count == 2 && alarm.ChannelGuid == "c1"));
        // Of two channels the filters bind to the last one: all of the first one match.
        EXPECT_EQ(count == 1 ? 5 : 15, total);
    }
}

TEST_P(Operations, FacesInARangeOfTime) {
    T_FaceCapture faces[5];
    for (T_FaceCapture& face : faces) {
        face.addTime = static_cast<unsigned int>(&faces[4] - &face);
        face.minority = 7;
    }
    faces[0].addTime = 3000000000U;  // stored as a negative number
    EXPECT_EQ(0, service().InsertFaceCapture(faces, 5));
    const auto times = [](unsigned int begin, unsigned int end) {
        std::string result;
        for (const T_FaceCapture& face :
             records(service().QueryFaceCapture(begin, end), &S::ReleaseFaceCaptureLsit)) {
            EXPECT_EQ(face.addTime, face.minority);  // by contract
            EXPECT_EQ(7U, face.mouthClose);
            result += std::to_string(face.addTime) + " ";
        }
        return result;
    };
    EXPECT_EQ("3000000000 0 1 2 3 ", times(0, 0));
    EXPECT_EQ("3000000000 0 1 2 ", times(0x80000000U, 3));
    EXPECT_EQ("2 ", times(1, 3));  // without the bounds
    EXPECT_EQ("", times(3, 0));
}

TEST_P(Operations, ManyThreads) {
    inThreads(8, [](int thread) {
        for (int i = 0; i < 10; ++i) {
            const std::string guid = std::to_string(thread * 100 + i);
            EXPECT_EQ(0, service().InsertServerInfo(server(guid)));
            EXPECT_EQ(guid, servers(guid.c_str()));
        }
    });
    EXPECT_EQ(80, std::stoi(query("select count(*) as v from serverinfo")));
}

INSTANTIATE_TEST_SUITE_P(Engines, Operations, kEngines, engineName);

}  // namespace
}  // namespace dbservice
