#ifndef DBSERVICE_DBACCESS_SQLITE_DATABASEFILE_H
#define DBSERVICE_DBACCESS_SQLITE_DATABASEFILE_H

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dbaccess/pool/Outcome.h"
#include "dbaccess/reader/RecentlyUsed.h"
#include "dbaccess/reader/Statement.h"
#include "dbaccess/settings/Settings.h"
#include "dbaccess/sqlite/SharedByName.h"
#include "dbaccess/sqlite/WriteLock.h"
#include "dbaccess/sqlite/WriterQueue.h"

struct sqlite3;
struct sqlite3_stmt;

namespace dbaccess::sqlite {

/// The column names of a prepared statement, for all its results.
struct KnownColumns {
    RowBuffer::Columns names;  ///< null before the first result
    int timesPrepared = 0;     ///< when they were read: SQLite prepares anew what has changed
};

/// An open database file.
///
/// The file is in WAL mode, so readers and the one writer do not wait for each other, and a commit
/// is on the disk when it is acknowledged, unless the settings renounce that. Every write holds the
/// file's WriteLock, and so do the checkpoints, which run after a commit once the WAL has grown
/// enough.
///
/// Threads: one at a time.
class DatabaseFile {
public:
    /// Whether this process was forked off one that had files open. SQLite's state, and ours, is
    /// then the parent's, and as its other threads had left it in the middle: no object may be
    /// made, used or destroyed in this process.
    static bool areInherited();

    /// @param path  of the database file, the same in all processes.
    DatabaseFile(std::string path, const Settings& settings);
    DatabaseFile(const DatabaseFile&) = delete;
    DatabaseFile& operator=(const DatabaseFile&) = delete;
    ~DatabaseFile();

    /// Opens the file, which must exist, and reads from it, so that a damaged or foreign file is
    /// found now. To be called once, before all else.
    Error open();

    /// True when a failure has shown that the object cannot be trusted, or when the file could only
    /// be opened for reading. To be closed then without delay: what is open keeps others in this
    /// process from finding that the file can be written again.
    bool isToBeClosed() const;

    /// False when it is to be closed, or the file was deleted or replaced by another a millisecond
    /// ago or longer.
    bool usable(Deadline now);

    /// Runs one statement: alone all of it takes effect or nothing, whatever its number of rows. A
    /// write may run on another DatabaseFile of this process, with others in one commit.
    Outcome run(const Statement& statement, Deadline now);

    /// A transaction has the write lock from its begin to its end. After a failed run or commit it
    /// is to be rolled back.
    Outcome begin();
    Outcome commit();
    void rollback();

private:
    struct Close {
        void operator()(sqlite3* database) const;
    };
    struct Reset {
        void operator()(sqlite3_stmt* statement) const;
    };
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };
    /// Counts the objects of the process.
    class InUse {
    public:
        InUse();
        InUse(const InUse&) = delete;
        InUse& operator=(const InUse&) = delete;
        ~InUse();
    };
    class WriteEnd;
    struct Shared;
    struct Prepared {
        std::unique_ptr<sqlite3_stmt, Finalize> statement;
        KnownColumns columns;
        bool used = false;
    };

    void close();
    int openFile(const std::string& name, int extraFlags);
    int setUp();
    void installHooks();
    void switchToWal();
    bool isReadOnly();
    bool isFrozen() const;

    int execute(const char* text);
    int prepare(std::string_view text, unsigned int flags, Prepared& prepared);
    Prepared* keptOf(const Skeleton& skeleton);
    Outcome prepareAlone(const Statement& statement, Prepared& prepared);
    int runPrepared(Prepared& prepared, const Skeleton& skeleton, Outcome& outcome);
    int runRow(Prepared& prepared, const Value* values, std::size_t count, Outcome& outcome);
    Outcome runNow(const Statement& statement, Prepared* prepared);
    Outcome runQueued(const Statement& statement);
    void runTogether(const std::vector<WriterQueue::Write*>& writes) noexcept;
    bool commitTogether(const std::vector<WriterQueue::Write*>& writes);
    void runInto(WriterQueue::Write& write) noexcept;
    Outcome failure(int code, std::string_view statement = {}) noexcept;

    void startClock(Deadline now = Clock::now());
    Outcome lockFailure(int error) const;
    Shared& shared() { return **shared_; }
    void endWrite();
    void checkpointIfDue();

    static int whenBusy(void* file, int tries);
    static int whenRunning(void* file);
    static int whenCommitted(void* file, sqlite3* database, const char* schema, int walPages);

    const InUse inUse_;  // the first to come and the last to go
    const std::string path_;
    const Settings settings_;
    WriteLock lock_;
    std::optional<SharedByName<Shared>> shared_;  // by the file's identity, from `open` on
    std::unique_ptr<sqlite3, Close> database_;
    RecentlyUsed<Prepared> kept_;  // by the text of the skeleton
    Deadline lockDeadline_;
    Deadline answerDeadline_;
    Deadline lookAgain_;
    bool moved_ = false;
    bool spoilt_ = false;
    bool readOnly_ = false;  // although others may write
    bool frozen_ = false;    // on read-only media, and read as such
    bool inTransaction_ = false;
};

}  // namespace dbaccess::sqlite

#endif
