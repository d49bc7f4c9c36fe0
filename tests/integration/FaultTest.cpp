// The access layer while its server dies, freezes, refuses and comes back.
#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <thread>

#include "dbaccess/DataAccess.h"
#include "dbaccess/HostText.h"
#include "dbaccess/StatementRunner.h"
#include "dbaccess/mariadb/MariaDbConnector.h"
#include "tests/support/engines/PrivateServer.h"

namespace dbaccess {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using Clock = std::chrono::steady_clock;
using Threads = std::vector<std::thread>;

const std::string kDatabase = "vms";
constexpr mariadb::Timeouts kShort{seconds(1), seconds(1), seconds(2)};

void join(Threads& threads) {
    for (std::thread& thread : threads)
        thread.join();
}

void inThreads(int count, const std::function<void(int)>& work) {
    Threads threads;
    for (int i = 0; i < count; ++i)
        threads.emplace_back(work, i);
    join(threads);
}

bool becomes(const std::function<bool()>& condition) {
    const auto giveUp = Clock::now() + seconds(10);
    while (!condition()) {
        if (Clock::now() > giveUp) return false;
        std::this_thread::sleep_for(milliseconds(5));
    }
    return true;
}

/// The column `v` of all rows, joined by "|"; the negated error number of a failed query.
std::string query(DataAccess& access, const std::string& text) {
    ResultSet* rows = access.Query(kDatabase, text);
    if (rows == nullptr) return std::to_string(-LastError().number);
    std::string all;
    for (std::string value; rows->next(); all += (all.empty() ? "" : "|") + value)
        rows->getString("v", value);
    DataAccess::ReleaseResulitSet(rows);
    return all;
}

std::string firstValue(Outcome outcome) {
    std::string value;
    if (outcome.rows && outcome.rows->next()) outcome.rows->getString("v", value);
    return value;
}

/// Stops the server's process for a while.
class Freeze {
public:
    explicit Freeze(PrivateServer& server) : server_(server) { server_.freeze(); }
    Freeze(const Freeze&) = delete;
    Freeze& operator=(const Freeze&) = delete;
    ~Freeze() { server_.thaw(); }

private:
    PrivateServer& server_;
};

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

    /// Writes and reads from more threads than there are connections, none of which may fail.
    void expectAllWorks(DataAccess& access) {
        admin("delete from t");
        inThreads(6, [&](int thread) {
            for (int i = 0; i < 5; ++i) {
                const std::string key = std::to_string(thread) + "-" + std::to_string(i);
                EXPECT_EQ(1, access.Insert(kDatabase, "insert into t(k) values('" + key + "')"));
                EXPECT_EQ(key, query(access, "select k as v from t where k='" + key + "'"));
            }
        });
        EXPECT_EQ("30", ask("select count(*) as v from t"));
    }

    DataAccess admin_;

private:
    static std::unique_ptr<PrivateServer> server_;
};

std::unique_ptr<PrivateServer> FaultTest::server_;

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
    const auto access = connected(4);
    const auto old = sessions(*access, 4);
    EXPECT_EQ(4U, old.size());
    for (const std::string& id : old)
        admin("kill " + id);
    std::this_thread::sleep_for(milliseconds(200));
    expectAllWorks(*access);
    for (const std::string& id : sessions(*access, 4))
        EXPECT_EQ(0U, old.count(id));

    admin("set global wait_timeout=1");
    const auto other = connected(4);
    admin("set global wait_timeout=28800");
    std::this_thread::sleep_for(milliseconds(1500));
    expectAllWorks(*other);
}

