// The server dies, freezes and comes back.
#include "tests/fault/FaultTest.h"

#include <regex>
#include <sstream>

#include <atomic>
#include <map>

namespace dbaccess {
namespace {

TEST_F(FaultTest, RestartsBehindAnIdlePoolAreUnseen) {
    for (const std::string& host : {server().host(), server().socket()}) {
        for (const auto end : {&PrivateServer::stop, &PrivateServer::kill9}) {
            SCOPED_TRACE(host);
            const auto access = newAccess(host);
            ASSERT_TRUE(access->Initialize(4, 4, true, true));
            EXPECT_EQ(0, access->Execute(kDatabase, "SET @camera='gate'"));
            (server().*end)();
            server().start();
            expectAllWorks(*access);
            EXPECT_EQ("gate", query(*access, "select @camera as v"));
        }
    }
}

TEST_F(FaultTest, AReadWaitsForTheServerToComeBack) {
    const auto access = connected();
    std::thread reader([&] { EXPECT_EQ("x", query(*access, "select 'x' as v, sleep(1)")); });
    sleeper();
    server().kill9();
    std::this_thread::sleep_for(milliseconds(200));
    server().start();
    reader.join();
}

TEST_F(FaultTest, IdleSessionsEndedByTheServerAreReplaced) {
    admin("set global wait_timeout=1");
    const auto access = connected(4);
    admin("set global wait_timeout=28800");
    EXPECT_TRUE(becomes([&] { return openSessions() == "0"; }));
    expectAllWorks(*access);
    const auto old = sessions(*access, 4);
    EXPECT_EQ(4U, old.size());
    for (const std::string& id : old)
        admin("kill " + id);
    EXPECT_TRUE(becomes([&] { return openSessions() == "0"; }));
    expectAllWorks(*access);
    for (const std::string& id : sessions(*access, 4))
        EXPECT_EQ(0U, old.count(id));
}

TEST_F(FaultTest, WithoutReconnectLostConnectionsAreGone) {
    const auto access = connected(2, false);
    const auto ids = sessions(*access, 2);
    admin("kill " + *ids.begin());
    EXPECT_TRUE(becomes([&] { return openSessions() == "1"; }));
    EXPECT_EQ(*ids.rbegin(), query(*access, "select connection_id() as v"));
    admin("kill " + *ids.rbegin());
    EXPECT_TRUE(becomes([&] { return openSessions() == "0"; }));
    EXPECT_EQ(-2006, access->Execute(kDatabase, "insert into t(k) values('a')"));
    EXPECT_EQ("-2006", query(*access, "select k as v from t"));
    EXPECT_EQ("0", ask("select count(*) as v from t"));
}

TEST_F(FaultTest, SessionsKilledUnderAStatement) {
    const auto access = connected();
    const auto killed = [&](const std::function<void()>& statement) {
        std::thread killer([&] { admin("kill " + sleeper()); });
        statement();
        killer.join();
    };
    killed([&] { EXPECT_EQ("x", query(*access, "select 'x' as v, sleep(1)")); });

    // Before its commit a list has no effect: it runs again.
    killed([&] {
        std::deque<std::string> list{"insert into t(k) values('list')", "do sleep(1)",
                                     "insert into t(k) values('list')"};
        EXPECT_EQ(2, access->Update(kDatabase, list));
    });
    EXPECT_EQ("2", ask("select count(*) as v from t where k='list'"));

    killed([&] {
        EXPECT_EQ(-2013, access->Execute(kDatabase, "insert into t select 'write', sleep(1)"));
    });
    EXPECT_THAT(ask("select count(*) as v from t where k='write'"), testing::AnyOf("0", "1"));
    EXPECT_EQ(1, access->Execute(kDatabase, "insert into t(k) values('after')"));

    const auto fixed = connected(3, false);  // sends nothing again, though others are idle
    killed([&] { EXPECT_EQ("-2013", query(*fixed, "select 'x' as v, sleep(1)")); });
    killed([&] {
        std::deque<std::string> list{"insert into t(k) values('cut')", "do sleep(1)"};
        EXPECT_EQ(-2006, fixed->Update(kDatabase, list));  // certainly without effect
    });
    EXPECT_EQ("0", ask("select count(*) as v from t where k='cut'"));
}

TEST_F(FaultTest, ProceduresLeaveNothingToTheNextStatement) {
    admin(
        "create or replace procedure p() begin start transaction; "
        "insert into t(k) values('stray'); select 'first' as v; select 'second' as v; end");
    const auto access = connected(1, false);
    EXPECT_EQ("first", query(*access, "call p()"));
    EXPECT_EQ("", query(*access, "select k as v from t"));
    EXPECT_EQ(1, access->Execute(kDatabase, "insert into t(k) values('after')"));
    EXPECT_EQ("after", ask("select k as v from t"));
}

TEST_F(FaultTest, AListKilledAtItsCommitIsInDoubt) {
    const auto access = connected();
    const auto blocker = connect();
    std::thread killer([&] {
        sleeper();
        blocker->run("", Statement("flush tables with read lock"));  // holds commits up
        std::string id;
        EXPECT_TRUE(becomes([&] {
            id = ask("select id as v from information_schema.processlist where info='COMMIT'");
            return !id.empty();
        }));
        admin("kill " + id);
        std::this_thread::sleep_for(milliseconds(200));
        blocker->run("", Statement("unlock tables"));
    });
    std::deque<std::string> list{"insert into t(k) values('a')", "do sleep(1)"};
    EXPECT_EQ(-2013, access->Update(kDatabase, list));
    killer.join();
    EXPECT_THAT(ask("select count(*) as v from t"), testing::AnyOf("0", "1"));
}

/// What writers of unique keys were told, to be compared with what stands in the table.
class Ledger {
public:
    void add(const std::string& key, int answer) {
        const std::lock_guard<std::mutex> lock(mutex_);
        answers_[key] = answer;
        (answer == 1 ? done_ : failed_) += 1;
    }
    int done() const { return done_; }
    int failed() const { return failed_; }

