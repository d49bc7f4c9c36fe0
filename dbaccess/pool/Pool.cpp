#include "dbaccess/pool/Pool.h"

#include <algorithm>
#include <iterator>
#include <random>
#include <system_error>

#include "dbaccess/error/ErrorNumber.h"

namespace dbaccess {
namespace {

// How often the pool's thread looks after the servers, and how seldom after the connections.
constexpr std::chrono::milliseconds kTick{250};
constexpr unsigned int kTicksOfTidying = 8;

// How long no connection is tried after the server had too many.
constexpr std::chrono::seconds kFullTime{1};

}  // namespace

Pool::Lease::Lease(Lease&& other) noexcept : pool_(other.pool_), entry_(std::move(other.entry_)) {}

Pool::Lease::~Lease() {
    if (entry_.connection) pool_->giveBack(std::move(entry_));
}

Pool::~Pool() {
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        closed_ = true;
    }
    closing_.notify_all();
    if (keeper_.joinable()) keeper_.join();
}

bool Pool::open(const PoolSettings& settings, Error& error) {
    const unsigned int minimum = std::max(settings.minConnections, 1U);
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        settings_ = settings;
        settings_.minConnections = minimum;
        limit_ = std::max(settings.maxConnections, minimum);
    }
    startKeeper();
    std::vector<Lease> leases;  // held until all are open, so that each acquire opens another one
    while (leases.size() < minimum) {
        leases.push_back(acquire(TimePoint::max(), error));
        if (leases.back()) continue;
        const std::lock_guard<std::mutex> lock(mutex_);
        if (!settings_.autoReconnect) limit_ = open_;
        return false;
    }
    return true;
}

/// A new connection, for which `open_` has been raised.
/// @param connect  makes it, or returns null.
template <class Connect>
Pool::Lease Pool::lendNew(Connect connect) {
    Entry entry;
    try {
        entry.connection = connect();
    } catch (const std::bad_alloc&) {
        const std::lock_guard<std::mutex> lock(mutex_);
        --open_;
        throw;
    }
    const std::lock_guard<std::mutex> lock(mutex_);
    if (entry.connection) {
        counters.opened.add();
        // Not all of a minimum at once, nor those of many programs that began together.
        thread_local std::minstd_rand random{std::random_device{}()};
        const auto part = static_cast<int>(random() % 100);
        const auto age = settings_.age - settings_.age * part / 1000;
        entry.old = settings_.autoReconnect ? Clock::now() + age : TimePoint::max();
        return Lease(*this, std::move(entry));
    }
    // A connection that never was is none lost: the limit stays.
    --open_;
    changed_.notify_one();
    return {};
}

Pool::Lease Pool::acquire(TimePoint deadline, Error& error) {
    Entry entry;
    TimePoint giveUp{};
    std::unique_lock<std::mutex> lock(mutex_);
    while (!takeIdle(lock, entry)) {
        const TimePoint now = Clock::now();
        if (giveUp == TimePoint()) giveUp = std::min(deadline, now + settings_.acquireTimeout);
        if (open_ < limit_ && now >= fullUntil_) {
            ++open_;
            lock.unlock();
            Lease lease = lendNew([&] { return connector_->connect(giveUp, error); });
            if (lease) return prepared(std::move(lease.entry_), deadline, error);
            lock.lock();
            // With connections of our own we wait for one of them instead.
            if (!isTooManyConnections(error.number) || open_ == 0) return {};
            fullUntil_ = Clock::now() + kFullTime;
        } else if (!settings_.waitForConnection || limit_ == 0 || now >= giveUp) {
            error = exhausted();
            counters.waitTimeouts.add();
            return {};
        } else if (connector_->silent(error)) {
            return {};
        } else {
            const bool full = open_ < limit_;
            const Waiting waiting;
            changed_.wait_until(lock, full ? std::min(giveUp, fullUntil_) : giveUp);
        }
    }
    return prepared(std::move(entry), deadline, error);
}

/// The idle connection that this thread used last, as what it has in memory is near the processor,
/// or else the one that any did; those found dead on the way are closed. Returns true without the
/// lock.
bool Pool::takeIdle(std::unique_lock<std::mutex>& lock, Entry& entry) {
    while (!idle_.empty()) {
        auto place = std::find_if(idle_.rbegin(), idle_.rend(), [](const Entry& idle) {
            return idle.user == std::this_thread::get_id();
        });
        if (place == idle_.rend()) place = idle_.rbegin();
        entry = std::move(*place);
        idle_.erase(std::prev(place.base()));
        idleCount_ = idle_.size();
        lock.unlock();
        if (entry.connection->alive()) return true;
        entry.connection.reset();
        lock.lock();
        forgetLost();
    }
    return false;
}

