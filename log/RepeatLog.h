#ifndef DBSERVICE_LOG_REPEATLOG_H
#define DBSERVICE_LOG_REPEATLOG_H

#include <atomic>
#include <chrono>
#include <map>
#include <mutex>
#include <string>

/// Whether lines of level `kQzLogDebug` are written at all. Costs a load, after the first line.
bool logsDebug();

/// Writes lines that may come again and again: the first of its kind at once, what follows within a
/// while as one line that says how often and how long. That while is 10 seconds, and grows while
/// there are repetitions, up to 10 minutes; after one without any the next is a first one again.
///
/// Threads: any number at once.
class RepeatLog {
public:
    using Clock = std::chrono::steady_clock;

    explicit RepeatLog(const char* location) : location_(location) {}

    /// @param kind    what tells a line from others, and begins it
    /// @param detail  ends the first one
    void write(int level, const std::string& kind, const std::string& detail);

    /// Writes the sums that are due. To be called now and then: it costs a load as long as none is.
    void tick(Clock::time_point now) {
        if (now.time_since_epoch().count() >= due_.load(std::memory_order_relaxed)) writeDue(now);
    }

    /// Writes all sums there are.
    void flush() { writeDue(Clock::time_point::max()); }

private:
    struct Kind {
        int level = 0;
        unsigned int repeated = 0;
        Clock::time_point begin{};  // of what was not told yet
        Clock::time_point last{};
        Clock::time_point end{};
        Clock::duration length{};
    };

    void writeDue(Clock::time_point now);
    void writeSums(Clock::time_point now);

    const char* const location_;
    std::atomic<Clock::rep> due_{Clock::time_point::max().time_since_epoch().count()};
    std::mutex mutex_;  // guards all that follows
    std::map<std::string, Kind> kinds_;
};

#endif
