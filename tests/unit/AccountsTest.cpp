#include "dbservice/accounts/UserInfoDao.h"
#include "dbservice/accounts/UserTypeDao.h"
#include "tests/unit/StatementCases.h"

namespace dbservice {
namespace {

using scripted::Rows;
using scripted::script;

using UserAccounts = ScriptedService;
using UserRights = ScriptedService;
using UserCameras = ScriptedService;

T_UserInfo someUser() {
    T_UserInfo user;
    user.Guid = "g";
    user.UserId = "id";
    user.AdsPath = "C:\\ads";
    user.UserName = "O'Hara";
    user.Password = "p\"w";
    user.Type = -2;
    user.SId = "sid";
    user.SamacCountName = "sam";
    return user;
}

TEST_F(UserAccounts, Statements) {
    const T_UserInfo user = someUser();
    const std::string select =
        "Query select Guid,UserId,AdsPath,UserName,Password,Type,SId,SamacCountName from userinfo";
    const auto query = [](const char* guid, const char* name, const char* password) {
        return [=] { service().ReleaseUser(service().QueryUser(guid, name, password)); };
    };
    check({
        {"login",
         [] { service().Login("na'me", "pass"); },
         {"Query select Guid from userinfo where UserName='na'me' and Password='pass'"}},
        {"insert",
         [&] { service().InsertUser(user); },
         {"Query select max(Id) as Id from userinfo",
          "Insert insert into userinfo(Guid,UserId,AdsPath,UserName,Password,Type,SId,SamacCountName,Id) values('g', 'id', 'C:\\ads', 'O'Hara', 'p\"w', -2, 'sid', 'sam', 8);"}},
        {"delete",
         [] { service().DeleteUser(""); },
         {"Execute delete from userinfo where Guid =''"}},
        {"query by nothing", query("", "", ""), {select + " order by Id"}},
        {"query by password", query("", "", "p"), {select + " where Password='p' order by Id"}},
        {"query by name and password",
         query("", "u", "p"),
         {select + " where UserName='u' and Password='p' order by Id"}},
        {"query by all",
         query("g", "u", "p"),
         {select + " where Guid='g' and UserName='u' and Password='p' order by Id"}},
    });
}

TEST_F(UserAccounts, Results) {
    EXPECT_EQ(folded(), resultsOf([] { return service().InsertUser({}); }));
    EXPECT_EQ(folded(), resultsOf([] { return service().UpdateUser({}); }));
    EXPECT_EQ(passedThrough(), resultsOf([] { return service().DeleteUser("g"); }));
    EXPECT_EQ(nullptr, service().QueryUser("", "", ""));
}

TEST_F(UserAccounts, LoginCountsRowsAndReadsNone) {
    EXPECT_EQ(-1, service().Login("u", "p"));
    script().queries = {Rows{{"Guid"}, {{"g"}}}, Rows{{"Guid"}, {{"g"}, {"h"}}}, std::nullopt};
    EXPECT_EQ(0, service().Login("u", "p"));
    EXPECT_EQ(0, service().Login("u", "p"));
    EXPECT_EQ(-1, service().Login("u", "p"));
    EXPECT_TRUE(script().reads.empty());
}

TEST_F(UserAccounts, Reads) {
    checkReads(
        {"string Guid", "string UserId", "string AdsPath", "string UserName", "string Password",
         "int Type", "string SId", "string SamacCountName"},
        [] {
            T_UserInfoList* list = service().QueryUser("", "", "");
            service().UpdateUser(list->items[0]);
            service().ReleaseUser(list);
        },
        "Update vms: update userinfo set UserId = 'UserId',AdsPath = 'AdsPath',UserName = 'UserName',Password = 'Password',Type = '6',SId = 'SId',SamacCountName = 'SamacCountName' where Guid = 'Guid'");
}

TEST_F(UserAccounts, PlaceholdersTouchNoTable) {
    UserTypeDao types(nullptr, "vms");
    EXPECT_EQ(0, types.Load());
    EXPECT_EQ("", types.QueryDeviceTypeDaoImp(1));
    EXPECT_EQ(0, UserInfoDao(nullptr, "vms").IsExistUserImp({}));
}

TEST_F(UserRights, Statements) {
    T_UserRights rights;
    rights.User_Guid = "u";
    rights.SharedViews = 1;
    rights.ManagementAccess = -1;
    check({
        {"insert",
         [&] { service().InsertUserRights(rights); },
         {"Insert insert into userrights(User_Guid,SharedViews,PrivateViews,ViewLive,ViewBrowse,ViewSetup,ManagementAccess) values('u', 1, 0, 0, 0, 0, -1);"}},
        {"delete",
         [] { service().DeleteUserRights("u"); },
         {"Execute delete from userrights where User_Guid ='u'"}},
        {"query, its condition also with an empty key",
         [] { service().ReleaseUserRights(service().QueryUserRights("")); },
         {"Query select User_Guid,SharedViews,PrivateViews,ViewLive,ViewBrowse,ViewSetup,ManagementAccess from userrights where User_Guid=''"}},
    });
}

TEST_F(UserRights, Results) {
    EXPECT_EQ(folded(), resultsOf([] { return service().InsertUserRights({}); }));
    EXPECT_EQ(folded(), resultsOf([] { return service().UpdateUserRights({}); }));
    EXPECT_EQ(passedThrough(), resultsOf([] { return service().DeleteUserRights("u"); }));

    T_UserRights* rights = service().QueryUserRights("unknown");
    ASSERT_NE(nullptr, rights);
    EXPECT_EQ("", rights->User_Guid);
    EXPECT_EQ(0, rights->ManagementAccess);
    service().ReleaseUserRights(rights);
    script().queries.push_back(std::nullopt);
    EXPECT_EQ(nullptr, service().QueryUserRights("u"));
    service().ReleaseUserRights(nullptr);
}

TEST_F(UserRights, Reads) {
    checkReads(
        {"string User_Guid", "int SharedViews", "int PrivateViews", "int ViewLive",
         "int ViewBrowse", "int ViewSetup", "int ManagementAccess"},
        [] {
            T_UserRights* rights = service().QueryUserRights("u");
            service().UpdateUserRights(*rights);
            service().ReleaseUserRights(rights);
        },
        "Update vms: update userrights set SharedViews = '2',PrivateViews = '3',ViewLive = '4',ViewBrowse = '5',ViewSetup = '6',ManagementAccess = '7' where User_Guid = 'User_Guid'");
}

T_UserCameras permission(const char* guid, const char* user, const char* camera) {
    T_UserCameras permission;
    permission.Guid = guid;
    permission.User_Guid = user;
    permission.Camera_Guid = camera;
    permission.Access = 1;
    permission.SubscriptionAlarm = 19;
    return permission;
}

TEST_F(UserCameras, Statements) {
    const std::string columns =
        "Guid,User_Guid,Camera_Guid,Access,AviExport,JpegExport,DatabaseExport,VideoLive,VideoBrowse,Ptz,ManagePresets,Outputs,Presets,Events,SmartSearch,Sequences,StartRecording,AudioLive,AudioBrowse,SpeakerLive,SpeakerSpeak,SubscriptionAlarm";
    const std::string numbers = "1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 19";
    const std::string select = "Query select " + columns + " from usercameras";
    const T_UserCameras two[] = {permission("a", "u", "c"), permission("b", "", "d")};
    const T_UserCameras dangling[] = {permission("a", "", ""), permission("", "", "")};
    const T_UserCameras leading[] = {permission("", "", ""), permission("", "u", "")};
    const auto query = [](const T_UserCameras* cameras, int count) {
        return [=] { service().ReleaseUserCameras(service().QueryUserCameras(cameras, count)); };
    };
    check({
        {"insert",
         [&] { service().InsertUserCameras(two, 2); },
         {"Query select max(Id) as Id from usercameras",
          "Insert insert into usercameras(" + columns + ",Id) values('a', 'u', 'c', " + numbers +
              ", 8),('b', '', 'd', " + numbers + ", 9);"}},
        {"replace",
         [&] { service().UpdateUserCameras(two, 2); },
         {"Execute replace into usercameras(" + columns + ") values('a', 'u', 'c', " + numbers +
          "),('b', '', 'd', " + numbers + ");"}},
        {"delete",
         [&] { service().DeleteUserCameras(two, 2); },
         {"Execute delete from usercameras where Guid='a' and User_Guid='u' and Camera_Guid='c' or Guid='b' and Camera_Guid='d'"}},
        {"delete with a dangling or",
         [&] { service().DeleteUserCameras(dangling, 2); },
         {"Execute delete from usercameras where Guid='a' or"}},
        {"delete with an empty record first",
         [&] { service().DeleteUserCameras(leading, 2); },
         {"Execute delete from usercameras where User_Guid='u'"}},
        {"delete without keys",
         [&] { service().DeleteUserCameras(leading, 1); },
         {"Execute delete from usercameras"}},
        {"delete by keys",
         [] { service().DeleteUserCameras("", "u", "c"); },
         {"Execute delete from usercameras where User_Guid='u' and Camera_Guid='c'"}},
        {"delete by no keys",
         [] { service().DeleteUserCameras("", "", ""); },
         {"Execute delete from usercameras"}},
        {"query",
         query(two, 2),
         {select +
          " where Guid='a' and User_Guid='u' and Camera_Guid='c' or Guid='b' and Camera_Guid='d' order by Id"}},
        {"query without records", query(nullptr, 5), {select + " order by Id"}},
        {"query with a count of 0", query(two, 0), {select + " order by Id"}},
        {"query by keys",
         [] { service().ReleaseUserCameras(service().QueryUserCameras("g", "", "c")); },
         {select + " where Guid='g' and Camera_Guid='c' order by Id"}},
        {"no records",
         [&] {
             EXPECT_EQ(-1, service().InsertUserCameras(nullptr, 1));
             EXPECT_EQ(-1, service().InsertUserCameras(two, 0));
             EXPECT_EQ(-1, service().UpdateUserCameras(nullptr, 1));
             EXPECT_EQ(-1, service().DeleteUserCameras(two, -1));
         },
         {}},
    });
}

TEST_F(UserCameras, Results) {
    const T_UserCameras one = permission("a", "u", "c");
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertUserCameras(&one, 1); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().UpdateUserCameras(&one, 1); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().UpdateUserCameras(one); }));
    EXPECT_EQ(passedThrough(), resultsOf([&] { return service().DeleteUserCameras(&one, 1); }));
    EXPECT_EQ(passedThrough(), resultsOf([] { return service().DeleteUserCameras("a", "", ""); }));
    EXPECT_EQ(nullptr, service().QueryUserCameras("", "", ""));
    EXPECT_EQ(nullptr, service().QueryUserCameras(&one, 1));
}

