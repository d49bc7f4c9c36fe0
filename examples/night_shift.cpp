// An operator's evening: logs in, looks at the cameras that are hers, and writes down an alarm.
// Usage: night_shift USER_NAME <password    on the database of DBSERVICE_HOST, DBSERVICE_DATABASE,
// DBSERVICE_USER and DBSERVICE_PASSWORD
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "dbaccess/EscapeText.h"
#include "dbservice/Convenience.h"
using dbaccess::EscapeText;
using namespace dbservice;

static std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

static DBService& connect() {
    DB_CONNECTION_PROPERTY settings;
    settings.host = environment("DBSERVICE_HOST");
    settings.dbName = environment("DBSERVICE_DATABASE");
    settings.user = environment("DBSERVICE_USER");
    settings.password = environment("DBSERVICE_PASSWORD");
    if (DBService::Initialize(settings) != 1) check(Result::lastFailure(), "Connecting");
    return *DBService::GetDBServiceObject();
}

/// The user with this name and password. A failure's message is not shown: it may quote them.
static T_UserInfo logIn(DBService& service, const std::string& name, const std::string& password) {
    if (service.Login(EscapeText(name), EscapeText(password)) != 0)
        throw std::runtime_error("No user " + name + " has this password");
    const Users found = check(users(service, "", EscapeText(name)), "Looking up the user");
    std::printf("%s is logged in.\n", found.front().UserName.c_str());
    return found.front();
}

/// The names of the cameras that the user may watch; keys of those that may be moved are kept.
static std::vector<std::string> showCameras(DBService& service, const T_UserInfo& user) {
    std::vector<std::string> movable;
    const std::string guid = EscapeText(user.Guid);
    for (const T_UserCameras& right : check(userCameras(service, "", guid), "Her cameras")) {
        const Channels found = check(channels(service, "", EscapeText(right.Camera_Guid)));
        if (found.empty() || right.Camera_Guid.empty()) continue;
        std::printf("  %s:%s%s%s\n", found.front().DisplayName.c_str(),
                    right.VideoLive == 1 ? " live" : "",
                    right.VideoBrowse == 1 ? " recordings" : "", right.Ptz == 1 ? " moves" : "");
        if (right.Ptz == 1) movable.push_back(right.Camera_Guid);
    }
    return movable;
}

/// Stores an alarm, reads it back among those of this hour, and clears it.
static void raiseAlarm(DBService& service, const std::string& channelGuid) {
    const Time now = std::chrono::system_clock::now();
    T_AlarmInfo alarm;
    alarm.Guid = newGuid();
    alarm.ChannelGuid = channelGuid;
    alarm.AlarmLevel = 3;
    alarm.BeginTime = alarm.EndTime = timeText(now);
    alarm.AlarmContent = "Somebody's bag, left on the platform";
    alarm.AlarmSource = "operator";
    check(storeAlarm(service, escaped(alarm)), "Storing an alarm");

    AlarmPages pages(service, timeText(now - std::chrono::hours(1)), "", EscapeText(channelGuid));
    for (std::vector<T_AlarmInfo> page; check(pages.next(page), "Reading the alarms") > 0;)
        for (const T_AlarmInfo& stored : page)
            std::printf("Alarm of level %d at %s UTC: %s\n", stored.AlarmLevel,
                        stored.BeginTime.c_str(), stored.AlarmContent.c_str());
    std::printf("%lld cleared.\n", static_cast<long long>(check(
                                       service.DeleteAlarmInfo(alarm.Guid, ""), "Clearing it")));
}

int main(int argc, char** argv) {
    int result = 0;
    try {
        std::string password;
        if (argc != 2 || !std::getline(std::cin, password))
            throw std::runtime_error("Usage: night_shift USER_NAME <password");
        DBService& service = connect();
        const T_UserInfo user = logIn(service, argv[1], password);
        const std::vector<std::string> movable = showCameras(service, user);
        if (!movable.empty()) raiseAlarm(service, movable.front());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "night_shift: %s\n", error.what());
        result = 1;
    }
    DBService::Cleanup();
    return result;
}
