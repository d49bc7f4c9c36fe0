#ifndef DBSERVICE_CONVENIENCE_TIMES_H
#define DBSERVICE_CONVENIENCE_TIMES_H

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <stdexcept>
#include <string>

// The times of event records, to and from std::chrono: texts in alarms and archive runs, numbers in
// faces, maps and view groups. All in UTC and whole seconds; what is behind the second is cut off.

namespace dbservice {

/// A point in time.
using Time = std::chrono::system_clock::time_point;

/// Seconds since 1970, negative before.
inline std::int64_t secondsOf(Time time) {
    const std::chrono::seconds seconds =
        std::chrono::duration_cast<std::chrono::seconds>(time.time_since_epoch());
    return seconds.count() - (time < Time(seconds) ? 1 : 0);  // down, also before 1970
}

/// Whether `timeOf` takes these seconds. With nanoseconds the clock reaches from 1677 to 2262.
inline bool isTime(std::int64_t seconds) {
    return seconds > secondsOf(Time::min()) && seconds < secondsOf(Time::max());
}

/// The time that a record's number stands for: seconds since 1970. Throws std::out_of_range for one
/// that the clock does not reach.
inline Time timeOf(std::int64_t seconds) {
    if (!isTime(seconds)) throw std::out_of_range("timeOf: beyond the clock");
    return Time(std::chrono::seconds(seconds));
}

/// A time as the number that face records keep. Throws std::out_of_range for times before 1970 and
/// from 2038-01-19 03:14:08 on: those would be stored negative, and queries not find them.
inline unsigned int timeNumber(Time time) {
    const std::int64_t seconds = secondsOf(time);
    if (seconds < 0 || seconds > INT32_MAX)
        throw std::out_of_range("timeNumber: before 1970 or beyond 31 bits");
    return static_cast<unsigned int>(seconds);
}

/// A time as text, "2026-11-21 03:00:00", the form that alarm pages compare by: the order of the
/// texts is that of the times. Throws std::out_of_range beyond the years 0 to 9999.
inline std::string timeText(Time time) {
    const std::int64_t seconds = secondsOf(time);
    if (seconds < -62167219200 || seconds > 253402300799)
        throw std::out_of_range("timeText: beyond the years 0 to 9999");
    const std::time_t number = static_cast<std::time_t>(seconds);
    std::tm parts = std::tm();
    gmtime_r(&number, &parts);
    char text[80];  // room for whatever the compiler takes for possible
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", parts.tm_year + 1900,
                  parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec);
    return text;
}

/// The time that such a text stands for. False, and `time` as it was, for any other text: of
/// another form, a day that there is not, or a time that the clock does not reach.
inline bool parseTime(const std::string& text, Time& time) {
    std::tm parts = std::tm();
    if (std::sscanf(text.c_str(), "%4d-%2d-%2d %2d:%2d:%2d", &parts.tm_year, &parts.tm_mon,
                    &parts.tm_mday, &parts.tm_hour, &parts.tm_min, &parts.tm_sec) != 6)
        return false;
    parts.tm_year -= 1900;
    parts.tm_mon -= 1;
    const std::int64_t seconds = timegm(&parts);
    if (!isTime(seconds) || timeText(timeOf(seconds)) != text) return false;
    time = timeOf(seconds);
    return true;
}

}  // namespace dbservice

#endif
