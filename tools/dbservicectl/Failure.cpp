#include "tools/dbservicectl/Failure.h"

#include <fmt/format.h>

#include "dbaccess/error/ErrorNumber.h"

namespace dbservicectl {
namespace {

/// What to do about a failure with this number; empty where nobody can say.
std::string adviceFor(int number) {
    switch (number) {
        case 1033:
        case 1194:
            return "The file is damaged, or no database: stop the programs, keep a copy of it and "
                   "restore the last backup";
        case 1044:
        case 1142:
        case 1143:
        case 1227:
            return "The account lacks a right: 'dbservicectl grants' prints those that are needed";
        case 1045:
        case 1698:
            return "Wrong user or password: see --user, --password-file and --ask-password";
        case 1049:
        case 1146:
            return "The database or its tables are not there: 'dbservicectl schema create' makes "
                   "them";
        case 1054:
            return "The tables are not as expected: 'dbservicectl schema check' tells how";
        case 1130:
            return "The server takes no connections from this machine for this account";
        case 1205:
            return "Others write there: run it again, or raise the setting lock-timeout";
        case 1969:
        case 3024:
            return "It took longer than the setting answer-timeout allows: raise that";
        case 2002:
        case 2003:
        case 2005:
            return "Nothing answers there: is the server running, and are --host and --port right?";
        case 2026:
            return "No encrypted connection: see the settings ssl-mode and ssl-ca";
        case dbaccess::kServerLost:
            return "The connection broke after sending, so it is open whether this took effect: "
                   "look before you run it again";
        default:
            return "";
    }
}

}  // namespace

Failure failureOf(const dbaccess::Error& error, const std::string& doing, Message message) {
    std::string text = fmt::format("{}: error {} ({})", doing, error.number, error.sqlState);
    if (message == Message::Shown && !error.message.empty()) text += ": " + error.message;
    return Failure(text, adviceFor(error.number));
}

std::int64_t check(std::int64_t answer, const std::string& doing, Message message) {
    if (answer < 0) throw failureOf(dbaccess::LastError(), doing, message);
    return answer;
}

}  // namespace dbservicectl
