#include "tools/dbservicectl/LocalTime.h"

#include <fmt/format.h>

#include <array>
#include <ctime>
#include <optional>
#include <regex>

#include "tools/dbservicectl/Failure.h"

namespace dbservicectl {
namespace {

Failure noTime(const std::string& text, const std::string& why) {
    return Failure(fmt::format("'{}' {}", text, why),
                   "Write it as 2026-03-02, 2026-03-02 08:00 or 2026-03-02T08:00:00+01:00",
                   Exit::WrongUsage);
}

/// The seconds of an offset as "Z", "+01:00" or "-0330".
int secondsOfOffset(const std::string& offset) {
    if (offset == "Z") return 0;
    const int minutes =
        60 * std::stoi(offset.substr(1, 2)) + std::stoi(offset.substr(offset.size() - 2));
    return (offset[0] == '-' ? -60 : 60) * minutes;
}

/// When the local clock shows what the clock of UTC shows at this time, in summer or in winter.
std::optional<std::time_t> whenLocal(std::time_t shown, int summer) {
    std::tm parts{};
    ::gmtime_r(&shown, &parts);
    parts.tm_isdst = summer;
    const std::time_t time = std::mktime(&parts);  // which moves the parts when it is not so
    if (parts.tm_isdst != summer || ::timegm(&parts) != shown) return std::nullopt;
    return time;
}

}  // namespace

dbservice::Time timeIn(const std::string& text) {
    static const std::regex form(
        R"((\d{4}-\d\d-\d\d)(?:[T ](\d\d:\d\d)(:\d\d)?(Z|[+-]\d\d:?\d\d)?)?)");
    std::smatch parts;
    dbservice::Time time;
    if (!std::regex_match(text, parts, form)) throw noTime(text, "is no time");
    const std::string clock = parts[2].matched ? parts[2].str() : "00:00";
    const std::string seconds = parts[3].matched ? parts[3].str() : ":00";
    if (!dbservice::parseTime(fmt::format("{} {}{}", parts[1].str(), clock, seconds), time))
        throw noTime(text, "is no time");
    if (parts[4].matched) return time - std::chrono::seconds(secondsOfOffset(parts[4]));

    const std::time_t shown = dbservice::secondsOf(time);
    const std::optional<std::time_t> winter = whenLocal(shown, 0);
    const std::optional<std::time_t> summer = whenLocal(shown, 1);
    if (!winter && !summer) throw noTime(text, "is left out by the local clock");
    if (winter && summer) throw noTime(text, "comes twice on the local clock");
    return dbservice::timeOf(winter ? *winter : *summer);
}

std::string localText(dbservice::Time time) {
    const std::time_t seconds = dbservice::secondsOf(time);
    std::tm parts{};
    ::localtime_r(&seconds, &parts);
    std::array<char, 80> text{};
    const std::size_t size = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S%z", &parts);
    return std::string(text.data(), size).insert(size - 2, ":");
}

}  // namespace dbservicectl
