#include "dbaccess/sqlite/WriteLock.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace dbaccess::sqlite {
namespace {

using std::chrono::microseconds;
using std::chrono::steady_clock;

// The bytes of the lock file that are locked: the writer's, and the turn of who comes next.
constexpr off_t kWriter = 0;
constexpr off_t kTurn = 1;

// A file lock cannot be waited for with a time limit, so it is asked for again and again: soon at
// first, as most writes of another process take less than a millisecond.
constexpr microseconds kFirstPause{50};
constexpr microseconds kLongestPause{1000};

/// Locks or unlocks a byte for this process. @return whether it could be done now.
bool setLock(int file, off_t byte, short type) {
    struct flock range {};
    range.l_type = type;
    range.l_whence = SEEK_SET;
    range.l_start = byte;
    range.l_len = 1;
    return ::fcntl(file, F_SETLK, &range) == 0;
}

/// @return  0, ETIMEDOUT, or the errno that says why it cannot be locked.
int waitForByte(int file, off_t byte, Deadline deadline) {
    microseconds pause = kFirstPause;
    while (!setLock(file, byte, F_WRLCK)) {
        if (errno != EAGAIN && errno != EACCES) return errno;
        if (steady_clock::now() >= deadline) return ETIMEDOUT;
        std::this_thread::sleep_for(pause);
        pause = std::min(pause * 2, kLongestPause);
    }
    return 0;
}

}  // namespace

/// Where the threads of this process wait for the lock of one file. Who is through has the lock
/// file too: it is opened once in a process, as closing any opening of it would unlock it.
struct WriteLock::Gate {
    Gate() = default;
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;
    ~Gate() { close(); }

    void close() {
        if (file >= 0) ::close(file);
        file = -1;
    }

    std::mutex mutex;  // guards `taken`
    std::condition_variable opened;
    bool taken = false;

    int file = -1;  // the lock file; stays open from the first time on
    dev_t device = 0;
    ino_t inode = 0;
};

WriteLock::WriteLock(std::string databaseFile)
    : databaseFile_(std::move(databaseFile)),
      lockFile_(databaseFile_ + "-lock"),
      gate_(databaseFile_) {}

WriteLock::~WriteLock() {
    release();
}

int WriteLock::acquire(Deadline deadline) {
    if (isHeld()) return 0;
    if (!enterGate(deadline)) return ETIMEDOUT;
    const int failure = lockFile(deadline);
    if (failure != 0) leaveGate();
    return failure;
}

void WriteLock::release() {
    if (!isHeld()) return;
    held_ = false;
    setLock(gate_->file, kWriter, F_UNLCK);
    leaveGate();
}

bool WriteLock::enterGate(Deadline deadline) {
    std::unique_lock<std::mutex> guard(gate_->mutex);
    if (!gate_->opened.wait_until(guard, deadline, [this] { return !gate_->taken; })) return false;
    gate_->taken = true;
    return true;
}

void WriteLock::leaveGate() {
    {
        const std::lock_guard<std::mutex> guard(gate_->mutex);
        gate_->taken = false;
    }
    gate_->opened.notify_one();
}

/// Locks the file against other processes. Without the turn, a process that writes time and again
/// would nearly always be back before another has noticed that the lock was free.
int WriteLock::lockFile(Deadline deadline) {
    if (!openLockFile()) return errno;
    int failure = waitForByte(gate_->file, kTurn, deadline);
    if (failure == 0) failure = waitForByte(gate_->file, kWriter, deadline);
    setLock(gate_->file, kTurn, F_UNLCK);
    held_ = failure == 0;
    return failure;
}

/// Opens the lock file unless it is open; one that was deleted or replaced locks nobody else out.
bool WriteLock::openLockFile() {
    struct stat status {};
    if (gate_->file >= 0 && ::stat(lockFile_.c_str(), &status) == 0 &&
        status.st_ino == gate_->inode && status.st_dev == gate_->device)
        return true;
    gate_->close();
    gate_->file = openOrCreate();
    if (gate_->file < 0 || ::fstat(gate_->file, &status) != 0) return false;
    gate_->device = status.st_dev;
    gate_->inode = status.st_ino;
    return true;
}

/// Opens the lock file. A new one takes after the database file, as SQLite's own companion files
/// do: what an administrator's program made must be open to the service's account too.
int WriteLock::openOrCreate() const {
    const int existing = ::open(lockFile_.c_str(), O_RDWR | O_CLOEXEC);
    if (existing >= 0 || errno != ENOENT) return existing;
    struct stat database {};
    if (::stat(databaseFile_.c_str(), &database) != 0) return -1;
    const int file =
        ::open(lockFile_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, database.st_mode & 0666);
    if (file < 0) return file;
    static_cast<void>(::fchmod(file, database.st_mode & 0666));
    if (::geteuid() == 0) {
        // Where the file cannot be given away it still locks for this account.
        [[maybe_unused]] const int given = ::fchown(file, database.st_uid, database.st_gid);
    }
    return file;
}

}  // namespace dbaccess::sqlite
