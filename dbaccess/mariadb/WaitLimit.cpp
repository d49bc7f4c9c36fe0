#include "dbaccess/mariadb/WaitLimit.h"

#include <fcntl.h>
#include <poll.h>

#include <algorithm>
#include <cerrno>

namespace dbaccess::mariadb {
namespace {

using Clock = WaitLimit::Clock;

struct Wait {
    Clock::time_point end;
    bool ended = false;
};

// The client library calls `waitFor` without a word on whose behalf.
thread_local Wait wait;

/// As poll: 1 when the socket is ready, 0 when the time is over.
int waitFor(my_socket socket, my_bool toRead, int /* the library's own limit */) {
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(wait.end - Clock::now());
        pollfd ready{socket, static_cast<short>(toRead != 0 ? POLLIN : POLLOUT), 0};
        const int count = ::poll(&ready, 1, static_cast<int>(std::max<long>(left.count(), 0)));
        if (count > 0 && left.count() > 0) return 1;
        if (count < 0 && errno == EINTR) continue;
        wait.ended = count >= 0;
        if (wait.ended) errno = ETIMEDOUT;
        return 0;
    }
}

}  // namespace

void setBlocking(MYSQL* handle, bool blocking) {
    const my_socket socket = mysql_get_socket(handle);
    if (socket == MARIADB_INVALID_SOCKET) return;
    const int flags = ::fcntl(socket, F_GETFL);
    ::fcntl(socket, F_SETFL, blocking ? flags & ~O_NONBLOCK : flags | O_NONBLOCK);
}

WaitLimit::WaitLimit(MYSQL* handle, Clock::time_point end) : handle_(handle) {
    wait = {end, false};
    mysql_optionsv(handle_, MARIADB_OPT_IO_WAIT, &waitFor);
    setBlocking(handle_, false);
}

WaitLimit::~WaitLimit() {
    mysql_optionsv(handle_, MARIADB_OPT_IO_WAIT, nullptr);
    setBlocking(handle_, true);
}

bool WaitLimit::ended() const {
    return wait.ended;
}

}  // namespace dbaccess::mariadb
