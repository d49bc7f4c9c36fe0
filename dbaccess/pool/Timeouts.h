#ifndef DBSERVICE_DBACCESS_POOL_TIMEOUTS_H
#define DBSERVICE_DBACCESS_POOL_TIMEOUTS_H

#include <chrono>

namespace dbaccess {

/// How long things may take at most.
struct Timeouts {
    std::chrono::milliseconds connect = std::chrono::seconds(5);  ///< to one server
    std::chrono::milliseconds lock = std::chrono::seconds(10);    ///< to wait for other writers
    std::chrono::milliseconds answer =
        std::chrono::seconds(30);  ///< for a statement to run; above `lock`
};

}  // namespace dbaccess

#endif
