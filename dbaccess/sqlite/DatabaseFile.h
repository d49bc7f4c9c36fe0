#ifndef DBSERVICE_DBACCESS_SQLITE_DATABASEFILE_H
#define DBSERVICE_DBACCESS_SQLITE_DATABASEFILE_H

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "dbaccess/pool/Outcome.h"
#include "dbaccess/pool/Timeouts.h"
#include "dbaccess/reader/RecentlyUsed.h"
#include "dbaccess/reader/Statement.h"
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
/// is on the disk when it is acknowledged. Every write holds the file's WriteLock, and so do the
/// checkpoints, which run after a commit once the WAL has grown enough.
///
/// Threads: one at a time.
class DatabaseFile {
public:
    /// @param path  of the database file, the same in all processes.
    DatabaseFile(std::string path, const Timeouts& timeouts);
    DatabaseFile(const DatabaseFile&) = delete;
    DatabaseFile& operator=(const DatabaseFile&) = delete;
    ~DatabaseFile();

    /// Opens the file, which must exist, and reads from it, so that a damaged or foreign file is
    /// found now. To be called once, before all else.
    Error open();

    /// False when the file was deleted or replaced by another, or a failure has shown that the
    /// object cannot be trusted: it is then to be closed.
    bool usable() const;

    /// Runs one statement: alone all of it takes effect or nothing, whatever its number of rows. A
    /// write may run on another DatabaseFile of this process, with others in one commit.
    Outcome run(const Statement& statement);

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
    class WriteEnd;
    struct Prepared {
        std::unique_ptr<sqlite3_stmt, Finalize> statement;
        KnownColumns columns;
    };

    int openFile(const std::string& name, int extraFlags);
    int setUp();
    void installHooks();
    void switchToWal();
    bool isFrozen() const;

    int execute(const char* text);
    int prepare(std::string_view text, unsigned int flags, Prepared& prepared);
    Prepared* keptOf(const Skeleton& skeleton);
    Outcome prepareAlone(const Statement& statement, Prepared& prepared);
    int runPrepared(Prepared& prepared, const Skeleton& skeleton, Outcome& outcome);
    int runRow(Prepared& prepared, const Value* values, std::size_t count, Outcome& outcome);
    Outcome runNow(const Statement& statement);
    Outcome runQueued(const Statement& statement);
    void runTogether(const std::vector<WriterQueue::Write*>& writes) noexcept;
    bool commitTogether(const std::vector<WriterQueue::Write*>& writes);
    void runInto(WriterQueue::Write& write) noexcept;
    Outcome failure(int code, std::string_view statement = {}) noexcept;

    void startClock();
    Outcome lockFailure(int error) const;
    void endWrite();
    void checkpointIfDue();

    static int whenBusy(void* file, int tries);
    static int whenRunning(void* file);
    static int whenCommitted(void* file, sqlite3* database, const char* schema, int walPages);

    const std::string path_;
    const Timeouts timeouts_;
    WriteLock lock_;
    std::shared_ptr<WriterQueue> queue_;
    std::unique_ptr<sqlite3, Close> database_;
    RecentlyUsed<Prepared> kept_;  // by the text of the skeleton
    Deadline lockDeadline_;
    Deadline answerDeadline_;
    int walPages_ = 0;  // after the last commit here
    int checkpointAt_;  // pages in the WAL
    bool spoilt_ = false;
    bool inTransaction_ = false;
};

}  // namespace dbaccess::sqlite

#endif
