#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <array>

#include "dbservice/Convenience.h"
#include "tools/dbservicectl/Commands.h"

namespace dbservicectl {
namespace {

using dbservice::DBService;
using dbservice::T_UserInfo;
using dbservice::T_UserRights;

struct Right {
    const char* name;
    int T_UserRights::*value;
};

constexpr std::array<Right, 6> kRights{{{"shared-views", &T_UserRights::SharedViews},
                                        {"private-views", &T_UserRights::PrivateViews},
                                        {"live", &T_UserRights::ViewLive},
                                        {"browse", &T_UserRights::ViewBrowse},
                                        {"setup", &T_UserRights::ViewSetup},
                                        {"management", &T_UserRights::ManagementAccess}}};

/// Statements about users hold passwords, which the engine's message may quote.
void checkAnswer(std::int64_t answer, const std::string& doing) {
    check(answer, doing, Message::LeftOut);
}

dbservice::Users usersNamed(DBService& service, const std::string& name) {
    // An empty name would stand for all of them.
    if (name.empty()) throw Failure("a user's name is not empty", "", Exit::WrongUsage);
    dbservice::Users users = dbservice::users(service, "", dbaccess::EscapeText(name));
    if (!users.result())
        throw failureOf(users.result().error(), "reading the users", Message::LeftOut);
    return users;
}

T_UserInfo userNamed(DBService& service, const std::string& name) {
    const dbservice::Users users = usersNamed(service, name);
    if (users.empty())
        throw Failure(fmt::format("there is no user '{}'", name),
                      "'dbservicectl list users' shows all of them");
    if (users.size() > 1)
        throw Failure(fmt::format("{} users have the name '{}'", users.size(), name),
                      "'dbservicectl list users' shows all of them");
    return users.front();
}

std::string newPassword(const std::string& name) {
    std::string password = readPassword(fmt::format("New password of {}: ", name));
    if (password.empty()) throw Failure("an empty password is refused");
    if (::isatty(STDIN_FILENO) == 1 && readPassword("The same again: ") != password)
        throw Failure("the two passwords differ; nothing was changed");
    return password;
}

T_UserRights rightsOf(DBService& service, const std::string& escapedGuid) {
    const dbservice::UserRights rights = dbservice::userRights(service, escapedGuid);
    if (!rights) throw failureOf(rights.result().error(), "reading the rights");
    return *rights;
}

/// Those that are named and no others.
void setRights(DBService& service, T_UserRights rights, const std::string& escapedGuid,
               const std::vector<std::string>& names) {
    const bool isThere = !rights.User_Guid.empty();
    rights.User_Guid = escapedGuid;
    for (const Right& right : kRights)
        rights.*right.value = std::count(names.begin(), names.end(), right.name) != 0 ? 1 : 0;
    checkAnswer(isThere ? service.UpdateUserRights(rights) : service.InsertUserRights(rights),
                "setting the rights");
}

}  // namespace

void addUser(Session& session, T_UserInfo user) {
    DBService& service = session.service();
    if (!usersNamed(service, user.UserName).empty())
        throw Failure(fmt::format("there is a user '{}' already", user.UserName),
                      "'dbservicectl user passwd' changes the password");
    user.Password = newPassword(user.UserName);
    user.Guid = dbservice::newGuid();
    checkAnswer(service.InsertUser(dbservice::escaped(user)), "adding the user");
    note(fmt::format("added {}, who has no rights yet: see 'dbservicectl user rights'",
                     user.UserName));
}

void changePassword(Session& session, const std::string& name) {
    DBService& service = session.service();
    T_UserInfo user = userNamed(service, name);  // an update writes all that it has
    user.Password = newPassword(name);
    checkAnswer(service.UpdateUser(dbservice::escaped(user)), "changing the password");
    note(fmt::format("changed the password of {}", name));
}

void logIn(Session& session, const std::string& name) {
    DBService& service = session.service();
    if (name.empty()) throw Failure("a user's name is not empty", "", Exit::WrongUsage);
    const std::string password = readPassword(fmt::format("Password of {}: ", name));
    if (service.Login(dbaccess::EscapeText(name), dbaccess::EscapeText(password)) != 0) {
        if (const dbaccess::Error& error = dbaccess::LastError())
            throw failureOf(error, "logging in", Message::LeftOut);
        throw Failure("no user has this name and password");
    }
    note(fmt::format("{} may log in", name));
}

void changeRights(Session& session, const UserOptions& options) {
    DBService& service = session.service();
    const std::string guid = dbaccess::EscapeText(userNamed(service, options.user.UserName).Guid);
    if (!options.rights.empty()) setRights(service, rightsOf(service, guid), guid, options.rights);
    const T_UserRights rights = rightsOf(service, guid);
    Output output = session.output({{"Right"}, {"Value", true}});
    for (const Right& right : kRights)
        output.add({right.name, std::to_string(rights.*right.value)});
    output.finish();
}

std::vector<std::string> rightNames() {
    std::vector<std::string> names{"none"};
    for (const Right& right : kRights)
        names.emplace_back(right.name);
    return names;
}

}  // namespace dbservicectl
