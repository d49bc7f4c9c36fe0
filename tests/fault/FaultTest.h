#ifndef TESTS_FAULT_FAULTTEST_H
#define TESTS_FAULT_FAULTTEST_H

#include <gmock/gmock.h>

#include <memory>
#include <mutex>
#include <set>
#include <string>

#include "dbaccess/DataAccess.h"
#include "dbaccess/Stats.h"
#include "tests/support/Threads.h"
#include "tests/support/engines/PrivateServer.h"
#include "tests/support/engines/ServerSessions.h"

namespace dbaccess {

inline const std::string kDatabase = "vms";

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

    static TestServer account(const std::string& host = server().host()) {
        return {host, server().port(), server().user(), server().password()};
    }
    static std::unique_ptr<Connector> connector(const std::string& host = server().host()) {
        return connectorTo(account(host));
    }
    static std::unique_ptr<Connection> connect() { return connectTo(account()); }

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

    std::string sleeper() { return sleeperOn(admin_, kDatabase); }

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