TEST_F(UserCameras, Reads) {
    checkReads(
        {"string Guid",        "string User_Guid",
         "string Camera_Guid", "int Access",
         "int AviExport",      "int JpegExport",
         "int DatabaseExport", "int VideoLive",
         "int VideoBrowse",    "int Ptz",
         "int ManagePresets",  "int Outputs",
         "int Presets",        "int Events",
         "int SmartSearch",    "int Sequences",
         "int StartRecording", "int AudioLive",
         "int AudioBrowse",    "int SpeakerLive",
         "int SpeakerSpeak",   "int SubscriptionAlarm"},
        [] {
            T_UserCamerasList* list = service().QueryUserCameras("", "", "");
            service().UpdateUserCameras(list->items[0]);
            service().ReleaseUserCameras(list);
        },
        "Update vms: update usercameras set User_Guid = 'User_Guid',Camera_Guid = 'Camera_Guid',Access = '4',AviExport = '5',JpegExport = '6',DatabaseExport = '7',VideoLive = '8',VideoBrowse = '9',Ptz = '10',ManagePresets = '11',Outputs = '12',Presets = '13',Events = '14',SmartSearch = '15',Sequences = '16',StartRecording = '17',AudioLive = '18',AudioBrowse = '19',SpeakerLive = '20',SpeakerSpeak = '21',SubscriptionAlarm = '22' where Guid = 'Guid'");
}

}  // namespace
}  // namespace dbservice
