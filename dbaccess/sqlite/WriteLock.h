#ifndef DBSERVICE_DBACCESS_SQLITE_WRITELOCK_H
#define DBSERVICE_DBACCESS_SQLITE_WRITELOCK_H

#include <chrono>
#include <string>

#include "dbaccess/sqlite/SharedByName.h"

namespace dbaccess::sqlite {

using Deadline = std::chrono::steady_clock::time_point;

/// The right to write to one database file: among all connections of all processes that use this
/// library, one has it at a time.
///
/// SQLite admits one writer at a time by itself. This lock is there for its checkpoints: before
/// 3.51.3 a checkpoint that runs beside a writer can miss that the writer started the WAL anew, and
/// pages get lost. So whoever writes, checkpoints or closes the file holds this lock meanwhile.
///
/// Within the process it is waited for like a mutex; against other processes it is a file lock on
/// NAME.db-lock beside the file, which ends with its process, also when a child that was forked
/// from it lives on. The lock file stays for good.
/// Threads: each object is used by one thread at a time, and any thread may release it.
class WriteLock {
public:
    /// @param databaseFile  path of the file, the same in all processes (symbolic links resolved).
    explicit WriteLock(std::string databaseFile);
    WriteLock(const WriteLock&) = delete;
    WriteLock& operator=(const WriteLock&) = delete;
    ~WriteLock();

    /// Waits for the lock; at once if it is already held.
    /// @return  0, ETIMEDOUT, or the errno that says why the lock file cannot be used.
    int acquire(Deadline deadline);

    /// Does nothing when the lock is not held.
    void release();

    bool isHeld() const { return held_; }

private:
    struct Gate;

    bool enterGate(Deadline deadline);
    void leaveGate();
    int lockFile(Deadline deadline);
    bool openLockFile();
    int openOrCreate() const;

    const std::string databaseFile_;
    const std::string lockFile_;
    const SharedByName<Gate> gate_;
    bool held_ = false;
};

}  // namespace dbaccess::sqlite

#endif