    void compare(DataAccess& access) {
        std::map<std::string, unsigned int> rows;
        ResultSet* set = access.Query(kDatabase, "select k, count(*) as n from t group by k");
        ASSERT_NE(nullptr, set);
        for (std::string key; set->next(); rows[key] = set->getUInt("n"))
            set->getString("k", key);
        DataAccess::ReleaseResulitSet(set);
        for (const auto& [key, answer] : answers_) {
            SCOPED_TRACE(key + ": " + std::to_string(answer));
            if (answer == 1)
                EXPECT_EQ(1U, rows[key]);
            else if (answer == -2013)
                EXPECT_LE(rows[key], 1U);
            else if (answer == -2002 || answer == -2006 || answer == -1040)
                EXPECT_EQ(0U, rows[key]);
            else
                ADD_FAILURE() << "not a connection error";
        }
    }

private:
    std::mutex mutex_;
    std::map<std::string, int> answers_;
    std::atomic<int> done_{0};
    std::atomic<int> failed_{0};
};

/// How many failed statements the lines of a log tell of.
int failuresIn(const std::string& log) {
    const std::regex repeated(": repeated ([0-9]+) times in [0-9.]+ s");
    std::istringstream lines(log);
    int failures = 0;
    for (std::string line; std::getline(lines, line);) {
        std::smatch match;
        if (line.find(" DataAccess: ") == std::string::npos) continue;
        failures += std::regex_search(line, match, repeated) ? std::stoi(match[1]) : 1;
    }
    return failures;
}

TEST_F(FaultTest, NothingAcknowledgedIsLostAndNothingRunsTwice) {
    for (const auto end : {&PrivateServer::kill9, &PrivateServer::stop}) {
        SCOPED_TRACE(end == &PrivateServer::stop ? "stop" : "kill9");
        admin("delete from t");
        auto access = connected(4);
        testing::internal::CaptureStderr();
        ResetStats();
        Ledger ledger;
        std::atomic<bool> over{false};
        std::atomic<int> failedReads{0};
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 8; ++thread) {
            threads.emplace_back([&, thread] {
                for (int i = 0; !over; ++i) {
                    const std::string key = std::to_string(thread) + "-" + std::to_string(i);
                    const int answer =
                        access->Update(kDatabase, "insert into t(k) values('" + key + "')");
                    ledger.add(key, answer);
                    if (answer < 0) std::this_thread::sleep_for(milliseconds(5));
                }
            });
        }
        threads.emplace_back([&] {
            while (!over) {
                const std::string answer = query(*access, "select 'x' as v");
                if (answer == "x") continue;
                ++failedReads;
                EXPECT_THAT(answer, testing::AnyOf("-2002", "-2006", "-2013"));
                std::this_thread::sleep_for(milliseconds(5));
            }
        });
        EXPECT_TRUE(becomes([&] { return ledger.done() > 500; }));
        (server().*end)();
        EXPECT_TRUE(becomes([&] { return ledger.failed() > 20; }));
        server().start();
        const int before = ledger.done();
        EXPECT_TRUE(becomes([&] { return ledger.done() > before + 500; }));
        over = true;
        for (std::thread& thread : threads)
            thread.join();
        const int failed = ledger.failed() + failedReads;
        EXPECT_EQ(failed, StatOf(Stats(), "dbservice.client.operation.failed"));
        EXPECT_LE(4, StatOf(Stats(), "dbservice.client.connection.lost"));
        access.reset();  // which logs the last sums
        const std::string log = testing::internal::GetCapturedStderr();
        EXPECT_EQ(failed, failuresIn(log)) << log;
        EXPECT_GE(12, std::count(log.begin(), log.end(), '\n')) << log;
        EXPECT_THAT(log, testing::ContainsRegex("Server: 127.0.0.1:[0-9]+ is lost, waiting"));
        EXPECT_THAT(log,
                    testing::ContainsRegex("Server: 127.0.0.1:[0-9]+ is back after [0-9.]+ s"));
        ledger.compare(admin_);
    }
}

TEST_F(FaultTest, AFrozenServerHoldsNobodyForEver) {
    StatementRunner runner(connector());
    PoolSettings settings;
    settings.minConnections = 2;
    Error error;
    ASSERT_TRUE(runner.open(settings, error));
    inThreads(2, [&](int) { runner.run(kDatabase, Statement("select sleep(0.2)")); });
    std::thread reader;
    {
        const auto frozen = server().frozen();
        reader = std::thread([&] {  // ends when the server is back
            EXPECT_EQ("nonce", firstValue(runner.run(kDatabase, Statement("select 'nonce' as v"))));
        });
        const auto begin = Clock::now();
        const auto outcome = runner.run(kDatabase, Statement("insert into t(k) values('frozen')"));
        EXPECT_EQ(2013, outcome.error.number);
        EXPECT_GE(Clock::now() - begin, kShort.answer);
        EXPECT_LT(Clock::now() - begin, kShort.answer + milliseconds(500));
    }
    reader.join();
    EXPECT_EQ("own", firstValue(runner.run(kDatabase, Statement("select 'own' as v"))));
    // It was in doubt indeed: once awake the server runs what it had received.
    EXPECT_TRUE(becomes([&] { return ask("select count(*) as v from t") == "1"; }));
    std::this_thread::sleep_for(milliseconds(200));
    EXPECT_EQ("1", ask("select count(*) as v from t"));
}

TEST_F(FaultTest, TheNextServerOfAListTakesOver) {
    PrivateServer alive;
    alive.execute("set password = password('" + server().password() + "')");
    const auto port = std::to_string(alive.port());
    const auto expectConnect = [&](const std::string& host) {
        Error error;
        const auto connection = connector(host)->connect(TimePoint::max(), error);
        ASSERT_NE(nullptr, connection) << error.message;
        EXPECT_EQ(port, firstValue(connection->run("", Statement("select @@port as v"))));
    };
    const auto frozen = server().frozen();
    auto begin = Clock::now();
    expectConnect("127.0.0.1:1," + alive.host() + ":" + port);
    expectConnect("/nowhere/mysqld.sock," + alive.socket());
    EXPECT_LT(Clock::now() - begin, kShort.connect);

    begin = Clock::now();
    expectConnect(server().host() + "," + alive.host() + ":" + port);
    EXPECT_LT(Clock::now() - begin, kShort.connect + milliseconds(500));

    begin = Clock::now();
    Error error;
    EXPECT_EQ(nullptr, connector()->connect(TimePoint::max(), error));
    EXPECT_EQ(2002, error.number);  // nothing was sent, so nothing is in doubt
    EXPECT_LT(Clock::now() - begin, kShort.connect + milliseconds(500));
}

}  // namespace
}  // namespace dbaccess
