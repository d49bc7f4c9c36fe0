#include "dbaccess/mariadb/Watch.h"

#include <sys/socket.h>

#include <algorithm>
#include <system_error>

namespace dbaccess::mariadb {
namespace {

// How late a statement may be cut.
constexpr std::chrono::milliseconds kTick{100};

Clock::rep count(TimePoint time) {
    return time.time_since_epoch().count();
}

}  // namespace

Watch::Session::Session(Watch& watch, int socket, unsigned long id)
    : watch_(watch), socket_(socket), id_(id) {
    const std::lock_guard<std::mutex> lock(watch_.mutex_);
    place_ = watch_.sessions_.insert(watch_.sessions_.end(), this);
}

Watch::Session::~Session() {
    const std::lock_guard<std::mutex> lock(watch_.mutex_);
    watch_.sessions_.erase(place_);
}

bool Watch::Session::begin(TimePoint now, TimePoint end) {
    begin_ = count(now);
    Clock::rep idle = kIdle;
    return end_.compare_exchange_strong(idle, count(end));
}

bool Watch::Session::end() {
    return end_.exchange(kIdle) != kCut;
}

/// Cuts the statement that ends at the time given, and no later one.
void Watch::Session::cut(Clock::rep expected) {
    if (end_.compare_exchange_strong(expected, kCut)) shutdown(socket_, SHUT_RDWR);
}

Watch::Watch() {
    try {
        thread_ = std::thread([this] { watch(); });
    } catch (const std::system_error&) {
        // No more threads to be had: the client library's limits are what is left.
        closed_ = true;
    }
}

Watch::~Watch() {
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        closed_ = true;
    }
    closing_.notify_all();
    if (thread_.joinable()) thread_.join();
}

void Watch::watch() {
    std::unique_lock<std::mutex> lock(mutex_);
    while (!closing_.wait_for(lock, kTick, [this] { return closed_; })) {
        const Clock::rep now = count(Clock::now());
        for (Session* session : sessions_) {
            const Clock::rep end = session->end_;
            if (end != kIdle && end != kCut && end < now) session->cut(end);
        }
    }
}

bool Watch::anyRunningSince(std::uint64_t epoch, TimePoint time) const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return std::any_of(sessions_.begin(), sessions_.end(), [&](const Session* session) {
        return session->epoch_ == epoch && session->end_ != kIdle && session->begin_ < count(time);
    });
}

bool Watch::idleSince(TimePoint time) const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return std::all_of(sessions_.begin(), sessions_.end(), [&](const Session* session) {
        // One that is not taken into use is that of who asks.
        return session->epoch_ == 0 || (session->end_ == kIdle && session->begin_ < count(time));
    });
}

void Watch::cutEarlier(std::uint64_t epoch) {
    const std::lock_guard<std::mutex> lock(mutex_);
    for (Session* session : sessions_) {
        const Clock::rep end = session->end_;
        const bool earlier = session->epoch_ != 0 && session->epoch_ < epoch;
        if (earlier && end != kIdle && end != kCut) session->cut(end);
    }
}

std::vector<unsigned long> Watch::overdue(std::uint64_t epoch, TimePoint begunBefore) {
    std::vector<unsigned long> ids;
    const std::lock_guard<std::mutex> lock(mutex_);
    for (Session* session : sessions_) {
        const bool late = session->end_ > 0 && session->begin_ < count(begunBefore);
        if (late && !session->overdue_ && session->id_ != 0 && session->epoch_ == epoch)
            ids.push_back(session->id_);
        session->overdue_ = late;
    }
    return ids;
}

}  // namespace dbaccess::mariadb
