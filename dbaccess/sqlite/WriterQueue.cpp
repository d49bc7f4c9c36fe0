#include "dbaccess/sqlite/WriterQueue.h"

#include <algorithm>
#include <utility>

namespace dbaccess::sqlite {

bool WriterQueue::enter(Write& write) {
    std::unique_lock<std::mutex> lock(mutex_);
    waiting_.push_back(&write);
    while (write.state != Write::State::Done) {
        const bool next = write.state == Write::State::Waiting && waiting_.front() == &write;
        if (next && !led_) return led_ = true;
        if (write.state == Write::State::Begun) {  // it ends within the limits of the leader
            changed_.wait(lock);
        } else if (changed_.wait_until(lock, write.deadline) == std::cv_status::timeout &&
                   write.state == Write::State::Waiting) {
            remove(write);
            changed_.notify_all();  // another one is the first now
            return false;
        }
    }
    return false;
}

std::vector<WriterQueue::Write*> WriterQueue::begin() {
    const std::lock_guard<std::mutex> guard(mutex_);
    for (Write* write : waiting_)
        write->state = Write::State::Begun;
    return std::exchange(waiting_, {});
}

void WriterQueue::finish(const std::vector<Write*>& begun) {
    {
        const std::lock_guard<std::mutex> guard(mutex_);
        for (Write* write : begun)
            write->state = Write::State::Done;
        led_ = false;
    }
    changed_.notify_all();
}

void WriterQueue::giveUp(Write& write) {
    {
        const std::lock_guard<std::mutex> guard(mutex_);
        remove(write);
        led_ = false;
    }
    changed_.notify_all();
}

void WriterQueue::remove(const Write& write) {
    waiting_.erase(std::find(waiting_.begin(), waiting_.end(), &write));
}

}  // namespace dbaccess::sqlite
