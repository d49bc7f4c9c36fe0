#include "dbaccess/pool/Pool.h"

#include <algorithm>

#include "dbaccess/error/ErrorNumber.h"

namespace dbaccess {

Pool::Lease::Lease(Lease&& other) noexcept : pool_(other.pool_), entry_(std::move(other.entry_)) {}

Pool::Lease::~Lease() {
    if (entry_.connection) pool_->giveBack(std::move(entry_));
}

bool Pool::open(const PoolSettings& settings, Error& error) {
    const unsigned int minimum = std::max(settings.minConnections, 1U);
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        settings_ = settings;
        limit_ = std::max(settings.maxConnections, minimum);
    }
    std::vector<Lease> leases;  // held until all are open, so that each acquire opens another one
    while (leases.size() < minimum) {
        leases.push_back(acquire(error));
        if (leases.back()) continue;
        const std::lock_guard<std::mutex> lock(mutex_);
        if (!settings_.autoReconnect) limit_ = open_;
        return false;
    }
    return true;
}

Pool::Lease Pool::acquire(Error& error) {
    std::unique_lock<std::mutex> lock(mutex_);
    const auto deadline = std::chrono::steady_clock::now() + settings_.acquireTimeout;
    for (;;) {
        Entry entry;
        if (takeIdle(lock, entry)) {
            lock.unlock();
            return prepared(std::move(entry), error);
        }
        if (open_ < limit_) {
            ++open_;
            lock.unlock();
            return connect(error);
        }
        const bool waited = settings_.waitForConnection && limit_ > 0 &&
                            changed_.wait_until(lock, deadline) == std::cv_status::no_timeout;
        if (!waited && idle_.empty() && open_ >= limit_) {
            error = exhausted();
            return {};
        }
    }
}

/// The idle connection that was used last; those found dead on the way are closed.
bool Pool::takeIdle(std::unique_lock<std::mutex>& lock, Entry& entry) {
    while (!idle_.empty()) {
        entry = std::move(idle_.back());
        idle_.pop_back();
        lock.unlock();
        const bool alive = entry.connection->alive();
        if (!alive) entry.connection.reset();
        lock.lock();
        if (alive) return true;
        forgetLost();
    }
    return false;
}

Pool::Lease Pool::connect(Error& error) {
    Entry entry;
    entry.connection = connector_->connect(error);
    if (entry.connection) return prepared(std::move(entry), error);

    // A connection that never was is none lost: the limit stays.
    const std::lock_guard<std::mutex> lock(mutex_);
    --open_;
    changed_.notify_one();
    return {};
}

/// Runs the session statements that the connection has not run yet.
Pool::Lease Pool::prepared(Entry entry, Error& error) {
    std::vector<SessionStatement> missing;
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        for (const SessionStatement& session : session_) {
            if (session.version > entry.sessionVersion) missing.push_back(session);
        }
        entry.sessionVersion = sessionVersion_;
    }
    for (const SessionStatement& session : missing) {
        const Outcome outcome = entry.connection->run("", Statement(session.text));
        if (!outcome.error || entry.connection->usable()) continue;
        error = outcome.error;
        giveBack(std::move(entry));
        return {};
    }
    return Lease(*this, std::move(entry));
}

void Pool::giveBack(Entry entry) {
    const bool usable = entry.connection->usable();
    if (!usable) entry.connection.reset();
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!usable) return forgetLost();
    idle_.push_back(std::move(entry));
    changed_.notify_one();
}

void Pool::forgetLost() {
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
