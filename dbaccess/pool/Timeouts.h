#ifndef DBSERVICE_DBACCESS_POOL_TIMEOUTS_H
#define DBSERVICE_DBACCESS_POOL_TIMEOUTS_H

#include <chrono>

namespace dbaccess {

using Clock = std::chrono::steady_clock;
using TimePoint = Clock::time_point;

/// How long things may take at most.
struct Timeouts {
    std::chrono::milliseconds connect{5000};  ///< to one server
    std::chrono::milliseconds lock{10000};    ///< to wait for other writers
    std::chrono::milliseconds answer{30000};  ///< for a statement to run; more than `lock`
    std::chrono::milliseconds call{45000};    ///< for a whole call, whatever it waits for

    /// How long an answer is waited for: servers end by themselves what takes longer than `answer`,
    /// and then it is certain what became of it, so they get a little longer to say so.
    std::chrono::milliseconds patience() const { return answer + answer / 6; }
};

}  // namespace dbaccess

#endif
