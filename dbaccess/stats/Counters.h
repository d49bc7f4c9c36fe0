#ifndef DBSERVICE_DBACCESS_STATS_COUNTERS_H
#define DBSERVICE_DBACCESS_STATS_COUNTERS_H

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>

namespace dbaccess {

/// A number that many threads change and few read; nothing else is ordered by it. It is a sum, of
/// which each thread changes a part: so that they do not fight for one cache line.
class Counter {
public:
    void add(std::int64_t amount = 1) {
        parts_[ownPart()].value.fetch_add(amount, std::memory_order_relaxed);
    }
    void add(std::chrono::nanoseconds time) { add(time.count()); }
    void clear() {
        for (Part& part : parts_)
            part.value.store(0, std::memory_order_relaxed);
    }
    std::int64_t get() const {
        std::int64_t sum = 0;
        for (const Part& part : parts_)
            sum += part.value.load(std::memory_order_relaxed);
        return sum;
    }

private:
    static constexpr unsigned int kParts = 8;
    struct alignas(64) Part {
        std::atomic<std::int64_t> value{0};
    };

    static unsigned int ownPart() {
        static std::atomic<unsigned int> threads{0};
        thread_local unsigned int part = kParts;
        if (part == kParts) part = threads++ % kParts;
        return part;
    }

    std::array<Part, kParts> parts_;
};

/// What `Stats` tells of the whole process, counted where it happens. Times in nanoseconds.
struct Counters {
    // As it is now:
    Counter open;
    Counter idle;
    Counter waiting;
    // Since the last reset:
    Counter acquired;
    Counter waitTime;
    Counter waitTimeouts;
    Counter opened;
    Counter lost;
    Counter failedOver;
    Counter statements;
    Counter statementTime;
    Counter failed;
    Counter inDoubt;
    Counter retried;
    Counter keptHits;
};

extern Counters counters;

/// A number of one object that is a part of one of the whole process.
class Part {
public:
    explicit Part(Counter& whole) : whole_(whole) {}
    Part(const Part&) = delete;
    Part& operator=(const Part&) = delete;
    ~Part() { *this = 0; }

    Part& operator=(std::size_t value) {
        whole_.add(static_cast<std::int64_t>(value) - static_cast<std::int64_t>(value_));
        value_ = static_cast<unsigned int>(value);
        return *this;
    }
    Part& operator++() { return *this = value_ + 1; }
    Part& operator--() { return *this = value_ - 1; }
    operator unsigned int() const { return value_; }

private:
    Counter& whole_;
    unsigned int value_ = 0;
};

/// Counts who waits, and for how long, while it lives.
class Waiting {
public:
    Waiting() { counters.waiting.add(); }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
    ~Waiting() {
        counters.waiting.add(-1);
        counters.waitTime.add(std::chrono::steady_clock::now() - begin_);
    }

private:
    const std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();
};

/// What a process that was forked off has inherited is its parent's.
void forgetParentsCounts();

}  // namespace dbaccess

#endif
