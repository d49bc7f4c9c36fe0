#ifndef DBSERVICECTL_PROGRESS_H
#define DBSERVICECTL_PROGRESS_H

#include <chrono>
#include <cstdint>
#include <string>

namespace dbservicectl {

/// How far long work is, on one line of the terminal at standard error; nothing when that is none.
class Progress {
public:
    /// @param doing  as "Copying alarminfo".
    /// @param total  0 when it is not known.
    explicit Progress(std::string doing, std::uint64_t total = 0);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();  ///< clears the line

    /// Shown a few times a second.
    void at(std::uint64_t done);

private:
    using Clock = std::chrono::steady_clock;

    std::string doing_;
    std::uint64_t total_;
    bool terminal_;
    Clock::time_point begin_ = Clock::now();
    Clock::time_point next_;
};

}  // namespace dbservicectl

#endif
