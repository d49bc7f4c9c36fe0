// How far one server goes: a call in a loop on so many threads, with the rate and the times that it
// takes. What docs/scale.md says is measured with it, on a database filled by dbservicectl's seed.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <functional>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

#include "dbservice/Convenience.h"

using namespace dbservice;

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

std::atomic<bool> g_stopped{false};

T_AlarmInfo newAlarm() {
    const Time now = std::chrono::system_clock::now();
    T_AlarmInfo alarm;
    alarm.Guid = newGuid();
    alarm.ChannelGuid = "0195b7a0-5a5c-4b3e-9d53-7b6f1f0a3c11";
    alarm.DeviceGuid = "0195b7a0-5a5c-4b3e-9d53-7b6f1f0a3c12";
    alarm.AlarmLevel = 3;
    alarm.BeginTime = timeText(now);
    alarm.EndTime = timeText(now + std::chrono::seconds(10));
    alarm.AlarmContent = "Motion";
    alarm.AlarmSource = "camera";
    return alarm;
}

/// What a thread does again and again; false ends the run as failed.
const std::map<std::string, std::function<bool(DBService&)>> kWorks{
    {"store", [](DBService& service) { return storeAlarm(service, newAlarm()) == 0; }},
    {"login",
     [](DBService& service) {
         service.Login("operator", "secret");
         return dbaccess::LastError().number == 0;
     }},
    {"list",
     [](DBService& service) {
         const Channels all = channels(service);
         return all.result().ok() && !all.empty();
     }},
};

int run(int argc, char** argv) {
    CLI::App app("Measures calls of one kind");
    DB_CONNECTION_PROPERTY settings;
    std::string work;
    unsigned int threads = 1;
    int seconds = 10;
    double rate = 0;
    app.add_option("host", settings.host)->required();
    app.add_option("database", settings.dbName)->required();
    app.add_option("work", work, "store, login or list")->required()->check(CLI::IsMember(kWorks));
    app.add_option("--user", settings.user);
    app.add_option("--port", settings.port);
    app.add_option("--threads", threads)->check(CLI::Range(1, 1000));
    app.add_option("--seconds", seconds);
    app.add_option("--rate", rate, "Calls a second and thread; 0: one behind the other");
    CLI11_PARSE(app, argc, argv);
    settings.accessParamA = settings.accessParamB = threads;
    std::signal(SIGINT, [](int) { g_stopped = true; });  // ends it before its time
    if (DBService::Initialize(settings) != 1) return 1;

    std::mutex mutex;
    std::vector<double> times;
    std::atomic<int> failures{0};
    const Clock::time_point begin = Clock::now();
    const Clock::time_point end = begin + std::chrono::seconds(seconds);
    std::vector<std::thread> running;
    for (unsigned int i = 0; i < threads; ++i)
        running.emplace_back([&] {
            std::vector<double> own;
            Clock::time_point due = begin;
            for (;;) {
                const Clock::time_point called = Clock::now();
                if (called >= end || g_stopped) break;
                if (!kWorks.at(work)(*DBService::GetDBServiceObject())) ++failures;
                own.push_back(Milliseconds(Clock::now() - called).count());
                if (rate <= 0) continue;
                due += std::chrono::duration_cast<Clock::duration>(
                    std::chrono::duration<double>(1 / rate));
                std::this_thread::sleep_until(due);
            }
            const std::lock_guard<std::mutex> lock(mutex);
            times.insert(times.end(), own.begin(), own.end());
        });
    for (std::thread& thread : running)
        thread.join();
    const double passed = std::chrono::duration<double>(Clock::now() - begin).count();
    DBService::Cleanup();

    if (times.empty()) return 1;
    std::sort(times.begin(), times.end());
    const auto quantile = [&](double part) {
        return times[static_cast<std::size_t>(part * static_cast<double>(times.size() - 1))];
    };
    std::printf("%s, %u threads: %.0f/s, ms p50 %.2f p99 %.2f p99.9 %.2f max %.1f, %d failed\n",
                work.c_str(), threads, static_cast<double>(times.size()) / passed, quantile(0.5),
                quantile(0.99), quantile(0.999), times.back(), failures.load());
    return failures == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
