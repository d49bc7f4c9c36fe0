#ifndef DBSERVICE_DBACCESS_POOL_POOL_H
#define DBSERVICE_DBACCESS_POOL_POOL_H

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "dbaccess/pool/Connector.h"

namespace dbaccess {

struct PoolSettings {
    unsigned int minConnections = 1;
    unsigned int maxConnections = 10;
    bool autoReconnect = true;
    bool waitForConnection = true;
    std::chrono::milliseconds acquireTimeout = std::chrono::seconds(30);
};

/// The connections of one DataAccess, lent to one thread at a time.
///
/// Nothing slow happens under its lock: connecting, closing and the look whether a connection is
/// still alive are done by the borrowing thread on its own.
///
/// Threads: any number at once. All leases must be back before it is destroyed.
class Pool {
    struct Entry {
        std::unique_ptr<Connection> connection;
        std::uint64_t sessionVersion = 0;
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

    /// Takes over the settings and opens connections up to the minimum (one at least).
    /// @return false with `error` when one could not be opened; those that could are kept.
    bool open(const PoolSettings& settings, Error& error);

    /// Lends a connection that was alive a moment ago: an idle one, else a new one, else (when the
    /// settings allow waiting) the first to come back. An empty lease with `error` otherwise.
    Lease acquire(Error& error);

    /// Makes every connection run a session statement before it is lent next; `lease` has run it.
    void addSessionStatement(Lease& lease, const Statement& statement);

    bool reconnects() const;

private:
    struct SessionStatement {
        std::string key;
        std::uint64_t version;
        std::string text;
    };

    Lease connect(Error& error);
    Lease prepared(Entry entry, Error& error);
    void giveBack(Entry entry);

    // With the mutex held:
    bool takeIdle(std::unique_lock<std::mutex>& lock, Entry& entry);
    void forgetLost();
    Error exhausted() const;

    const std::unique_ptr<Connector> connector_;
    mutable std::mutex mutex_;  // guards all that follows
    std::condition_variable changed_;
    PoolSettings settings_;
    unsigned int limit_ = settings_.maxConnections;  // shrinks by each loss without autoReconnect
    unsigned int open_ = 0;                          // idle, lent and just connecting
    std::vector<Entry> idle_;                        // the last one back is lent first
    std::vector<SessionStatement> session_;          // in order of version, one for each key
    std::uint64_t sessionVersion_ = 0;
};

}  // namespace dbaccess

#endif
