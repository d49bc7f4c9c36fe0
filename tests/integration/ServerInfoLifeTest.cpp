#include "tests/support/engines/ServiceTest.h"

namespace dbservice {
namespace {

using ServerInfoLife = ServiceTest;

T_ServerInfo server(const std::string& guid, const std::string& name) {
    T_ServerInfo server;
    server.Guid = guid;
    server.DisplayName = name;
    server.PrivateAddress = "10.0.0.1";
    server.PrivatePort = 2147483647;
    server.EnabledPublic = 1;
    server.PublicPort = -2147483647 - 1;
    server.MaxClient = 64;
    return server;
}

std::string guids(T_ServerInfoList* list) {
    return joined(list, &T_ServerInfo::Guid, &DBService::ReleaseServerInfo);
}

TEST_P(ServerInfoLife, FromInsertToDelete) {
    EXPECT_EQ("null", guids(service().QueryServerInfo("")));
    EXPECT_EQ(0, service().InsertServerInfo(server("b", "gate \xF0\x9F\x93\xB7")));
    EXPECT_EQ(0, service().InsertServerInfo(server("a", "platform")));
    EXPECT_EQ(-1062, service().InsertServerInfo(server("a", "again")));
    EXPECT_EQ("b|a", guids(service().QueryServerInfo("")));  // in the order of adding

    T_ServerInfoList* list = service().QueryServerInfo("b");
    ASSERT_NE(nullptr, list);
    ASSERT_EQ(1, list->count);
    EXPECT_EQ("gate \xF0\x9F\x93\xB7", list->items[0].DisplayName);
    EXPECT_EQ(2147483647, list->items[0].PrivatePort);
    EXPECT_EQ(-2147483647 - 1, list->items[0].PublicPort);
    service().ReleaseServerInfo(list);

    EXPECT_EQ(0, service().UpdateServerInfo(server("b", "door")));
    EXPECT_EQ(0, service().UpdateServerInfo(server("b", "door")));
    EXPECT_EQ(0, service().UpdateServerInfo(server("unknown", "door")));
    EXPECT_EQ("b|a", guids(service().QueryServerInfo("")));
    EXPECT_EQ("null", guids(service().QueryServerInfo("unknown")));

    EXPECT_EQ(0, service().DeleteServerInfo("unknown"));
    EXPECT_EQ(0, service().DeleteServerInfo(""));
    EXPECT_EQ(1, service().DeleteServerInfo("b"));
    EXPECT_EQ("a", guids(service().QueryServerInfo("")));
}

TEST_P(ServerInfoLife, HostileNames) {
    EXPECT_EQ(-1064, service().InsertServerInfo(server("g", "O'Hare")));
    EXPECT_EQ(0, service().InsertServerInfo(server("g", "O\\'Hare")));  // escaped by the caller
    EXPECT_EQ(-1406, service().UpdateServerInfo(server("g", std::string(1'000'000, 'x'))));
    T_ServerInfoList* list = service().QueryServerInfo("g");
    ASSERT_NE(nullptr, list);
    EXPECT_EQ("O'Hare", list->items[0].DisplayName);
    service().ReleaseServerInfo(list);
}

TEST_P(ServerInfoLife, ColumnsThatAreNullReadAsTheirPresets) {
    EXPECT_EQ(1, service().Insert("insert into serverinfo(Guid,Id) values('g',1)"));
    T_ServerInfoList* list = service().QueryServerInfo("g");
    ASSERT_NE(nullptr, list);
    EXPECT_EQ(500, list->items[0].MaxClient);
    EXPECT_EQ("", list->items[0].DisplayName);
    service().ReleaseServerInfo(list);
}

TEST_P(ServerInfoLife, ManyThreads) {
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 8; ++thread) {
        threads.emplace_back([thread] {
            for (int i = 0; i < 10; ++i) {
                const std::string guid = std::to_string(thread * 100 + i);
                EXPECT_EQ(0, service().InsertServerInfo(server(guid, "s")));
                EXPECT_EQ(guid, guids(service().QueryServerInfo(guid)));
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    T_ServerInfoList* list = service().QueryServerInfo("");
    ASSERT_NE(nullptr, list);
    EXPECT_EQ(80, list->count);
    service().ReleaseServerInfo(list);
}

INSTANTIATE_TEST_SUITE_P(Engines, ServerInfoLife, kEngines, engineName);

}  // namespace
}  // namespace dbservice
