#ifndef DBSERVICE_DBACCESS_POOL_TIMEOUTS_H
#define DBSERVICE_DBACCESS_POOL_TIMEOUTS_H

#include <chrono>

namespace dbaccess {

/// How long things may take at most.
struct Timeouts {
    std::chrono::milliseconds connect{5000};  ///< to one server
    std::chrono::milliseconds lock{10000};    ///< to wait for other writers
    std::chrono::milliseconds answer{30000};  ///< for a statement to run; more than `lock`
};

}  // namespace dbaccess

#endif
