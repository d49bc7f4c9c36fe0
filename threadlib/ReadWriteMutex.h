#ifndef DBSERVICE_THREADLIB_READWRITEMUTEX_H
#define DBSERVICE_THREADLIB_READWRITEMUTEX_H

#include <mutex>

#include "base/Export.h"

namespace ThreadLib {

/// A lock that one thread holds at a time; its readers' side, which nothing here uses, is left out.
/// Not recursive.
///
/// Threads: the thread that locked it unlocks it.
class DBSERVICE_API ReadWriteMutex {
public:
    ReadWriteMutex();
    ReadWriteMutex(const ReadWriteMutex&) = delete;
    ReadWriteMutex& operator=(const ReadWriteMutex&) = delete;
    ~ReadWriteMutex();  // NOLINT(performance-trivially-destructible): exported

    /// Waits until no one else holds the lock, then holds it.
    void LockWrite();

    /// Gives the lock back.
    void Unlock();

private:
    std::mutex mutex_;
};

}  // namespace ThreadLib

#endif
