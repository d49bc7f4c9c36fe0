#include "tools/dbservicectl/Progress.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cstdio>
#include <utility>

namespace dbservicectl {

Progress::Progress(std::string doing, std::uint64_t total)
    : doing_(std::move(doing)), total_(total), terminal_(::isatty(STDERR_FILENO) == 1) {
    at(0);
}

Progress::~Progress() {
    if (terminal_) std::fputs("\r\x1b[K", stderr);
}

void Progress::at(std::uint64_t done) {
    constexpr auto kPause = std::chrono::milliseconds(200);
    const auto now = Clock::now();
    if (!terminal_ || now < next_) return;
    next_ = now + kPause;
    std::string line = fmt::format("\r\x1b[K{}: {}", doing_, done);
    if (total_ != 0) line += fmt::format(" of {} ({} %)", total_, done * 100 / total_);
    const std::chrono::duration<double> passed = now - begin_;
    if (total_ > done && done != 0 && passed.count() > 2)
        line += fmt::format(", {:.0f} s left", passed.count() * static_cast<double>(total_ - done) /
                                                   static_cast<double>(done));
    std::fputs(line.c_str(), stderr);
}

}  // namespace dbservicectl
