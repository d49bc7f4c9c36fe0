#ifndef DBSERVICE_DBACCESS_MARIADB_HOSTS_H
#define DBSERVICE_DBACCESS_MARIADB_HOSTS_H

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <vector>

#include "dbaccess/LastError.h"
#include "dbaccess/pool/Timeouts.h"

namespace dbaccess::mariadb {

/// What a server says of itself.
enum class Standing {
    Fit,
    ReadOnly,
    NotReady,  ///< a cluster node that is joining, or has lost the others
};

/// What is known of the servers of a host text, and so which of them is connected to next.
///
/// All connections are on one server at a time, the one in use, so that who writes on one
/// connection reads it on another. Each time that server changes begins a new epoch; connections of
/// an earlier one are closed instead of lent. A server that failed is left alone for a while,
/// longer each time. Servers that nothing is known of are tried in order, each by one thread, for
/// which others wait.
///
/// Threads: any number at once.
class Hosts {
public:
    using Index = std::size_t;
    static constexpr Index kNone = static_cast<Index>(-1);

    explicit Hosts(std::size_t count) : hosts_(count) {}

    std::size_t count() const { return hosts_.size(); }

    /// The server that a connect is to try, which must then be told what came of it; of those that
    /// it has not tried. `kNone` with `error`: none is left, all failed a moment ago, or `deadline`
    /// has passed.
    Index begin(const std::vector<bool>& tried, TimePoint deadline, Error& error);

    /// The connect failed. @return  whether another server may do better.
    /// @param pause  whether the server is to be left alone for a while.
    bool failed(Index host, bool pause, const Error& error);

    /// The connect worked. @return  the epoch of the connection; 0: it is not to be used now.
    std::uint64_t connected(Index host, Standing standing);

    /// Takes a server that is read-only into use: there is no better one.
    std::uint64_t settleFor(Index readOnlyHost);

    /// A connection of this epoch found its server unfit. @return  whether it is left for another
    /// one, so that what was not executed there may be sent again.
    bool leave(std::uint64_t epoch, Standing found);

    bool isCurrent(std::uint64_t epoch) const { return epoch == epoch_.load(); }

    /// Counts the connections of a server.
    void opened(Index host) { ++hosts_[host].open; }
    void closed(Index host) { --hosts_[host].open; }

    // For who looks after the servers while statements run or none does:

    struct InUse {
        Index host = kNone;
        std::uint64_t epoch = 0;
    };
    InUse inUse() const;

    /// Servers that would be better than the one in use and may be tried again, the best first.
    std::vector<Index> better() const;
    /// Takes one of them into use, which was found fit: at once when the one in use is read-only,
    /// otherwise only when nobody would notice.
    void moveTo(Index host, bool idle);

    /// The server in use does not answer; `error` says so to who waits for a connection. Nobody
    /// connects to it until it is known to answer again.
    void setSilent(const InUse& inUse, const Error& error);
    void clearSilent(std::uint64_t epoch);
    bool silent(Error& error) const;

    /// What still waits on connections of epochs before this one waits for a server that was left
    /// because it did not answer.
    std::uint64_t vainBefore() const { return vainBefore_; }

private:
    struct Host {
        bool fit = false;       // when it was connected to last
        bool readOnly = false;  // when it was connected to or written to last
        unsigned int failures = 0;
        bool silent = false;  // when it was connected to last there was no answer
        TimePoint notBefore{};
        unsigned int trying = 0;
        std::atomic<unsigned int> open{0};
    };

    // With the mutex held:
    int rank(Index host) const;
    void use(Index host, bool byReturn);
    void giveUp();
    void pauseAfterFailure(Host& host);

    std::vector<Host> hosts_;
    mutable std::mutex mutex_;  // guards all that follows, and the hosts but for `open`
    std::condition_variable changed_;
    Index inUse_ = kNone;
    std::atomic<std::uint64_t> epoch_{1};
    std::atomic<std::uint64_t> vainBefore_{0};
    Error lastError_;
    Error refusal_;  // of the login, by any server: another one would refuse it too
    unsigned int refusals_ = 0;
    TimePoint refusedUntil_{};
    Error silence_;
    bool returned_ = false;  // the one in use was left once, and returned to
    TimePoint returnedAt_{};
    std::chrono::milliseconds returnPause_{};
    TimePoint noReturnBefore_{};
};

}  // namespace dbaccess::mariadb

#endif
