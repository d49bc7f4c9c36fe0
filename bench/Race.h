#ifndef BENCH_RACE_H
#define BENCH_RACE_H

#include <ctime>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "bench/Contestant.h"

namespace bench {

struct Entrant {
    std::string name;
    std::unique_ptr<Contestant> (*make)(const Place&);
    Place place;
};

/// Work that all entrants do; the first of them is what the others are compared with.
struct Work {
    std::string family;  ///< as "list"
    int size;            ///< of rows, threads or a batch: what the family's work grows with
    std::string title;
    std::vector<Entrant> entrants;
    int threads = 1;
    bool inMemory = false;  ///< the growth of the process counts, not the time

    /// A checksum of what a contestant reads or has written.
    std::function<Digest(Contestant&)> proof = {};
    /// Prepares so many calls, outside the measured time.
    std::function<void(int calls)> stock = [](int) {};
    /// One of those calls; from several threads at once.
    std::function<void(Contestant&, int call)> call = {};
    /// Throws when the calls of all rounds have not left what they should.
    std::function<void()> finish = [] {};
};

struct Quartiles {
    double low = 0;
    double median = 0;
    double high = 0;
};

/// An entrant's figures over those of the first one in the same round.
struct Result {
    std::string name;
    Quartiles wall;  ///< of the time, or of the memory
    double cpu = 0;  ///< median of the processor time, of this process and the server
    double absolute =
        0;  ///< median seconds for a call, or bytes: for the machine of that hour only
    int rounds = 0;
};

struct Pace {
    double slice = 0.03;  ///< seconds that the first entrant works in one round, about
    double total = 6;     ///< seconds for all rounds, unless these are too few
};

/// Lets all entrants work in turns, in an order that changes from round to round.
/// Throws std::runtime_error when their checksums differ.
std::vector<Result> race(const Work& work, const Pace& pace, std::optional<clockid_t> serverClock);

}  // namespace bench

#endif
