// Many threads on both engines for a long time: memory, descriptors and rates stay level.
// Usage: soak_tests [SECONDS]    600 when not given
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <fstream>
#include <thread>
#include <vector>

#include "dbaccess/DataAccess.h"
#include "dbaccess/LastError.h"
#include "dbservice/DBService.h"
#include "schema/Schema.h"
#include "tests/support/engines/PrivateServer.h"

namespace {

constexpr int kThreads = 16;  // on each engine
constexpr int kSamples = 40;
constexpr int kLargeRows = 2000;
const std::string kDatabase = "soak";

std::atomic<bool> halted{false};
std::atomic<int> wrongAnswers{0};

void expect(bool right, const char* what) {
    if (right || ++wrongAnswers > 10) return;
    std::printf("wrong answer: %s (%d)\n", what, dbaccess::LastError().number);
}

/// One engine, and how many calls were made on it.
struct Site {
    Site(const std::string& host, unsigned int port, const std::string& password)
        : access(host, port, PrivateServer::user(), password) {
        expect(access.Initialize(2, 8, true, true), "Initialize");
        expect(schema::Create(access, kDatabase) == 0, "schema");
        run(0, "create table t(k VARCHAR(40) PRIMARY KEY, n INT)");
        run(0, "create table large(k INT PRIMARY KEY, v VARCHAR(250))");
        std::string rows = "(0,'')";
        for (int i = 1; i < kLargeRows; ++i)
            rows += ",(" + std::to_string(i) + ",'" + std::string(200, 'v') + "')";
        run(kLargeRows, "insert into large(k,v) values" + rows);
        for (int i = 0; i < kThreads; ++i)
            run(1, "insert into t(k,n) values('" + std::to_string(i) + "',0)");
    }

    void run(int answer, const std::string& statement) {
        expect(access.Execute(kDatabase, statement) == answer, statement.substr(0, 80).c_str());
        ++calls;
    }
    void read(int rows, const std::string& statement) {
        dbaccess::ResultSet* const set = access.Query(kDatabase, statement);
        expect((set == nullptr ? -1 : set->rowsCount()) == rows, statement.c_str());
        dbaccess::DataAccess::ReleaseResulitSet(set);
        ++calls;
    }
    void runList(int answer, std::deque<std::string> list) {
        expect(access.Update(kDatabase, list) == answer, "list");
        ++calls;
    }

