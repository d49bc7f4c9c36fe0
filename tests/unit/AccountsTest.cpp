#include "dbservice/accounts/UserInfoDao.h"
#include "dbservice/accounts/UserTypeDao.h"
#include "tests/unit/Operations.h"

namespace dbservice {
namespace {

using scripted::script;
using ServerInfo = ScriptedService;

TEST_F(Operations, Servers) {
    const auto release = &DBService::ReleaseServerInfo;
    const auto servers = recordsOf(db().QueryServerInfo(""), release);
    single("InsertServerInfo", servers[0], &DBService::InsertServerInfo);
    single("UpdateServerInfo", servers[0], &DBService::UpdateServerInfo);
    keyed("QueryServerInfo", kListOrNull, "Guid", &DBService::QueryServerInfo, release);
    keyed("DeleteServerInfo", kCount, "Guid", &DBService::DeleteServerInfo);
}

TEST_F(ServerInfo, ColumnsThatAreNullKeepTheirPresets) {
    script().queries.push_back(scripted::Rows{{"Guid"}, {{"g"}, {"h"}}});
    const auto servers = recordsOf(db().QueryServerInfo("g"), &DBService::ReleaseServerInfo);
    EXPECT_EQ(0, servers[0].PrivatePort);
    EXPECT_EQ(0, servers[0].EnabledPublic);
    EXPECT_EQ(0, servers[0].PublicPort);
    EXPECT_EQ(500, servers[0].MaxClient);
}

TEST_F(Operations, Users) {
    const auto release = &DBService::ReleaseUser;
    const auto users = recordsOf(db().QueryUser("", "", ""), release);
    const auto query = [&](const char* guid, const char* name, const char* password) {
        return [=] { return Answer(db().QueryUser(guid, name, password), release); };
    };
    const Answers kLogin = {{}, {"0", "-1", "-1"}, "-1"};
    check("Login", kLogin, [] { return db().Login("UserName", "Password"); });
    single("InsertUser", users[0], &DBService::InsertUser);
    single("UpdateUser", users[0], &DBService::UpdateUser);
    check("QueryUser", kListOrNull, query("Guid", "UserName", "Password"));
    check("QueryUser (name and password)", kListOrNull, query("", "UserName", "Password"));
    check("QueryUser (password)", kListOrNull, query("", "", "Password"));
    check("QueryUser (no keys)", kListOrNull, query("", "", ""));
    keyed("DeleteUser", kCount, "Guid", &DBService::DeleteUser);
}

TEST_F(Operations, UserRights) {
    const auto release = &DBService::ReleaseUserRights;
    const T_UserRights rights = recordOf(db().QueryUserRights(""), release);
    single("InsertUserRights", rights, &DBService::InsertUserRights);
    single("UpdateUserRights", rights, &DBService::UpdateUserRights);
    keyed("QueryUserRights", kRecordOrDefault, "User_Guid", &DBService::QueryUserRights, release);
    keyed("DeleteUserRights", kCount, "User_Guid", &DBService::DeleteUserRights);
}

TEST_F(Operations, UserCameras) {
    const auto release = &DBService::ReleaseUserCameras;
    const auto cameras = recordsOf(db().QueryUserCameras("", "", ""), release);
    const std::vector<T_UserCameras> emptySecond = {cameras[0], {}};
    std::vector<T_UserCameras> emptyFirst(2);
    emptyFirst[1].User_Guid = "User_Guid";
    const auto query = [&](const char* guid, const char* user, const char* camera) {
        return [=] { return Answer(db().QueryUserCameras(guid, user, camera), release); };
    };
    const auto queryBatch = [&](const T_UserCameras* array, int count) {
        return [=] { return Answer(db().QueryUserCameras(array, count), release); };
    };
    const auto remove = [](const T_UserCameras* array, int count) {
        return db().DeleteUserCameras(array, count);
    };
    batch("InsertUserCameras", kZero, cameras, &DBService::InsertUserCameras);
    batch("UpdateUserCameras (batch)", kZero, cameras, &DBService::UpdateUserCameras);
    single("UpdateUserCameras", cameras[0], &DBService::UpdateUserCameras);
    check("QueryUserCameras", kListOrNull, query("Guid", "User_Guid", "Camera_Guid"));
    check("QueryUserCameras (no user)", kListOrNull, query("Guid", "", "Camera_Guid"));
    check("QueryUserCameras (no keys)", kListOrNull, query("", "", ""));
    check("QueryUserCameras (batch)", kListOrNull, queryBatch(cameras.data(), 2));
    check("QueryUserCameras (null array)", kListOrNull, queryBatch(nullptr, 5));
    check("QueryUserCameras (count of 0)", kListOrNull, queryBatch(cameras.data(), 0));
    batch("DeleteUserCameras (batch)", kCount, cameras, remove);
    batch("DeleteUserCameras (batch, empty second)", kCount, emptySecond, remove);
    batch("DeleteUserCameras (batch, empty first)", kCount, emptyFirst, remove);
    check("DeleteUserCameras", kCount,
          [] { return db().DeleteUserCameras("", "User_Guid", "Camera_Guid"); });
    check("DeleteUserCameras (batch, empty)", kCount,
          [&] { return db().DeleteUserCameras(emptyFirst.data(), 1); });
    check("DeleteUserCameras (no keys)", kCount, [] { return db().DeleteUserCameras("", "", ""); });
}

TEST(AccountPlaceholders, TouchNoTable) {
    UserTypeDao types(nullptr, "vms");
    EXPECT_EQ(0, types.Load());
    EXPECT_EQ("", types.QueryDeviceTypeDaoImp(1));
    EXPECT_EQ(0, UserInfoDao(nullptr, "vms").IsExistUserImp({}));
}

}  // namespace
}  // namespace dbservice
