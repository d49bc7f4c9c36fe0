// What only a real database shows of the service's operations, beside the lives of records.
#include "dbaccess/EscapeText.h"

#include <random>

#include "tests/support/Threads.h"
#include "tests/support/engines/ServiceTest.h"

namespace dbservice {
namespace {

using namespace std::string_literals;
using Operations = ServiceTest;
using S = DBService;

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

TEST_P(Operations, AnyEscapedTextIsReadBackAsItWas) {
    // What means something to a statement, alone and in any company, and plain characters.
    std::vector<std::string> pieces = {"\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x93\xB7",
                                       "' or 1=1 -- "};
    for (const char c : "'''\"\\\\\\`--#/**/;?%_\n\r\t\x1a\0 nZa0"s)
        pieces.emplace_back(1, c);
    std::mt19937 random(20261121);  // NOLINT(cert-msc51-cpp): the same texts each time
    for (int i = 0; i < 500; ++i) {
        std::string text;
        for (auto count = random() % 20; count > 0; --count)
            text += pieces[random() % pieces.size()];
        const std::string guid = std::to_string(i);
        ASSERT_EQ(0, service().InsertArchiveInfo({guid, dbaccess::EscapeText(text)}));
        EXPECT_EQ(text, joined(records(service().QueryArchiveInfo(guid),
                                       &DBService::ReleaseArchiveInfoList),
                               &T_ArchiveInfo::ArchiveTime));
    }
}

TEST_P(Operations, BatchesOfTenThousand) {
    std::vector<T_Device> many(10'000);
    for (std::size_t i = 0; i < many.size(); ++i) {
        many[i].Guid = std::to_string(i);
        many[i].DisplayName = (i == 5000 ? "a" : "B") + std::to_string(100'000 + i);
    }
    EXPECT_EQ(0, service().InsertDevice(many.data(), 10'000));
    for (int port = 1; port <= 3; ++port) {  // as text, prepared, kept
        for (T_Device& device : many)
            device.HttpPort = port;
        EXPECT_EQ(0, service().UpdateDevice(many.data(), 10'000));
    }
    EXPECT_EQ("10000", query("select count(*) as v from device where HttpPort=3"));
    const auto stored = records(service().QueryDevice(""), &S::ReleaseDevice);
    ASSERT_EQ(many.size(), stored.size());
    EXPECT_EQ("9999", stored[9998].Guid);
    EXPECT_EQ("5000", stored[9999].Guid);  // by the bytes of the name
    EXPECT_EQ(1000, service().DeleteDevice(many.data(), 1000));
}

TEST_P(Operations, FacesInARangeOfTime) {
    // The first is stored as a negative number.
    const unsigned int times[] = {3000000000, 3, 2, 1, 0};
    T_FaceCapture faces[5];
    for (T_FaceCapture& face : faces)
        face.addTime = times[&face - faces];
    EXPECT_EQ(0, service().InsertFaceCapture(faces, 5));
    const auto found = [](unsigned int begin, unsigned int end) {
        std::string result;
        for (const T_FaceCapture& face :
             records(service().QueryFaceCapture(begin, end), &S::ReleaseFaceCaptureLsit))
            result += std::to_string(face.addTime) + " ";
        return result;
    };
    EXPECT_EQ("3000000000 0 1 2 3 ", found(0, 0));
    EXPECT_EQ("3000000000 0 1 2 ", found(0x80000000U, 3));
    EXPECT_EQ("2 ", found(1, 3));  // without the bounds
    EXPECT_EQ("", found(3, 0));
}

TEST_P(Operations, ManyThreads) {
    inThreads(8, [](int thread) {
        for (int i = 0; i < 10; ++i) {
            const std::string guid = std::to_string(thread * 100 + i);
            EXPECT_EQ(0, service().InsertServerInfo(keyed(&T_ServerInfo::Guid, guid)));
            const auto found = records(service().QueryServerInfo(guid), &S::ReleaseServerInfo);
            EXPECT_EQ(guid, joined(found, &T_ServerInfo::Guid));
        }
    });
    EXPECT_EQ(80, std::stoi(query("select count(*) as v from serverinfo")));
}

INSTANTIATE_TEST_SUITE_P(Engines, Operations, kEngines, engineName);

}  // namespace
}  // namespace dbservice
