#ifndef DBSERVICE_EVENTS_TIMERANGE_H
#define DBSERVICE_EVENTS_TIMERANGE_H

#include <cstdint>
#include <string>

#include "dbservice/statement/Condition.h"
#include "dbservice/statement/Text.h"

namespace dbservice::events {

/// The where clause for the events between two times, themselves excluded; 0 leaves an end open.
/// Times are written signed, so that those from 2^31 on are negative. Internal.
inline std::string between(std::uint32_t beginTime, std::uint32_t endTime) {
    using namespace statement;
    std::string condition;
    if (beginTime != 0) append(condition, " addTime>{}", static_cast<std::int32_t>(beginTime));
    if (endTime != 0) {
        separate(condition, " and");
        append(condition, " addTime<{}", static_cast<std::int32_t>(endTime));
    }
    return where(condition);
}

}  // namespace dbservice::events

#endif