TEST_F(FaultTest, WithoutReconnectLostConnectionsAreGone) {
    const auto access = connected(2, false);
    const auto ids = sessions(*access, 2);
    admin("kill " + *ids.begin());
    std::this_thread::sleep_for(milliseconds(100));
    EXPECT_EQ(*ids.rbegin(), query(*access, "select connection_id() as v"));
    admin("kill " + *ids.rbegin());
    std::this_thread::sleep_for(milliseconds(100));
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

    const auto single = connected(1, false);
    killed([&] {
        std::deque<std::string> list{"insert into t(k) values('cut')", "do sleep(1)"};
        EXPECT_EQ(-2006, single->Update(kDatabase, list));  // certainly without effect
    });
    EXPECT_EQ("0", ask("select count(*) as v from t where k='cut'"));
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

TEST_F(FaultTest, NothingAcknowledgedIsLostAndNothingRunsTwice) {
    for (const auto end : {&PrivateServer::kill9, &PrivateServer::stop}) {
        SCOPED_TRACE(end == &PrivateServer::stop ? "stop" : "kill9");
        admin("delete from t");
        const auto access = connected(4);
        testing::internal::CaptureStderr();
        Ledger ledger;
        std::atomic<bool> over{false};
        std::atomic<int> failedReads{0};
        Threads threads;
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
        join(threads);
        const std::string log = testing::internal::GetCapturedStderr();
        EXPECT_EQ(ledger.failed() + failedReads, std::count(log.begin(), log.end(), '\n'));
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
        const Freeze frozen(server());
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

TEST_F(FaultTest, WaitingForABusyConnectionEnds) {
    StatementRunner runner(connector());
    PoolSettings settings;
    settings.maxConnections = 1;
    settings.acquireTimeout = milliseconds(200);
    Error error;
    ASSERT_TRUE(runner.open(settings, error));
    std::thread holder(
        [&] { EXPECT_FALSE(runner.run(kDatabase, Statement("select sleep(1)")).error); });
    sleeper();
    const auto begin = Clock::now();
    EXPECT_EQ(1040, runner.run(kDatabase, Statement("select 1")).error.number);
    EXPECT_GE(Clock::now() - begin, settings.acquireTimeout);
    EXPECT_LT(Clock::now() - begin, settings.acquireTimeout + milliseconds(500));
    holder.join();
    EXPECT_FALSE(runner.run(kDatabase, Statement("select 1")).error);
}

TEST_F(FaultTest, TheNextServerOfAListTakesOver) {
    PrivateServer alive;
    alive.execute("set password = password('" + server().password() + "')");
    const auto port = std::to_string(alive.port());
    const auto expectConnect = [&](const std::string& host) {
        Error error;
        const auto connection = connector(host)->connect(error);
        ASSERT_NE(nullptr, connection) << error.message;
        EXPECT_EQ(port, firstValue(connection->run("", Statement("select @@port as v"))));
    };
    const Freeze frozen(server());
    auto begin = Clock::now();
    expectConnect("127.0.0.1:1," + alive.host() + ":" + port);
    expectConnect("/nowhere/mysqld.sock," + alive.socket());
    EXPECT_LT(Clock::now() - begin, kShort.connect);

    begin = Clock::now();
    expectConnect(server().host() + "," + alive.host() + ":" + port);
    EXPECT_LT(Clock::now() - begin, kShort.connect + milliseconds(500));

    begin = Clock::now();
    Error error;
    EXPECT_EQ(nullptr, connector()->connect(error));
    EXPECT_EQ(2002, error.number);  // nothing was sent, so nothing is in doubt
    EXPECT_LT(Clock::now() - begin, kShort.connect + milliseconds(500));
}

TEST_F(FaultTest, AKilledQueryKeepsItsConnection) {
    const auto access = connected();
    const std::string session = query(*access, "select connection_id() as v");
    for (const char* text :
         {"select sleep(5) as v", "insert into t select 'x', sleep(5)",
          "select repeat('x', 9999) as v, sleep(if(seq=90,5,0)) from seq_1_to_99"}) {  // rows came
        std::thread killer([&] { admin("kill query " + sleeper()); });
        EXPECT_EQ("-1317", query(*access, text)) << text;
        killer.join();
        EXPECT_EQ(session, query(*access, "select connection_id() as v"));
    }
    EXPECT_EQ("0", ask("select count(*) as v from t"));
}

TEST_F(FaultTest, LockWaitsEnd) {
    admin("insert into t(k,n) values('a',1)");
    const auto holder = connect();
    holder->begin(kDatabase);
    holder->run(kDatabase, Statement("update t set n=2"));

    StatementRunner runner(connector());
    Error error;
    ASSERT_TRUE(runner.open({}, error));
    const Statement session("select connection_id() as v");
    const std::string id = firstValue(runner.run(kDatabase, session));
    const auto begin = Clock::now();
    EXPECT_EQ(1205, runner.run(kDatabase, Statement("update t set n=3")).error.number);
    EXPECT_LT(Clock::now() - begin, kShort.answer);
    const std::vector<Statement> list{Statement("insert into t(k) values('b')"),
                                      Statement("update t set n=3 where k='a'")};
    EXPECT_EQ(1205, runner.run(kDatabase, list).error.number);
    EXPECT_EQ("1", ask("select count(*) as v from t"));
    holder->rollback();
    EXPECT_EQ(2, runner.run(kDatabase, list).affectedRows);
    EXPECT_EQ(id, firstValue(runner.run(kDatabase, session)));
}

TEST_F(FaultTest, DeadlockedListsAllTakeEffect) {
    admin("alter table t add primary key(k)");
    admin("insert into t(k,n) values('a',0),('b',0)");
    const auto deadlocks = [&] {
        return ask(
            "select variable_value as v from information_schema.global_status "
            "where variable_name='Innodb_deadlocks'");
    };
    const std::string before = deadlocks();
    const auto access = connected(2);
    inThreads(2, [&](int thread) {
        std::deque<std::string> list{"update t set n=n+1 where k='a'", "do sleep(0.3)",
                                     "update t set n=n+1 where k='b'"};
        if (thread == 1) std::swap(list.front(), list.back());
        EXPECT_EQ(2, access->Update(kDatabase, list));
    });
    EXPECT_NE(before, deadlocks());
    EXPECT_EQ("2|2", ask("select n as v from t"));
}

TEST_F(FaultTest, ARefusedLoginIsReportedAndNotTriedAgain) {
    const auto refusals = [&] {
        return std::stoi(
            ask("select variable_value as v from information_schema.global_status "
                "where variable_name='Access_denied_errors'"));
    };
    const int before = refusals();
    admin("create user late identified by 'right'");
    admin("grant all on *.* to late");
    const std::string twice = server().host() + "," + server().host();
    DataAccess access(twice, server().port(), "late", "secret");
    testing::internal::CaptureStderr();
    EXPECT_FALSE(access.Initialize(5, 10, true, true));
    EXPECT_EQ(1045, LastError().number);
    EXPECT_EQ(-1045, access.Execute(kDatabase, "insert into t(k) values('a')"));
    EXPECT_EQ(before + 2, refusals());
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(2, std::count(log.begin(), log.end(), '\n')) << log;
    EXPECT_THAT(log, testing::Not(testing::HasSubstr("secret")));

    admin("set password for late = password('secret')");
    EXPECT_EQ(1, access.Execute(kDatabase, "insert into t(k) values('a')"));
    admin("drop user late");
}

TEST_F(FaultTest, AFullServerRefusesAtOnceAndRecovers) {
    admin("set global max_connections=10");
    std::vector<std::unique_ptr<Connection>> others;
    for (auto other = connect(); other; other = connect())
        others.push_back(std::move(other));
    EXPECT_GE(others.size(), 5U);
    const auto access = newAccess();
    const auto begin = Clock::now();
    EXPECT_FALSE(access->Initialize(2, 4, true, true));
    EXPECT_EQ(1040, LastError().number);
    EXPECT_EQ(-1040, access->Execute(kDatabase, "insert into t(k) values('a')"));
    EXPECT_LT(Clock::now() - begin, seconds(1));
    others.clear();
    EXPECT_TRUE(
        becomes([&] { return access->Execute(kDatabase, "insert into t(k) values('a')") == 1; }));
    EXPECT_EQ("1", ask("select count(*) as v from t"));
    admin("set global max_connections=151");
}

TEST_F(FaultTest, AServersOwnPacketLimitCostsNoConnection) {
    constexpr std::size_t kLimit = 65536;
    admin("set global max_allowed_packet=" + std::to_string(kLimit));
    const auto access = connected();
    admin("set global max_allowed_packet=16777216");
    const std::string session = query(*access, "select connection_id() as v");
    const auto ofSize = [](std::size_t size) {
        const std::string head = "insert into t(n) values(length('";
        return head + std::string(size - head.size() - 3, 'x') + "'))";
    };
    for (const std::size_t size : {kLimit - 1, kLimit, 2 * kLimit, 64 * kLimit}) {
        EXPECT_EQ(-1153, access->Execute(kDatabase, ofSize(size)));
        std::deque<std::string> list{"insert into t(k) values('a')", ofSize(size)};
        EXPECT_EQ(-1153, access->Update(kDatabase, list));
    }
    EXPECT_EQ(1, access->Execute(kDatabase, ofSize(kLimit - 2)));
    EXPECT_EQ("1", ask("select count(*) as v from t"));
    EXPECT_EQ(session, query(*access, "select connection_id() as v"));
}

TEST_F(FaultTest, EachFailureIsLoggedOnceAndWithoutValues) {
    admin("alter table t add primary key(k)");
    admin("insert into t(k) values('secret')");
    DataAccess dead("127.0.0.1", 1, "root", "secret");
    const auto access = connected();
    const std::pair<int, std::string> failures[] = {
        {1062, "insert into t(k) values('secret')"},
        {1064, "insert into t(k) values('secret)"},
        {1064, "secret 'secret'"},
        {1366, "update t set n='secret'"},
        {1406, "update t set k='" + std::string(1000, 'x') + "secret'"},
        {1146, "select 'secret' from nosuch"},
        {1153, "update t set k='secret" + std::string(16777216, 'x') + "'"},
        {1235, "set autocommit=0, @a='secret'"},
        {2002, "update t set k='secret'"},
    };
    for (const auto& [number, text] : failures) {
        SCOPED_TRACE(text.substr(0, 60));
        testing::internal::CaptureStderr();
        EXPECT_EQ(-number, (number == 2002 ? dead : *access).Execute(kDatabase, text));
        const std::string log = testing::internal::GetCapturedStderr();
        EXPECT_EQ(1, std::count(log.begin(), log.end(), '\n')) << log;
        EXPECT_THAT(log, testing::HasSubstr(std::to_string(number)));
        EXPECT_THAT(log, testing::Not(testing::HasSubstr("secret")));
    }
}

}  // namespace
}  // namespace dbaccess
