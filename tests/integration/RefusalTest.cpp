// The server is there and refuses: locks, limits, refused logins, ended statements.
#include <gmock/gmock.h>

#include "tests/support/Threads.h"
#include "tests/support/engines/ServerSessions.h"

namespace dbaccess {
namespace {

class RefusalTest : public EngineTest {
protected:
    RefusalTest() { admin("create table t(k varchar(40), n int)"); }

    void admin(const std::string& statement) { expectOk(execute(statement)); }
    std::string ask(const std::string& text, const std::string& column = "v") {
        return ::query(access(), dbName(), text, column);
    }

    std::unique_ptr<DataAccess> connected(unsigned int connections = 1) {
        auto access = newAccess();
        EXPECT_TRUE(access->Initialize(connections, connections, true, true));
        return access;
    }
    std::string sleeper() { return sleeperOn(access(), dbName()); }
};

TEST_P(RefusalTest, WaitingForABusyConnectionEnds) {
    StatementRunner runner(connectorTo(testServer()));
    PoolSettings settings;
    settings.maxConnections = 1;
    settings.acquireTimeout = milliseconds(200);
    Error error;
    ASSERT_TRUE(runner.open(settings, error));
    std::thread holder(
        [&] { EXPECT_FALSE(runner.run(dbName(), Statement("select sleep(1)")).error); });
    sleeper();
    const auto begin = Clock::now();
    EXPECT_EQ(1040, runner.run(dbName(), Statement("select 1")).error.number);
    EXPECT_GE(Clock::now() - begin, settings.acquireTimeout);
    EXPECT_LT(Clock::now() - begin, settings.acquireTimeout + milliseconds(500));
    holder.join();
    EXPECT_FALSE(runner.run(dbName(), Statement("select 1")).error);
}

TEST_P(RefusalTest, AKilledQueryKeepsItsConnection) {
    const auto access = connected();
    const auto session = [&] { return ::query(*access, dbName(), "select connection_id() as v"); };
    const std::string before = session();
    for (int n = 1; n < 100; ++n)
        admin("insert into t(n) values(" + std::to_string(n) + ")");
    for (const char* text :
         {"select 1 as v from (select sleep(5)) x", "update t set n=sleep(5)",
          "select repeat('x', 9999) as v, sleep(if(n=90,5,0)) from t"}) {  // rows came
        std::thread killer([&] { admin("kill query " + sleeper()); });
        EXPECT_EQ("-1317", ::query(*access, dbName(), text)) << text;
        killer.join();
        EXPECT_EQ(before, session());
    }
    EXPECT_EQ("4950", ask("select sum(n) as v from t"));
}

TEST_P(RefusalTest, LockWaitsEnd) {
    admin("insert into t(k,n) values('a',1)");
    const auto holder = connectTo(testServer());
    holder->begin(dbName());
    holder->run(dbName(), Statement("update t set n=2"));

    StatementRunner runner(connectorTo(testServer()));
    Error error;
    ASSERT_TRUE(runner.open({}, error));
    const Statement session("select connection_id() as v");
    const std::string id = firstValue(runner.run(dbName(), session));
    const auto begin = Clock::now();
    EXPECT_EQ(1205, runner.run(dbName(), Statement("update t set n=3")).error.number);
    EXPECT_LT(Clock::now() - begin, kShort.answer);
    const std::string texts[] = {"insert into t(k) values('b')", "update t set n=3 where k='a'"};
    const std::vector<Statement> list(std::begin(texts), std::end(texts));
    EXPECT_EQ(1205, runner.run(dbName(), list).error.number);
    EXPECT_EQ("1", ask("select count(*) as v from t"));
    holder->rollback();
    EXPECT_EQ(2, runner.run(dbName(), list).affectedRows);
    EXPECT_EQ(id, firstValue(runner.run(dbName(), session)));
}

TEST_P(RefusalTest, DeadlockedListsAllTakeEffect) {
    admin("alter table t add primary key(k)");
    admin("insert into t(k,n) values('a',0),('b',0)");
    const auto deadlocks = [&] {
        return ask(
            "select count as v from information_schema.innodb_metrics "
            "where name='lock_deadlocks'");
    };
    const std::string before = deadlocks();
    const auto access = connected(2);
    inThreads(2, [&](int thread) {
        std::deque<std::string> list{"update t set n=n+1 where k='a'", "do sleep(0.3)",
                                     "update t set n=n+1 where k='b'"};
        if (thread == 1) std::swap(list.front(), list.back());
        EXPECT_EQ(2, access->Update(dbName(), list));
    });
    EXPECT_NE(before, deadlocks());
    EXPECT_EQ("2|2", ask("select n as v from t"));
}

TEST_P(RefusalTest, ARefusedLoginIsReportedAndNotTriedAgain) {
    const auto refusals = [&] {
        return std::stoi(ask("show global status like 'Aborted_connects'", "Value"));
    };
    const int before = refusals();
    const std::string late = dbName();
    admin("create user " + late + " identified by 'right'");
    admin("grant all on " + dbName() + ".* to " + late);
    DataAccess access(host() + "," + host(), port(), late, "secret");
    testing::internal::CaptureStderr();
    EXPECT_FALSE(access.Initialize(5, 10, true, true));
    EXPECT_EQ(1045, LastError().number);
    EXPECT_EQ(-1045, access.Execute(dbName(), "insert into t(k) values('a')"));
    EXPECT_TRUE(becomes([&] { return refusals() > before; }));  // counted after the answer
    EXPECT_EQ(before + 1, refusals());  // the second call came too soon to ask again
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(1, std::count(log.begin(), log.end(), '\n')) << log;  // the second repeats it
    EXPECT_THAT(log, testing::Not(testing::HasSubstr("secret")));

    admin("alter user " + late + " identified by 'secret'");
    EXPECT_TRUE(
        becomes([&] { return access.Execute(dbName(), "insert into t(k) values('a')") == 1; }));
    admin("drop user " + late);
}

TEST_P(RefusalTest, AFullServerRefusesAtOnceAndRecovers) {
    if (!testServer().isPrivate) GTEST_SKIP() << "sets what concerns the whole server";
    admin("set global max_connections=10");
    std::vector<std::unique_ptr<Connection>> others;
    while (auto other = connectTo(testServer()))
        others.push_back(std::move(other));
    EXPECT_GE(others.size(), 5U);
    const auto access = newAccess();
    const auto begin = Clock::now();
    EXPECT_FALSE(access->Initialize(2, 4, true, true));
    EXPECT_EQ(1040, LastError().number);
    EXPECT_EQ(-1040, access->Execute(dbName(), "insert into t(k) values('a')"));
    EXPECT_LT(Clock::now() - begin, seconds(1));
    others.clear();
    EXPECT_TRUE(
        becomes([&] { return access->Execute(dbName(), "insert into t(k) values('a')") == 1; }));
    EXPECT_EQ("1", ask("select count(*) as v from t"));
    admin("set global max_connections=151");
}

TEST_P(RefusalTest, AServersOwnPacketLimitCostsNoConnection) {
    if (!testServer().isPrivate) GTEST_SKIP() << "sets what concerns the whole server";
    constexpr std::size_t kLimit = 65536;
    admin("set global max_allowed_packet=" + std::to_string(kLimit));
    const auto access = connected();
    admin("set global max_allowed_packet=16777216");
    const std::string session = ::query(*access, dbName(), "select connection_id() as v");
    const auto ofSize = [](std::size_t size) {
        const std::string head = "insert into t(n) values(length('";
        return head + std::string(size - head.size() - 3, 'x') + "'))";
    };
    for (const std::size_t size : {kLimit - 1, kLimit, 2 * kLimit, 64 * kLimit}) {
        EXPECT_EQ(-1153, access->Execute(dbName(), ofSize(size)));
        std::deque<std::string> list{"insert into t(k) values('a')", ofSize(size)};
        EXPECT_EQ(-1153, access->Update(dbName(), list));
    }
    EXPECT_EQ(1, access->Execute(dbName(), ofSize(kLimit - 2)));
    EXPECT_EQ("1", ask("select count(*) as v from t"));
    EXPECT_EQ(session, ::query(*access, dbName(), "select connection_id() as v"));
}

TEST_P(RefusalTest, EachFailureIsLoggedOnceAndWithoutValues) {
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
        if (number == 1153 && !testServer().isPrivate) continue;  // its limit may be any
        SCOPED_TRACE(text.substr(0, 60));
        testing::internal::CaptureStderr();
        EXPECT_EQ(-number, (number == 2002 ? dead : *access).Execute(dbName(), text));
        const std::string log = testing::internal::GetCapturedStderr();
        EXPECT_EQ(1, std::count(log.begin(), log.end(), '\n')) << log;
        EXPECT_THAT(log, testing::HasSubstr(std::to_string(number)));
        EXPECT_THAT(log, testing::Not(testing::HasSubstr("secret")));
    }
}

TEST_P(RefusalTest, SlowStatementsAreLoggedWithoutValues) {
    DataAccess access(host(), port(), user(), password(), "slow-statement=50ms");
    testing::internal::CaptureStderr();
    const std::string text =
        "select sleep(0.06) as v,'secret' from t where k LIKE 'se\\'cret' -- secret";
    EXPECT_EQ(1, execute("insert into t(k) values('se\\'cret')"));
    EXPECT_EQ("0", ::query(access, dbName(), text));
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                testing::MatchesRegex("[^\n]* DataAccess: slow on '" + dbName() +
                                      "': select sleep\\(\\?\\) as v,\\? from t where k LIKE "
                                      "\\?\\.\\.\\.: [0-9.]+ ms\n"));
}

INSTANTIATE_TEST_SUITE_P(Engines, RefusalTest, testing::Values(Engine::Server), engineName);

}  // namespace
}  // namespace dbaccess
