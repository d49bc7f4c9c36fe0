#ifndef TESTS_SUPPORT_ENGINES_SERVERSESSIONS_H
#define TESTS_SUPPORT_ENGINES_SERVERSESSIONS_H

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "dbaccess/mariadb/MariaDbConnector.h"
#include "dbaccess/pool/HostText.h"
#include "dbaccess/pool/StatementRunner.h"
#include "tests/support/engines/EngineTest.h"

// What tests of the sessions on a server need.

namespace dbaccess {

using std::chrono::milliseconds;
using std::chrono::seconds;
using Clock = std::chrono::steady_clock;

constexpr Timeouts kShort{seconds(1), seconds(1), seconds(2), seconds(4)};

inline Settings shortLimits() {
    Settings settings;
    settings.timeouts = kShort;
    return settings;
}

/// Makes sessions with short limits.
inline std::unique_ptr<Connector> connectorTo(const TestServer& server) {
    return mariadb::makeConnector(parseHost(server.host, server.port).servers, server.user,
                                  server.password, shortLimits());
}

inline std::unique_ptr<Connection> connectTo(const TestServer& server) {
    Error error;
    return connectorTo(server)->connect(TimePoint::max(), error);
}

/// Waits until the condition holds, 10 s at most.
inline bool becomes(const std::function<bool()>& condition) {
    const auto giveUp = Clock::now() + seconds(10);
    while (!condition()) {
        if (Clock::now() > giveUp) return false;
        std::this_thread::sleep_for(milliseconds(5));
    }
    return true;
}

/// The id of the session on the database that runs a sleep(), once there is one.
inline std::string sleeperOn(DataAccess& access, const std::string& dbName) {
    const std::string ofSleepers =
        "select id as v from information_schema.processlist where state='User sleep' and db='";
    std::string id;
    EXPECT_TRUE(becomes([&] {
        id = ::query(access, dbName, ofSleepers + dbName + "'");
        return !id.empty();
    }));
    return id;
}

inline std::string firstValue(Outcome outcome) {
    std::string value;
    if (outcome.rows && outcome.rows->next()) outcome.rows->getString("v", value);
    return value;
}

}  // namespace dbaccess

#endif
