// The server is there and refuses: locks, limits, refused logins, ended statements.
#include "tests/fault/FaultTest.h"

namespace dbaccess {
namespace {

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
    const std::string texts[] = {"insert into t(k) values('b')", "update t set n=3 where k='a'"};
    const std::vector<Statement> list(std::begin(texts), std::end(texts));
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
