#ifndef TESTS_FAULT_FAULTTEST_H
#define TESTS_FAULT_FAULTTEST_H

#include <gmock/gmock.h>

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "dbaccess/DataAccess.h"
#include "dbaccess/mariadb/MariaDbConnector.h"
#include "dbaccess/pool/HostText.h"
#include "dbaccess/pool/StatementRunner.h"
#include "tests/support/Threads.h"
#include "tests/support/engines/EngineTest.h"
#include "tests/support/engines/PrivateServer.h"

namespace dbaccess {

using std::chrono::milliseconds;
using std::chrono::seconds;
using Clock = std::chrono::steady_clock;

inline const std::string kDatabase = "vms";
constexpr Timeouts kShort{seconds(1), seconds(1), seconds(2)};

/// Waits until the condition holds, 10 s at most.
inline bool becomes(const std::function<bool()>& condition) {
    const auto giveUp = Clock::now() + seconds(10);
    while (!condition()) {
        if (Clock::now() > giveUp) return false;
        std::this_thread::sleep_for(milliseconds(5));
    }
    return true;
}

inline std::string query(DataAccess& access, const std::string& text) {
    return ::query(access, kDatabase, text);
}

/// Each thread writes rows and reads them back, which may not fail.
inline void writeInThreads(DataAccess& access, const std::string& dbName, int threads, int rows) {
    inThreads(threads, [&](int thread) {
        for (int i = 0; i < rows; ++i) {
            const std::string key = std::to_string(thread) + "-" + std::to_string(i);
            EXPECT_EQ(1, access.Insert(dbName, "insert into t(k) values('" + key + "')"));
            EXPECT_EQ(key, ::query(access, dbName, "select k as v from t where k='" + key + "'"));
        }
    });
}

inline std::string firstValue(Outcome outcome) {
    std::string value;
    if (outcome.rows && outcome.rows->next()) outcome.rows->getString("v", value);
    return value;
}

/// The access layer and a server of its own, whose life the test has in its hands.
class FaultTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        server_ = std::make_unique<PrivateServer>();
        server_->execute("create database " + kDatabase);
    }
    static void TearDownTestSuite() { server_.reset(); }

    FaultTest() : admin_(server().socket(), 0, server().user(), server().password()) {
        EXPECT_TRUE(admin_.Initialize(1, 1, true, true));
        admin("drop table if exists t");
        // No key: a row that is written twice stands there twice.
        admin("create table t(k VARCHAR(40), n INT) ENGINE=InnoDB");
    }

    static PrivateServer& server() { return *server_; }

    void admin(const std::string& statement) {
        EXPECT_LE(0, admin_.Execute(kDatabase, statement)) << statement << LastError().message;
    }
    std::string ask(const std::string& text) { return query(admin_, text); }

    std::unique_ptr<DataAccess> newAccess(const std::string& host = server().host()) {
        return std::make_unique<DataAccess>(host, server().port(), server().user(),
                                            server().password());
    }
    std::unique_ptr<DataAccess> connected(unsigned int connections = 1, bool reconnect = true) {
        auto access = newAccess();
        EXPECT_TRUE(access->Initialize(connections, connections, reconnect, true));
        return access;
    }

    static std::unique_ptr<Connector> connector(const std::string& host = "") {
        const HostText text = parseHost(host.empty() ? server().host() : host, server().port());
        return mariadb::makeConnector(text.servers, server().user(), server().password(), kShort);
    }
    static std::unique_ptr<Connection> connect() {
        Error error;
        return connector()->connect(error);
    }

    /// Sessions of the server, but for that of `ask`.
    std::string openSessions() {
        return ask("select count(*)-1 as v from information_schema.processlist where user='" +
                   server().user() + "'");
    }

    /// The ids of the server's sessions behind all connections of a pool of this size.
    static std::set<std::string> sessions(DataAccess& access, int connections) {
        std::mutex mutex;
        std::set<std::string> ids;
        inThreads(connections, [&](int) {
            const auto id = query(access, "select connection_id() as v, sleep(0.2)");
            const std::lock_guard<std::mutex> lock(mutex);
            ids.insert(id);
        });
        return ids;
    }

    /// The id of the session that runs a sleep(), once there is one.
    std::string sleeper() {
        std::string id;
        EXPECT_TRUE(becomes([&] {
            id = ask("select id as v from information_schema.processlist where state='User sleep'");
            return !id.empty();
        }));
        return id;
    }

    /// From more threads than there are connections.
    void expectAllWorks(DataAccess& access) {
        admin("delete from t");
        writeInThreads(access, kDatabase, 6, 5);
        EXPECT_EQ("30", ask("select count(*) as v from t"));
    }

    DataAccess admin_;

private:
    inline static std::unique_ptr<PrivateServer> server_;
};

}  // namespace dbaccess

#endif
