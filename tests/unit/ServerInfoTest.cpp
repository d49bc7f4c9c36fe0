#include "tests/unit/StatementCases.h"

namespace dbservice {
namespace {

using scripted::Rows;
using scripted::script;
using testing::ElementsAre;

using ServerInfo = ScriptedService;

T_ServerInfo someServer() {
    T_ServerInfo server;
    server.Guid = "g";
    server.DisplayName = "O'Hare";
    server.PrivateAddress = "10.0.0.1";
    server.PrivatePort = 8000;
    server.EnabledPublic = 1;
    server.PublicAddress = "vms.example";
    server.PublicPort = -9;
    server.MaxClient = 64;
    return server;
}

constexpr char kSelect[] =
    "Query select Guid,DisplayName,PrivateAddress,PrivatePort,EnabledPublic,PublicAddress,PublicPort,MaxClient from serverinfo";

TEST_F(ServerInfo, Statements) {
    const T_ServerInfo server = someServer();
    check({
        {"insert",
         [&] { service().InsertServerInfo(server); },
         {"Query select max(Id) as Id from serverinfo",
          "Insert insert into serverinfo(Guid,DisplayName,PrivateAddress,PrivatePort,EnabledPublic,PublicAddress,PublicPort,MaxClient,Id) values('g', 'O'Hare', '10.0.0.1', 8000, 1, 'vms.example', -9, 64, 8);"}},
        {"update",
         [&] { service().UpdateServerInfo(server); },
         {"Update update serverinfo set DisplayName = 'O'Hare',PrivateAddress = '10.0.0.1',PrivatePort = '8000',EnabledPublic = '1',PublicAddress = 'vms.example',PublicPort = '-9',MaxClient = '64' where Guid = 'g'"}},
        {"delete",
         [] { service().DeleteServerInfo("g"); },
         {"Execute delete from serverinfo where Guid ='g'"}},
        {"delete with an empty key",
         [] { service().DeleteServerInfo(""); },
         {"Execute delete from serverinfo where Guid =''"}},
        {"query one",
         [] { service().ReleaseServerInfo(service().QueryServerInfo("g")); },
         {std::string(kSelect) + " where Guid='g' order by Id"}},
        {"query all",
         [] { service().ReleaseServerInfo(service().QueryServerInfo("")); },
         {std::string(kSelect) + " order by Id"}},
    });
}

TEST_F(ServerInfo, Results) {
    EXPECT_EQ(folded(), resultsOf([] { return service().InsertServerInfo({}); }));
    EXPECT_EQ(folded(), resultsOf([] { return service().UpdateServerInfo({}); }));
    EXPECT_EQ(passedThrough(), resultsOf([] { return service().DeleteServerInfo("g"); }));
}

TEST_F(ServerInfo, ReadsEachColumnInOrder) {
    script().queries.push_back(Rows{{"Guid", "DisplayName", "PrivateAddress", "PrivatePort",
                                     "EnabledPublic", "PublicAddress", "PublicPort", "MaxClient"},
                                    {{"g", "gate", "10.0.0.1", "1", "2", "p", "3", "4"},
                                     {"h", "", "", "5", "6", "", "7", "8"}}});
    T_ServerInfoList* list = service().QueryServerInfo("");
    ASSERT_NE(nullptr, list);
    ASSERT_EQ(2, list->count);
    const T_ServerInfo& server = list->items[0];
    EXPECT_EQ("g/gate/10.0.0.1/p", server.Guid + "/" + server.DisplayName + "/" +
                                       server.PrivateAddress + "/" + server.PublicAddress);
    EXPECT_THAT((std::vector<int>{server.PrivatePort, server.EnabledPublic, server.PublicPort,
                                  server.MaxClient}),
                ElementsAre(1, 2, 3, 4));
    EXPECT_EQ("h", list->items[1].Guid);
    script().reads.resize(8);
    EXPECT_THAT(script().reads,
                ElementsAre("string Guid", "string DisplayName", "string PrivateAddress",
                            "int PrivatePort", "int EnabledPublic", "string PublicAddress",
                            "int PublicPort", "int MaxClient"));
    service().ReleaseServerInfo(list);
}

TEST_F(ServerInfo, UnsetColumnsKeepTheirPresets) {
    script().queries.push_back(Rows{{"Guid"}, {{"g"}}});
    T_ServerInfoList* list = service().QueryServerInfo("g");
    ASSERT_NE(nullptr, list);
    const T_ServerInfo& server = list->items[0];
    EXPECT_THAT((std::vector<int>{server.PrivatePort, server.EnabledPublic, server.PublicPort,
                                  server.MaxClient}),
                ElementsAre(0, 0, 0, 500));
    service().ReleaseServerInfo(list);
}

TEST_F(ServerInfo, NoRowsAndFailedQueriesAreNull) {
    EXPECT_EQ(nullptr, service().QueryServerInfo("unknown"));
    script().queries.push_back(std::nullopt);
    EXPECT_EQ(nullptr, service().QueryServerInfo(""));
    service().ReleaseServerInfo(nullptr);
}

}  // namespace
}  // namespace dbservice
