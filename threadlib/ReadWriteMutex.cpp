#include "threadlib/ReadWriteMutex.h"

namespace ThreadLib {

ReadWriteMutex::ReadWriteMutex() = default;
ReadWriteMutex::~ReadWriteMutex() = default;

void ReadWriteMutex::LockWrite() {
    mutex_.lock();
}

void ReadWriteMutex::Unlock() {
    mutex_.unlock();
}

}  // namespace ThreadLib
