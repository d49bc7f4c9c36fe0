#ifndef DBSERVICE_DBACCESS_STATS_H
#define DBSERVICE_DBACCESS_STATS_H

#include <cstring>
#include <vector>

#include "base/Export.h"

namespace dbaccess {

/// One figure about all `DataAccess` objects of the process; docs/diagnostics.md lists them.
struct Stat {
    const char* name;   ///< as "db.client.connection.count", by the OpenTelemetry conventions
    const char* state;  ///< the attribute db.client.connection.state, "idle" or "used", or ""
    const char* unit;   ///< "s", or what is counted, as "{connection}"
    bool counter;       ///< true: counted since the last `ResetStats`; false: as it is now
    double value;       ///< counts are whole numbers, exact up to 2^53
};

/// All figures there are. Later versions may have more of them, in another order. Each is read by
/// itself, so that in the middle of work they may not add up.
/// Ownership / threads: the texts are constants; any number of threads at once.
DBSERVICE_API std::vector<Stat> Stats();

/// Sets all counters to 0; what is as it is now stays.
/// Threads: any number at once, also beside work, of which a part may then be counted.
DBSERVICE_API void ResetStats();

/// One of the figures; 0 when there is none of this name and state.
inline double StatOf(const std::vector<Stat>& stats, const char* name, const char* state = "") {
    for (const Stat& stat : stats)
        if (std::strcmp(stat.name, name) == 0 && std::strcmp(stat.state, state) == 0)
            return stat.value;
    return 0;
}

}  // namespace dbaccess

#endif
