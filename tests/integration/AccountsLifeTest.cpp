#include "tests/support/engines/ServiceTest.h"

namespace dbservice {
namespace {

class UserLife : public ServiceTest {};
class UserRightsLife : public ServiceTest {};
class UserCamerasLife : public ServiceTest {};

T_UserInfo userRecord(const char* guid, const char* name, const char* password) {
    T_UserInfo user;
    user.Guid = guid;
    user.UserName = name;
    user.Password = password;
    user.Type = 1;
    return user;
}

std::string names(T_UserInfoList* list) {
    return joined(list, &T_UserInfo::UserName, &DBService::ReleaseUser);
}

TEST_P(UserLife, FromInsertToDelete) {
    EXPECT_EQ("null", names(service().QueryUser("", "", "")));
    EXPECT_EQ(0, service().InsertUser(userRecord("a", "operator", "Secret")));
    EXPECT_EQ(0, service().InsertUser(userRecord("b", "guard", "Secret")));
    EXPECT_EQ(-1062, service().InsertUser(userRecord("a", "other", "")));
    EXPECT_EQ(0, service().InsertUser(userRecord("c", "guard", "")));  // names need not be unique
    EXPECT_EQ("operator|guard|guard", names(service().QueryUser("", "", "")));
    EXPECT_EQ("operator|guard", names(service().QueryUser("", "", "Secret")));
    EXPECT_EQ("guard|guard", names(service().QueryUser("", "guard", "")));
    EXPECT_EQ("guard", names(service().QueryUser("b", "guard", "Secret")));
    EXPECT_EQ("null", names(service().QueryUser("a", "guard", "")));

    EXPECT_EQ(0, service().UpdateUser(userRecord("b", "chief", "New")));
    EXPECT_EQ("chief", names(service().QueryUser("b", "", "")));
    EXPECT_EQ(1, service().DeleteUser("b"));
    EXPECT_EQ(0, service().DeleteUser("b"));
    EXPECT_EQ("operator|guard", names(service().QueryUser("", "", "")));
}

TEST_P(UserLife, LoginNeedsTheExactNameAndPassword) {
    EXPECT_EQ(0, service().InsertUser(userRecord("a", "operator", "Secret")));
    EXPECT_EQ(0, service().Login("operator", "Secret"));
    for (const char* password : {"", "secret", "SECRET", "Secret ", " Secret",
                                 "S\xC3\xA9"
                                 "cret"}) {
        EXPECT_EQ(-1, service().Login("operator", password)) << password;
    }
    EXPECT_EQ(-1, service().Login("Operator", "Secret"));
    EXPECT_EQ(-1, service().Login("", ""));
    EXPECT_EQ(-1, service().Login("operator", "it's"));  // no statement any more
    EXPECT_EQ(0, service().InsertUser(userRecord("b", "", "")));
    EXPECT_EQ(0, service().Login("", ""));
}

TEST_P(UserRightsLife, FromInsertToDelete) {
    const auto viewLive = [](const char* guid) {
        T_UserRights* rights = service().QueryUserRights(guid);
        std::string result =
            rights == nullptr ? "null" : rights->User_Guid + "/" + std::to_string(rights->ViewLive);
        service().ReleaseUserRights(rights);
        return result;
    };
    T_UserRights rights;
    rights.User_Guid = "u";
    EXPECT_EQ("/0", viewLive("u"));
    EXPECT_EQ(0, service().UpdateUserRights(rights));  // there is none yet
    EXPECT_EQ(0, service().InsertUserRights(rights));
    EXPECT_EQ("u/0", viewLive("u"));
    rights.ViewLive = 2147483647;
    EXPECT_EQ(0, service().UpdateUserRights(rights));
    EXPECT_EQ("u/2147483647", viewLive("u"));
    EXPECT_EQ(0, service().InsertUserRights(rights));  // a second row is not prevented
    EXPECT_EQ(2, service().DeleteUserRights("u"));
    EXPECT_EQ("/0", viewLive("u"));
}

T_UserCameras permission(const std::string& guid, const char* user, const char* camera) {
    T_UserCameras permission;
    permission.Guid = guid;
    permission.User_Guid = user;
    permission.Camera_Guid = camera;
    permission.Ptz = 1;
    return permission;
}

std::string guids(T_UserCamerasList* list) {
    return joined(list, &T_UserCameras::Guid, &DBService::ReleaseUserCameras);
}

TEST_P(UserCamerasLife, FromInsertToDelete) {
    const T_UserCameras three[] = {permission("p1", "u", "c"), permission("p2", "u", "d"),
                                   permission("p3", "v", "c")};
    EXPECT_EQ(0, service().InsertUserCameras(three, 3));
    EXPECT_EQ(-1062, service().InsertUserCameras(three, 3));
    EXPECT_EQ("p1|p2|p3", guids(service().QueryUserCameras("", "", "")));
    EXPECT_EQ("p1|p2", guids(service().QueryUserCameras("", "u", "")));
    EXPECT_EQ("p1|p3", guids(service().QueryUserCameras("", "", "c")));
    EXPECT_EQ("p2", guids(service().QueryUserCameras("", "u", "d")));
    EXPECT_EQ("null", guids(service().QueryUserCameras("p1", "v", "")));

    const T_UserCameras keys[] = {permission("p1", "", ""), permission("", "v", "c")};
    EXPECT_EQ("p1|p3", guids(service().QueryUserCameras(keys, 2)));
    EXPECT_EQ("p1|p2|p3", guids(service().QueryUserCameras(nullptr, 0)));
    const T_UserCameras dangling[] = {permission("p1", "", ""), permission("", "", "")};
    EXPECT_EQ("null", guids(service().QueryUserCameras(dangling, 2)));
    EXPECT_EQ(-1064, service().DeleteUserCameras(dangling, 2));

    T_UserCameras changed = permission("p1", "u", "e");
    EXPECT_EQ(0, service().UpdateUserCameras(changed));
    EXPECT_EQ("p1", guids(service().QueryUserCameras("", "", "e")));
    const T_UserCameras replaced[] = {permission("p1", "w", "f"), permission("p4", "w", "g")};
    EXPECT_EQ(0, service().UpdateUserCameras(replaced, 2));
    EXPECT_EQ("p2|p3|p1|p4", guids(service().QueryUserCameras("", "", "")));  // to the end

    EXPECT_EQ(2, service().DeleteUserCameras(keys, 2));
    EXPECT_EQ("p2|p4", guids(service().QueryUserCameras("", "", "")));
    EXPECT_EQ(2, service().DeleteUserCameras("", "", ""));  // everything
    EXPECT_EQ("null", guids(service().QueryUserCameras("", "", "")));
}

INSTANTIATE_TEST_SUITE_P(Engines, UserLife, kEngines, engineName);
INSTANTIATE_TEST_SUITE_P(Engines, UserRightsLife, kEngines, engineName);
INSTANTIATE_TEST_SUITE_P(Engines, UserCamerasLife, kEngines, engineName);

}  // namespace
}  // namespace dbservice
