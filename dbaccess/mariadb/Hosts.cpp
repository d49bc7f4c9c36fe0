#include "dbaccess/mariadb/Hosts.h"

#include <algorithm>
#include <random>

#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/mariadb/MariaDbError.h"

namespace dbaccess::mariadb {
namespace {

using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;

// Pauses double with each failure in a row. A refused login is a password on its way to nowhere,
// and accounts get locked by too many.
constexpr milliseconds kFirstPause{10};
constexpr milliseconds kLongestPause{200};
constexpr milliseconds kFirstRefusalPause{100};
constexpr milliseconds kLongestRefusalPause{5000};

// A better server is returned to a while after it was left, and a longer one each time that it
// fails again soon.
constexpr seconds kFirstReturnPause{2};
constexpr minutes kLongestReturnPause{5};
constexpr seconds kSoon{60};

/// With up to half of it more, so that many clients of one server do not come back all at once.
milliseconds pauseOf(milliseconds first, unsigned int failures, milliseconds longest) {
    thread_local std::minstd_rand random{std::random_device{}()};
    const milliseconds pause = std::min(first * (1U << std::min(failures, 16U)), longest);
    return pause + pause * static_cast<int>(random() % 50) / 100;
}

}  // namespace

/// The lower the better.
int Hosts::rank(Index host) const {
    if (host == inUse_) return 0;
    if (hosts_[host].readOnly) return 3;
    return hosts_[host].failures == 0 ? 1 : 2;
}

Hosts::Index Hosts::begin(const std::vector<bool>& tried, TimePoint deadline, Error& error) {
    std::unique_lock<std::mutex> lock(mutex_);
    for (;;) {
        const TimePoint now = Clock::now();
        if (now < refusedUntil_) {
            error = refusal_;
            return kNone;
        }
        Index best = kNone;
        for (Index host = 0; host < hosts_.size(); ++host) {
            const bool silent = host == inUse_ && silence_;
            if (tried[host] || silent || now < hosts_[host].notBefore) continue;
            if (best == kNone || rank(host) < rank(best)) best = host;
        }
        if (best == kNone) {
            if (!error) error = silence_ ? silence_ : lastError_;
            return kNone;
        }
        Host& host = hosts_[best];
        if (host.fit || host.trying == 0) {
            ++host.trying;
            return best;
        }
        if (changed_.wait_until(lock, deadline) == std::cv_status::timeout) {
            error = makeError(kCannotConnect, "no server has answered yet");
            return kNone;
        }
    }
}

void Hosts::pauseAfterFailure(Host& host) {
    host.fit = false;
    host.notBefore = Clock::now() + pauseOf(kFirstPause, host.failures++, kLongestPause);
}

bool Hosts::failed(Index index, bool pause, const Error& error) {
    const std::lock_guard<std::mutex> lock(mutex_);
    Host& host = hosts_[index];
    --host.trying;
    changed_.notify_all();
    lastError_ = error;
    if (isTooManyConnections(error.number) && host.open > 0) return false;  // wait for one of them
    if (isLoginRefusal(error.number)) {
        refusal_ = error;
        refusedUntil_ =
            Clock::now() + pauseOf(kFirstRefusalPause, refusals_++, kLongestRefusalPause);
        return false;
    }
    host.fit = false;
    host.silent = isClientError(error.number);
    if (pause) pauseAfterFailure(host);
    return true;
}

std::uint64_t Hosts::connected(Index index, Standing standing) {
    const std::lock_guard<std::mutex> lock(mutex_);
    Host& host = hosts_[index];
    --host.trying;
    changed_.notify_all();
    refusals_ = 0;
    host.silent = false;
    host.readOnly = standing == Standing::ReadOnly;
    if (standing == Standing::NotReady) {
        lastError_ = makeError(kUnknownClusterState, "the cluster node is not ready");
        pauseAfterFailure(host);
        return 0;
    }
    host.failures = 0;
    host.fit = !host.readOnly;
    if (inUse_ == index) return epoch_;
    if (host.readOnly) return 0;
    if (inUse_ != kNone && hosts_[inUse_].fit) return 0;  // another thread was faster elsewhere
    use(index, false);
    return epoch_;
}

std::uint64_t Hosts::settleFor(Index readOnlyHost) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (inUse_ != kNone && hosts_[inUse_].fit) return 0;
    use(readOnlyHost, false);
    return epoch_;
}

void Hosts::use(Index host, bool byReturn) {
    const milliseconds returnPause = returnPause_;
    if (inUse_ != kNone && inUse_ != host) giveUp();
    if (byReturn) returnPause_ = returnPause;  // what is given up is but the stand-in
    inUse_ = host;
    returned_ = byReturn;
    returnedAt_ = Clock::now();
}

/// Leaves the server in use, whatever comes next.
void Hosts::giveUp() {
    const TimePoint now = Clock::now();
    const bool again = returned_ && now - returnedAt_ < kSoon;
    returnPause_ =
        again ? std::min<milliseconds>(returnPause_ * 4, kLongestReturnPause) : kFirstReturnPause;
    noReturnBefore_ = now + returnPause_;
    ++epoch_;
    if (hosts_[inUse_].silent) vainBefore_ = epoch_.load();
    inUse_ = kNone;
    silence_ = {};
}

bool Hosts::leave(std::uint64_t epoch, Standing found) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (epoch != epoch_) return true;
    Host& host = hosts_[inUse_];
    if (found == Standing::ReadOnly) {
        if (host.readOnly || hosts_.size() == 1) return false;  // there was no better one
        host.readOnly = true;
        host.fit = false;
    } else {
        pauseAfterFailure(host);
    }
    giveUp();
    return true;
}

Hosts::InUse Hosts::inUse() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return {inUse_, epoch_};
}

std::vector<Hosts::Index> Hosts::better() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    std::vector<Index> found;
    const TimePoint now = Clock::now();
    if (inUse_ == kNone || now < refusedUntil_) return found;
    const bool anyOther = hosts_[inUse_].readOnly;
    for (Index host = 0; host < hosts_.size(); ++host) {
        if (host == inUse_ || now < hosts_[host].notBefore) continue;
        if (anyOther || (host < inUse_ && now >= noReturnBefore_)) found.push_back(host);
    }
    return found;
}

void Hosts::moveTo(Index host, bool idle) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (inUse_ == kNone || inUse_ == host || !(idle || hosts_[inUse_].readOnly)) return;
    Host& better = hosts_[host];
    better.fit = true;
    better.readOnly = false;
    better.failures = 0;
    use(host, host < inUse_);
}

void Hosts::setSilent(const InUse& inUse, const Error& error) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (inUse.epoch != epoch_) return;
    silence_ = error;
    hosts_[inUse.host].fit = false;
    hosts_[inUse.host].silent = true;
}

void Hosts::clearSilent(std::uint64_t epoch) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (epoch != epoch_) return;
    silence_ = {};
    hosts_[inUse_].fit = !hosts_[inUse_].readOnly;
    hosts_[inUse_].silent = false;
}

bool Hosts::silent(Error& error) const {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!silence_) return false;
    error = silence_;
    return true;
}

}  // namespace dbaccess::mariadb
