#ifndef BENCH_SITE_H
#define BENCH_SITE_H

#include <ctime>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "bench/Contestant.h"
#include "dbaccess/DataAccess.h"
#include "tests/support/engines/PrivateServer.h"
#include "tests/support/engines/TemporaryDirectory.h"

namespace bench {

/// The n-th key, device, alarm and face: always the same, and unlike the others.
std::string keyOf(int number);
T_Device deviceOf(int number);
T_AlarmInfo alarmOf(int number);
T_FaceCapture faceOf(int number);

/// The alarms of one channel, level, method and time among those of `alarmOf`: one in 20,000.
T_SearchAlarmParam searchOf(int number, dbservice::T_Channel& channel);

/// An engine with databases to measure on, which go with the object.
/// Threads: one at a time.
class Site {
public:
    /// @param server  its place; without a host a private one is started, that writes each commit
    ///                to the disk.
    Site(dbaccess::Engine engine, Place server);
    Site(const Site&) = delete;
    Site& operator=(const Site&) = delete;
    ~Site();

    /// A database with all tables, and so many devices, alarms and faces of the first numbers in
    /// it; it is made when it is asked for the first time.
    /// @param indexed  false: without the indexes of events by channel and by time.
    Place database(const std::string& name, int devices, int events = 0, bool indexed = true);

    void execute(const Place& place, const std::string& statement);

    /// How many rows others see in a table.
    int count(const Place& place, const std::string& table);

    /// Counts the processor time of a server on this machine.
    std::optional<clockid_t> serverClock();

private:
    void connect();
    void fill(const Place& place, int devices, int events);

    Place place_;
    TemporaryDirectory directory_;
    std::unique_ptr<PrivateServer> server_;
    std::unique_ptr<dbaccess::DataAccess> access_;
    std::set<std::string> databases_;
};

}  // namespace bench

#endif
