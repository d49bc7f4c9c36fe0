#ifndef DBSERVICE_DBACCESS_MARIADB_WAITLIMIT_H
#define DBSERVICE_DBACCESS_MARIADB_WAITLIMIT_H

#include <mysql.h>

#include <chrono>

namespace dbaccess::mariadb {

/// Ends all waits of one handle for its server at one point in time, however many there are: the
/// client library's own limits count anew with each byte that comes. As long as it lives, only its
/// thread may use the handle. One at a time in a thread.
///
/// The look-up of a host's name is no such wait. When a handle that is not connected yet begins
/// TLS, its socket must no longer be a blocking one.
class WaitLimit {
public:
    using Clock = std::chrono::steady_clock;

    WaitLimit(MYSQL* handle, Clock::time_point end);
    WaitLimit(const WaitLimit&) = delete;
    WaitLimit& operator=(const WaitLimit&) = delete;
    ~WaitLimit();

    /// Whether a wait was ended.
    bool ended() const;

private:
    MYSQL* const handle_;
};

/// The TLS library waits by itself for a socket that blocks. Nothing happens without one.
void setBlocking(MYSQL* handle, bool blocking);

}  // namespace dbaccess::mariadb

#endif
