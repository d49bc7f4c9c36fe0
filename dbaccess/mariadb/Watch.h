#ifndef DBSERVICE_DBACCESS_MARIADB_WATCH_H
#define DBSERVICE_DBACCESS_MARIADB_WATCH_H

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <list>
#include <mutex>
#include <thread>
#include <vector>

#include "dbaccess/pool/Timeouts.h"

namespace dbaccess::mariadb {

/// Ends waits that the other side would let go on: the client library's limits count anew with each
/// packet. A thread of its own cuts the sockets of statements that have run past their end.
///
/// Threads: any number at once.
class Watch {
public:
    /// One session, for as long as its socket is open.
    class Session {
    public:
        /// @param id  of the session on the server, when it does not end long statements itself.
        Session(Watch& watch, int socket, unsigned long id);
        Session(const Session&) = delete;
        Session& operator=(const Session&) = delete;
        ~Session();

        /// The epoch that it belongs to, once it has been taken into use.
        void join(std::uint64_t epoch) { epoch_ = epoch; }

        /// A statement begins, to be over at the time given. False: the socket has been cut.
        bool begin(TimePoint now, TimePoint end);
        /// It is over. False: the socket has been cut.
        bool end();

    private:
        friend class Watch;
        void cut(Clock::rep expected);

        Watch& watch_;
        const int socket_;
        const unsigned long id_;
        std::atomic<std::uint64_t> epoch_{0};
        std::atomic<Clock::rep> begin_{0};  // of the last statement
        std::atomic<Clock::rep> end_{kIdle};
        std::list<Session*>::iterator place_;
        bool overdue_ = false;  // told once by `overdue`; guarded by the mutex
    };

    Watch();
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch();

    /// Whether a statement of this epoch has been running since before the time given.
    bool anyRunningSince(std::uint64_t epoch, TimePoint time) const;
    /// Whether none of any epoch is running, and none has begun since the time given.
    bool idleSince(TimePoint time) const;
    /// Cuts what runs on connections of earlier epochs.
    void cutEarlier(std::uint64_t epoch);
    /// The ids of the sessions of an epoch whose statement began before the time given, once for
    /// each statement.
    std::vector<unsigned long> overdue(std::uint64_t epoch, TimePoint begunBefore);

private:
    static constexpr Clock::rep kIdle = 0;
    static constexpr Clock::rep kCut = -1;

    void watch();

    mutable std::mutex mutex_;  // guards all that follows
    std::list<Session*> sessions_;
    std::condition_variable closing_;
    bool closed_ = false;
    std::thread thread_;
};

}  // namespace dbaccess::mariadb

#endif