    dbaccess::DataAccess access;
    std::atomic<int> calls{0};
};

/// Some of everything.
void work(Site& site, int thread, int round) {
    const std::string name = std::to_string(thread) + "-" + std::to_string(round);
    const std::string insert = "insert into t(k,n) values('" + name + "',1)";
    const std::string count = "update t set n=n+1 where k='" + std::to_string(thread) + "'";
    site.run(1, insert);
    site.run(-1062, insert);
    site.read(1, "select n from t where k='" + name + "'");
    // More forms than are kept prepared.
    site.read(1, "select n as c" + std::to_string(round % 500) + " from t where k='" + name + "'");
    site.runList(2, {count, "update t set n=0 where k='" + name + "'"});
    site.runList(-1062, {count, insert});
    site.run(-1064, "nonsense " + name);
    site.read(-1, "select v from missing");
    site.run(1, "delete from t where k='" + name + "'");
    if (round % 20 == 0) site.read(kLargeRows, "select k,v from large order by v,k");
}

/// The same by the service, of which a process has one.
void workOfService(Site& site, int thread, int round) {
    auto& service = *dbservice::DBService::GetDBServiceObject();
    dbservice::T_ServerInfo server;
    server.Guid = std::to_string(thread) + "-" + std::to_string(round);
    expect(service.InsertServerInfo(server) == 0, "InsertServerInfo");
    auto* const list = service.QueryServerInfo(server.Guid);
    expect(list != nullptr && list->count == 1, "QueryServerInfo");
    service.ReleaseServerInfo(list);
    expect(service.Login("nobody", "none") == -1, "Login");
    expect(service.DeleteServerInfo(server.Guid) == 1, "DeleteServerInfo");
    site.calls += 4;
}

double residentMebibytes() {
    std::ifstream statm("/proc/self/statm");
    double pages = 0;
    statm >> pages >> pages;  // the second is what is resident
    return pages * static_cast<double>(::sysconf(_SC_PAGESIZE)) / (1 << 20);
}

double descriptors() {
    const std::filesystem::directory_iterator entries("/proc/self/fd");
    return static_cast<double>(std::distance(begin(entries), end(entries)));
}

/// Prints a sample a line. @return  whether the last quarter of them is as good as the second, but
/// for what a busy machine and the allocator make of it.
bool staysLevel(Site& server, Site& embedded, double seconds) {
    constexpr double kMoreMebibytes = 4;
    constexpr double kMoreDescriptors = 2;
    constexpr double kRateLeft = 0.7;
    constexpr const char* kLine = "%8.0f %8.1f %12.0f %16.0f %16.0f\n";
    std::printf(" seconds      MiB  descriptors   server calls/s embedded calls/s\n");
    const std::chrono::duration<double> step(seconds / kSamples);
    std::array<std::array<double, 4>, 4> quarters{};  // means
    for (int i = 0; i < kSamples; ++i) {
        std::this_thread::sleep_for(step);
        const std::array<double, 4> sample{residentMebibytes(), descriptors(),
                                           server.calls.exchange(0) / step.count(),
                                           embedded.calls.exchange(0) / step.count()};
        std::printf(kLine, step.count() * (i + 1), sample[0], sample[1], sample[2], sample[3]);
        std::fflush(stdout);
        for (std::size_t column = 0; column < sample.size(); ++column)
            quarters[static_cast<std::size_t>(i * 4 / kSamples)][column] +=
                sample[column] * 4 / kSamples;
    }
    const auto& early = quarters[1];
    const auto& late = quarters[3];
    std::printf("means of the second and of the last quarter:\n");
    std::printf(kLine, seconds / 2, early[0], early[1], early[2], early[3]);
    std::printf(kLine, seconds, late[0], late[1], late[2], late[3]);
    return late[0] <= early[0] + kMoreMebibytes && late[1] <= early[1] + kMoreDescriptors &&
           late[2] >= early[2] * kRateLeft && late[3] >= early[3] * kRateLeft;
}

bool passes(double seconds) {
    PrivateServer privateServer;
    privateServer.execute("create database " + kDatabase);
    const TemporaryDirectory directory;
    const auto port = privateServer.port();
    const std::string& password = privateServer.password();
    Site server(PrivateServer::host(), port, password);
    Site embedded("sqlite:" + directory.path(), 0, "");
    expect(dbservice::DBService::Initialize({PrivateServer::host(), static_cast<int>(port),
                                             PrivateServer::user(), password, kDatabase, 2, 8, true,
                                             true}) == 1,
           "DBService");
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] {
            for (int round = 0; !halted; ++round) {
                work(server, i, round);
                workOfService(server, i, round);
            }
        });
        threads.emplace_back([&, i] {
            for (int round = 0; !halted; ++round)
                work(embedded, i, round);
        });
    }
    const bool level = staysLevel(server, embedded, seconds);
    halted = true;
    for (std::thread& thread : threads)
        thread.join();
    dbservice::DBService::Cleanup();
    std::printf("%s, %d wrong answers\n", level ? "level" : "NOT LEVEL", wrongAnswers.load());
    return level && wrongAnswers == 0;
}

}  // namespace

int main(int argc, char** argv) try {
    constexpr double kTenMinutes = 600;
    const double seconds = argc > 1 ? std::strtod(argv[1], nullptr) : kTenMinutes;
    if (seconds >= 1) return passes(seconds) ? 0 : 1;
    std::fputs("usage: soak_tests [SECONDS]\n", stderr);
    return 2;
} catch (const std::exception& exception) {
    std::fprintf(stderr, "%s\n", exception.what());
    return 1;
}
