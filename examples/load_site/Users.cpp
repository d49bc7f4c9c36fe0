#include <algorithm>

#include "examples/load_site/Loading.h"

namespace demo {
namespace {

/// What the user may do anywhere, as "live, recordings".
std::string rightsOf(DBService& service, const std::string& userGuid) {
    const auto rights = check(userRights(service, userGuid), "Looking up a user's rights");
    std::vector<std::string> names;
    const auto add = [&names](int granted, const char* name) {
        if (granted == 1) names.emplace_back(name);
    };
    add(rights->ViewLive, "live");
    add(rights->ViewBrowse, "recordings");
    add(rights->ViewSetup, "set-up");
    add(rights->ManagementAccess, "management");
    return names.empty() ? "-" : fmt::format("{}", fmt::join(names, ", "));
}

/// The service answers a failure as it answers a wrong password.
std::string login(DBService& service, const std::string& name, const std::string& password) {
    if (service.Login(EscapeText(name), EscapeText(password)) == 0) return "accepted";
    if (dbaccess::LastError()) discreetly([] { check(Result::lastFailure(), "Logging in"); });
    return "refused";
}

void add(Table& table, DBService& service, const T_UserInfo& user) {
    const std::string guid = EscapeText(user.Guid);
    const auto cameras = check(userCameras(service, "", guid, ""), "Looking up a user's cameras");
    const auto movable = std::count_if(cameras.begin(), cameras.end(),
                                       [](const T_UserCameras& camera) { return camera.Ptz == 1; });
    table.add({user.UserName, rightsOf(service, guid), fmt::to_string(cameras.size()),
               fmt::to_string(movable), login(service, user.UserName, user.Password),
               login(service, user.UserName, user.Password + "'")});
}

void show(DBService& service) {
    Table table({"Name", "May use", "Cameras", "to move", "Log in", "with another password"});
    for (const T_UserInfo& user : check(users(service), "Listing the users"))
        add(table, service, user);
    table.print("Users");
}

}  // namespace

void loadUsers(DBService& service, const Site& site, Table& summary) {
    discreetly([&] {
        load(summary, "Users", site.users, each(service, &DBService::InsertUser),
             each(service, &DBService::UpdateUser),
             byKey(service, &DBService::DeleteUser, &T_UserInfo::Guid));
    });
    load(summary, "Users' rights", site.userRights, each(service, &DBService::InsertUserRights),
         each(service, &DBService::UpdateUserRights),
         byKey(service, &DBService::DeleteUserRights, &T_UserRights::User_Guid));
    load(summary, "Users' cameras", site.userCameras, all(service, &DBService::InsertUserCameras),
         all(service, &DBService::UpdateUserCameras), all(service, &DBService::DeleteUserCameras));
    show(service);
}

}  // namespace demo
