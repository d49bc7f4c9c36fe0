#ifndef DBSERVICE_DBACCESS_POOL_POOL_H
#define DBSERVICE_DBACCESS_POOL_POOL_H

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "dbaccess/pool/Connector.h"
#include "dbaccess/stats/Counters.h"

namespace dbaccess {

struct PoolSettings {
    unsigned int minConnections = 1;
    unsigned int maxConnections = 10;
    bool autoReconnect = true;
    bool waitForConnection = true;
    std::chrono::milliseconds acquireTimeout = std::chrono::seconds(30);
    std::chrono::milliseconds idle = std::chrono::seconds(60);
    std::chrono::milliseconds age = std::chrono::minutes(30);
};

/// The connections of one DataAccess, lent to one thread at a time.
///
/// Nothing slow happens under its lock: connecting and closing are done by the borrowing thread on
/// its own, or by the pool's. That one opens connections up to the minimum again, closes those that
/// are idle beyond it, lost or old, and lets the connector look after its servers.
///
/// Threads: any number at once. All leases must be back before it is destroyed.
class Pool {
    struct Entry {
        std::unique_ptr<Connection> connection;
        std::uint64_t sessionVersion = 0;
        TimePoint old{};       // when it is to be replaced
        TimePoint back{};      // when it was used last ...
        std::thread::id user;  // ... and by whom
    };

public:
    /// A lent connection. Goes back to the pool, or is closed when it is no longer usable.
    class Lease {
    public:
        Lease() = default;
        Lease(Lease&& other) noexcept;
        Lease& operator=(Lease&&) = delete;
        ~Lease();

        explicit operator bool() const { return entry_.connection != nullptr; }
        Connection* operator->() const { return entry_.connection.get(); }
        Connection& operator*() const { return *entry_.connection; }

    private:
        friend class Pool;
        Lease(Pool& pool, Entry entry) : pool_(&pool), entry_(std::move(entry)) {}

        Pool* pool_ = nullptr;
        Entry entry_;
    };

    explicit Pool(std::unique_ptr<Connector> connector) : connector_(std::move(connector)) {}
    Pool(const Pool&) = delete;
    Pool& operator=(const Pool&) = delete;
    ~Pool();

    /// Takes over the settings and opens connections up to the minimum (one at least).
    /// @return false with `error` when one could not be opened; those that could are kept.
    bool open(const PoolSettings& settings, Error& error);

    /// Lends a connection that was alive a moment ago: an idle one, else a new one, else (when the
    /// settings allow waiting) the first to come back. An empty lease with `error` otherwise.
    /// Whatever is done with the connection is to be over by the deadline.
    Lease acquire(TimePoint deadline, Error& error);

    /// Makes every connection run a session statement before it is lent next; `lease` has run it.
    void addSessionStatement(Lease& lease, const Statement& statement);

    bool reconnects() const;

private:
    struct SessionStatement {
        std::string key;
        std::uint64_t version;
        std::string text;
    };

    template <class Connect>
    Lease lendNew(Connect connect);
    Lease prepared(Entry entry, TimePoint deadline, Error& error);
    void giveBack(Entry entry);
    void startKeeper();
    void keep();
    void tidy();
    void refill();

    // With the mutex held:
    bool takeIdle(std::unique_lock<std::mutex>& lock, Entry& entry);
    bool isExpired(const Entry& entry, TimePoint now) const;
    void forgetLost();
    Error exhausted() const;

    const std::unique_ptr<Connector> connector_;
    mutable std::mutex mutex_;  // guards all that follows
    std::condition_variable changed_;
    PoolSettings settings_;
    unsigned int limit_ = settings_.maxConnections;  // shrinks by each loss without autoReconnect
    Part open_{counters.open};                       // idle, lent and just connecting
    TimePoint fullUntil_{};                          // the server takes no more connections
    std::vector<Entry> idle_;                        // in the order in which they came back
    Part idleCount_{counters.idle};
    std::vector<SessionStatement> session_;         // in order of version, one for each key
    std::atomic<std::uint64_t> sessionVersion_{0};  // is looked at without the mutex
    std::condition_variable closing_;
    bool closed_ = false;
    std::thread keeper_;
};

}  // namespace dbaccess

#endif
