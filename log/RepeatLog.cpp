#include "log/RepeatLog.h"

#include <algorithm>
#include <cstdio>

#include "log/Log.h"

namespace {

constexpr std::chrono::seconds kFirstWhile{10};
constexpr std::chrono::minutes kLongestWhile{10};
constexpr int kGrowth = 6;

// Kinds that are remembered at a time; a program has a few dozen.
constexpr std::size_t kMostKinds = 256;

}  // namespace

void RepeatLog::write(int level, const std::string& kind, const std::string& detail) {
    const std::lock_guard<std::mutex> lock(mutex_);
    const Clock::time_point now = Clock::now();
    writeSums(kinds_.size() < kMostKinds ? now : Clock::time_point::max());
    const auto [place, isNew] = kinds_.try_emplace(kind);
    Kind& known = place->second;
    if (isNew) {
        known.level = level;
        known.begin = now;
        known.length = kFirstWhile;
        known.end = now + known.length;
        Qz_Write_Log(level, location_, (kind + detail).c_str());
    } else {
        ++known.repeated;
        known.last = now;
    }
    due_ = std::min(due_.load(), known.end.time_since_epoch().count());
}

void RepeatLog::writeDue(Clock::time_point now) {
    const std::lock_guard<std::mutex> lock(mutex_);
    writeSums(now);
}

/// With the mutex held. Forgets all kinds when `now` is the end of time.
void RepeatLog::writeSums(Clock::time_point now) {
    Clock::time_point due = Clock::time_point::max();
    for (auto place = kinds_.begin(); place != kinds_.end();) {
        Kind& known = place->second;
        const bool over = known.end <= now;
        if (over && known.repeated != 0) {
            char sum[80];
            const std::chrono::duration<double> time = known.last - known.begin;
            std::snprintf(sum, sizeof sum, ": repeated %u times in %.1f s", known.repeated,
                          time.count());
            Qz_Write_Log(known.level, location_, (place->first + sum).c_str());
            known.repeated = 0;
            known.begin = known.last;
            known.length = std::min<Clock::duration>(known.length * kGrowth, kLongestWhile);
            known.end = known.last + known.length;
        } else if (over) {
            place = kinds_.erase(place);
            continue;
        }
        due = std::min(due, known.end);
        ++place;
    }
    if (now == Clock::time_point::max()) kinds_.clear();
    due_ = due.time_since_epoch().count();
}
