#include "bench/Race.h"

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <future>
#include <stdexcept>

namespace bench {
namespace {

constexpr std::size_t kFewestRounds = 3;
constexpr std::size_t kMostRounds = 201;
constexpr double kWantedRounds = 11;
constexpr std::size_t kMemoryRounds = 3;
constexpr int kMostCalls = 1 << 16;

struct Sample {
    double wall = 0;
    double cpu = 0;
};

double secondsOf(clockid_t clock) {
    timespec time{};
    ::clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

double cpuOf(std::optional<clockid_t> server) {
    return secondsOf(CLOCK_PROCESS_CPUTIME_ID) + (server ? secondsOf(*server) : 0);
}

Sample timeOf(const Work& work, Contestant& contestant, int calls,
              std::optional<clockid_t> server) {
    work.stock(calls);
    const auto share = [&](int first) {
        for (int i = first; i < calls; i += work.threads)
            work.call(contestant, i);
    };
    const double cpu = cpuOf(server);
    const double wall = secondsOf(CLOCK_MONOTONIC);
    std::vector<std::future<void>> others;
    for (int thread = 1; thread < work.threads; ++thread)
        others.push_back(std::async(std::launch::async, share, thread));
    share(0);
    for (std::future<void>& other : others)
        other.get();
    return {secondsOf(CLOCK_MONOTONIC) - wall, cpuOf(server) - cpu};
}

/// So many that the first entrant takes a slice for them, about, or fewer where the others are so
/// slow that there would be too few rounds.
int callsFor(const Work& work, const std::vector<std::unique_ptr<Contestant>>& contestants,
             const Pace& pace) {
    int calls = work.threads;
    double slice = timeOf(work, *contestants[0], calls, {}).wall;
    if (slice > pace.slice) return calls;
    while (calls < kMostCalls && slice < pace.slice / 2) {
        calls *= 2;
        slice = timeOf(work, *contestants[0], calls, {}).wall;
    }
    double round = 0;
    for (const auto& contestant : contestants)
        round += timeOf(work, *contestant, calls, {}).wall;
    const double most = pace.total / kWantedRounds;
    if (round > most) calls = static_cast<int>(calls * most / round);
    return std::max(calls, work.threads);
}

/// A line of /proc/self/status, in bytes.
double memory(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        double kibibytes = 0;
        if (word == name + ":" && status >> kibibytes) return kibibytes * 1024;
    }
    return 0;
}

/// By how much a process grows at most that makes one call; one of its own, so that nobody else's
/// freed memory is there to be used again.
double growthOf(const Work& work, const Entrant& entrant) {
    int ends[2];
    if (::pipe(ends) != 0) throw std::runtime_error("no pipe");
    const pid_t process = ::fork();
    if (process == 0) {
        double growth = 0;
        try {
            ::malloc_trim(0);
            const auto contestant = entrant.make(entrant.place);
            std::ofstream("/proc/self/clear_refs") << "5";  // the peak begins anew
            const double before = memory("VmRSS");
            work.call(*contestant, 0);
            growth = memory("VmHWM") - before;
        } catch (const std::exception&) {
            growth = 0;
        }
        static_cast<void>(::write(ends[1], &growth, sizeof growth));
        ::_exit(0);
    }
    double growth = 0;
    if (::read(ends[0], &growth, sizeof growth) != sizeof growth) growth = 0;
    ::close(ends[0]);
    ::close(ends[1]);
    ::waitpid(process, nullptr, 0);
    if (growth <= 0) throw std::runtime_error(entrant.name + ": the memory could not be measured");
    return growth;
}

double quantile(std::vector<double> values, double part) {
    std::sort(values.begin(), values.end());
    const double place = part * static_cast<double>(values.size() - 1);
    const auto below = static_cast<std::size_t>(place);
    const std::size_t above = std::min(below + 1, values.size() - 1);
    return values[below] + (values[above] - values[below]) * (place - static_cast<double>(below));
}

Quartiles quartilesOf(const std::vector<double>& values) {
    return {quantile(values, 0.25), quantile(values, 0.5), quantile(values, 0.75)};
}

using Rounds = std::vector<std::vector<Sample>>;  // round by round, of each entrant

std::vector<Result> resultsOf(const Work& work, const Rounds& rounds, int calls) {
    std::vector<Result> results;
    for (std::size_t i = 0; i < work.entrants.size(); ++i) {
        std::vector<double> wall;
        std::vector<double> cpu;
        std::vector<double> absolute;
        for (const std::vector<Sample>& round : rounds) {
            wall.push_back(round[i].wall / round[0].wall);
            cpu.push_back(round[0].cpu > 0 ? round[i].cpu / round[0].cpu : 0);
            absolute.push_back(round[i].wall / calls);
        }
        results.push_back({work.entrants[i].name, quartilesOf(wall), quantile(cpu, 0.5),
                           quantile(absolute, 0.5), static_cast<int>(rounds.size())});
    }
    return results;
}

template <class Measure>
std::vector<Sample> roundOf(std::size_t number, std::size_t entrants, Measure measure) {
    std::vector<Sample> samples(entrants);
    for (std::size_t i = 0; i < entrants; ++i) {
        const std::size_t turn = (number + i) % entrants;
        samples[turn] = measure(turn);
    }
    return samples;
}

void compare(const Work& work, const std::vector<std::unique_ptr<Contestant>>& contestants) {
    std::vector<Digest> digests;
    for (const auto& contestant : contestants)
        digests.push_back(work.proof(*contestant));
    for (std::size_t i = 0; i < digests.size(); ++i) {
        if (digests[i].records() == 0)
            throw std::runtime_error(work.title + ": nothing to compare");
        if (!(digests[i] == digests[0]))
            throw std::runtime_error(work.title + ": " + work.entrants[i].name +
                                     " has other records than " + work.entrants[0].name);
    }
}

}  // namespace

std::vector<Result> race(const Work& work, const Pace& pace, std::optional<clockid_t> serverClock) {
    const std::size_t entrants = work.entrants.size();
    Rounds rounds;
    if (work.inMemory) {
        while (rounds.size() < kMemoryRounds)
            rounds.push_back(roundOf(rounds.size(), entrants, [&](std::size_t i) {
                return Sample{growthOf(work, work.entrants[i]), 0};
            }));
        return resultsOf(work, rounds, 1);
    }

    std::vector<std::unique_ptr<Contestant>> contestants;
    for (const Entrant& entrant : work.entrants) {
        Place place = entrant.place;
        place.connections = static_cast<unsigned int>(work.threads);
        contestants.push_back(entrant.make(place));
    }
    compare(work, contestants);
    const int calls = callsFor(work, contestants, pace);
    const double end = secondsOf(CLOCK_MONOTONIC) + pace.total;
    while (rounds.size() < kFewestRounds ||
           (rounds.size() < kMostRounds && secondsOf(CLOCK_MONOTONIC) < end)) {
        rounds.push_back(roundOf(rounds.size(), entrants, [&](std::size_t i) {
            return timeOf(work, *contestants[i], calls, serverClock);
        }));
    }
    work.finish();
    return resultsOf(work, rounds, calls);
}

}  // namespace bench
