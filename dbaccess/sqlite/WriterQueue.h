#ifndef DBSERVICE_DBACCESS_SQLITE_WRITERQUEUE_H
#define DBSERVICE_DBACCESS_SQLITE_WRITERQUEUE_H

#include <condition_variable>
#include <mutex>
#include <vector>

#include "dbaccess/pool/Outcome.h"
#include "dbaccess/reader/Statement.h"
#include "dbaccess/sqlite/WriteLock.h"

namespace dbaccess::sqlite {

/// The single writes to one file that meet in this process: the first of them leads and runs all
/// that wait in one transaction, as the commit is what a write costs.
/// Threads: any number at once.
class WriterQueue {
public:
    /// A write on its way. Its caller is answered once the outcome is certain.
    struct Write {
        const Statement& statement;
        Deadline deadline;  ///< to be begun
        Outcome outcome = {};
        enum class State { Waiting, Begun, Done } state = State::Waiting;
    };

    /// Waits until the write leads, is done, or may wait no longer and is out of the queue (its
    /// state is still Waiting then). @return  true when it leads: then `begin` and `finish`, or
    /// `giveUp`, must follow.
    bool enter(Write& write);

    /// For the leader, who now may write: all that wait, its own write first.
    std::vector<Write*> begin();

    /// Answers the callers of what was begun, and lets the next one lead.
    void finish(const std::vector<Write*>& begun);

    /// For the leader who may not write: takes it out and lets the next one lead.
    void giveUp(Write& write);

private:
    void remove(const Write& write);

    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<Write*> waiting_;  // guarded by mutex_, as is the next
    bool led_ = false;
};

}  // namespace dbaccess::sqlite

#endif