/// Runs the session statements that the connection has not run yet.
Pool::Lease Pool::prepared(Entry entry, TimePoint deadline, Error& error) {
    std::vector<SessionStatement> missing;
    if (entry.sessionVersion != sessionVersion_) {
        const std::lock_guard<std::mutex> lock(mutex_);
        for (const SessionStatement& session : session_) {
            if (session.version > entry.sessionVersion) missing.push_back(session);
        }
        entry.sessionVersion = sessionVersion_;
    }
    entry.connection->endBy(deadline);
    for (const SessionStatement& session : missing) {
        const Outcome outcome = entry.connection->run("", Statement(session.text));
        if (!outcome.error || entry.connection->usable()) continue;
        error = outcome.error;
        giveBack(std::move(entry));
        return {};
    }
    counters.acquired.add();
    return Lease(*this, std::move(entry));
}

void Pool::giveBack(Entry entry) {
    const bool usable = entry.connection->usable();
    entry.user = std::this_thread::get_id();
    entry.back = Clock::now();
    const bool old = entry.back > entry.old;
    if (!usable || old) entry.connection.reset();
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!usable) return forgetLost();
    old ? static_cast<void>(--open_) : idle_.push_back(std::move(entry));
    idleCount_ = idle_.size();
    changed_.notify_one();
}

void Pool::startKeeper() {
    if (!connector_->wantsTending() || keeper_.joinable()) return;
    try {
        keeper_ = std::thread([this] { keep(); });
    } catch (const std::system_error&) {
        // No more threads to be had: what it does is left undone but for what borrowers find.
    }
}

void Pool::keep() {
    std::unique_lock<std::mutex> lock(mutex_);
    for (unsigned int tick = 0; !closing_.wait_for(lock, kTick, [this] { return closed_; });
         ++tick) {
        lock.unlock();
        try {
            connector_->tend();
            if (tick % kTicksOfTidying == 0) {
                tidy();
                refill();
            }
        } catch (const std::bad_alloc&) {
            // The next time, then.
        }
        lock.lock();
        Error error;
        if (connector_->silent(error)) changed_.notify_all();
    }
}

/// Closes what is of no more use.
void Pool::tidy() {
    std::vector<Entry> useless;  // closed when the lock is free again
    const std::lock_guard<std::mutex> lock(mutex_);
    const TimePoint now = Clock::now();
    useless.reserve(idle_.size());
    for (std::size_t i = 0; i < idle_.size();) {
        const bool lost = !idle_[i].connection->alive();
        if (!lost && !isExpired(idle_[i], now)) {
            ++i;
            continue;
        }
        useless.push_back(std::move(idle_[i]));
        idle_.erase(idle_.begin() + static_cast<std::ptrdiff_t>(i));
        idleCount_ = idle_.size();
        lost ? forgetLost() : static_cast<void>(--open_);
    }
}

bool Pool::isExpired(const Entry& entry, TimePoint now) const {
    if (open_ > settings_.minConnections && now - entry.back > settings_.idle) return true;
    return now > entry.old;
}

/// Opens connections until there are as many as are to be kept open.
void Pool::refill() {
    for (;;) {
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            const bool wanted = settings_.autoReconnect && open_ < settings_.minConnections;
            if (!wanted || Clock::now() < fullUntil_ || closed_) return;
            ++open_;
        }
        Error error;
        if (!lendNew([&] { return connector_->connectUnasked(error); })) return;
        // Given back at once, it is idle.
    }
}

void Pool::forgetLost() {
    counters.lost.add();
    --open_;
    if (!settings_.autoReconnect) --limit_;
    changed_.notify_all();  // one loss may let several waiters connect, or end the hope of all
}

Error Pool::exhausted() const {
    if (limit_ == 0)
        return makeError(kServerGone, "all connections are lost and reconnecting is off");
    return makeError(kTooManyConnections,
                     "no free connection: all " + std::to_string(open_) + " are in use");
}

void Pool::addSessionStatement(Lease& lease, const Statement& statement) {
    const std::string key = sessionKeyOf(statement.text);
    const std::lock_guard<std::mutex> lock(mutex_);
    session_.erase(std::remove_if(session_.begin(), session_.end(),
                                  [&](const SessionStatement& known) { return known.key == key; }),
                   session_.end());
    // The lease may lack a statement that another thread added meanwhile; then it runs this one
    // once more with it, which does no harm.
    const bool upToDate = lease.entry_.sessionVersion == sessionVersion_;
    session_.push_back({key, ++sessionVersion_, statement.text});
    if (upToDate) lease.entry_.sessionVersion = sessionVersion_;
}

bool Pool::reconnects() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return settings_.autoReconnect;
}

}  // namespace dbaccess
