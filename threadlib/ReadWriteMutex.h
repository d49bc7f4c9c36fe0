#ifndef DBSERVICE_THREADLIB_READWRITEMUTEX_H
#define DBSERVICE_THREADLIB_READWRITEMUTEX_H

#include <memory>

#include "base/Export.h"

namespace ThreadLib {

/// A lock that many readers or one writer hold. Not recursive.
/// Threads: the thread that locked it unlocks it.
class DBSERVICE_API ReadWriteMutex {
public:
    ReadWriteMutex();
    ReadWriteMutex(const ReadWriteMutex&) = delete;
    ReadWriteMutex& operator=(const ReadWriteMutex&) = delete;
    ~ReadWriteMutex();

    /// Waits until no one else holds the lock, then holds it alone.
    void LockWrite();

    /// Gives the lock back.
    void Unlock();

private:
    struct Mutex;  // std::shared_mutex, which callers' C++11 does not know
    std::unique_ptr<Mutex> mutex_;
};

}  // namespace ThreadLib

#endif
