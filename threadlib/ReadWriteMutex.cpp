#include "threadlib/ReadWriteMutex.h"

#include <shared_mutex>

namespace ThreadLib {

struct ReadWriteMutex::Mutex {
    std::shared_mutex lock;
};

ReadWriteMutex::ReadWriteMutex() : mutex_(new Mutex) {}
ReadWriteMutex::~ReadWriteMutex() = default;

void ReadWriteMutex::LockWrite() {
    mutex_->lock.lock();
}
void ReadWriteMutex::Unlock() {
    mutex_->lock.unlock();
}

}  // namespace ThreadLib
