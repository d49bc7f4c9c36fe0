// Many threads on one access layer, on both engines.
#include <atomic>

#include "tests/fault/FaultTest.h"

namespace dbaccess {
namespace {

class PoolTest : public EngineTest {
protected:
    PoolTest() { expectOk(execute("create table t(k VARCHAR(40) PRIMARY KEY, n INT)")); }
};

TEST_P(PoolTest, MoreThreadsThanConnections) {
    auto shared = newAccess();
    ASSERT_TRUE(shared->Initialize(1, 3, true, true));
    writeInThreads(*shared, dbName(), 8, 40);
    EXPECT_EQ("320", query("select count(*) as v from t"));
}

TEST_P(PoolTest, FiguresAddUp) {
    const auto figure = [](const char* name, const char* state = "") {
        return StatOf(Stats(), name, state);
    };
    const double open = figure("db.client.connection.count", "idle");
    auto shared = newAccess();
    ASSERT_TRUE(shared->Initialize(2, 2, true, true));
    ResetStats();
    writeInThreads(*shared, dbName(), 6, 20);
    EXPECT_EQ(-1062, shared->Insert(dbName(), "insert into t(k) values('0-0')"));
    EXPECT_EQ(241, figure("dbservice.client.operation.count"));
    EXPECT_EQ(1, figure("dbservice.client.operation.failed"));
    EXPECT_EQ(241, figure("dbservice.client.connection.acquired"));
    EXPECT_LT(0, figure("db.client.connection.wait_time"));
    EXPECT_LT(figure("db.client.connection.wait_time"), figure("db.client.operation.duration"));
    EXPECT_LE(220, figure("dbservice.client.statement.kept_hits"));
    EXPECT_EQ(open + 2, figure("db.client.connection.count", "idle"));
    EXPECT_EQ(0, figure("db.client.connection.pending_requests"));
    shared.reset();
    EXPECT_EQ(open, figure("db.client.connection.count", "idle"));
}

TEST_P(PoolTest, ListsOfManyThreadsDoNotMix) {
    expectOk(execute("insert into t(k,n) values('a',0),('b',0)"));
    inThreads(6, [&](int) {
        for (int i = 0; i < 15; ++i) {
            std::deque<std::string> list{"update t set n=n+1 where k='a'",
                                         "update t set n=n-1 where k='b'"};
            EXPECT_EQ(2, access().Update(dbName(), list));
        }
    });
    EXPECT_EQ("90|-90", query("select n as v from t order by k"));
}

TEST_P(PoolTest, ErrorsBelongToTheirThread) {
    expectOk(execute("insert into t(k) values('a')"));
    EXPECT_EQ(-1062, execute("insert into t(k) values('a')"));
    inThreads(4, [&](int thread) {
        EXPECT_EQ(0, LastError().number);
        execute(thread % 2 == 0 ? "nonsense" : "select k from t");
        EXPECT_EQ(thread % 2 == 0 ? 1064 : 0, LastError().number);
    });
    EXPECT_EQ(1062, LastError().number);
}

TEST_P(PoolTest, BusyPoolAnswersAtOnceWhenItMayNotWait) {
    auto single = newAccess();
    ASSERT_TRUE(single->Initialize(1, 1, true, false));
    std::atomic<int> refused{0};
    std::atomic<int> done{0};
    inThreads(8, [&](int thread) {
        for (int i = 0; i < 20; ++i) {
            const std::string key = std::to_string(thread) + "-" + std::to_string(i);
            const int result = single->Execute(dbName(), "insert into t(k) values('" + key + "')");
            (result == -1040 ? refused : done) += 1;
            EXPECT_TRUE(result == 1 || result == -1040) << LastError().message;
        }
    });
    EXPECT_GT(refused, 0);
    EXPECT_EQ(std::to_string(done), query("select count(*) as v from t"));
}

TEST_P(PoolTest, SessionStatementsReachEveryConnection) {
    if (GetParam() == Engine::Embedded) {
        EXPECT_EQ(0, execute("SET @camera='gate'"));  // taken, without effect
        return;
    }
    auto shared = newAccess();
    ASSERT_TRUE(shared->Initialize(3, 7, true, true));
    const auto setAndRead = [&](const char* statement, int connections, const char* values) {
        expectOk(shared->Execute(dbName(), statement));
        inThreads(connections, [&](int) {
            EXPECT_EQ(values, ::query(*shared, dbName(),
                                      "select concat_ws(' ', @camera, @level) as v, sleep(0.2)"));
        });
    };
    setAndRead("SET @camera='gate'", 3, "gate");
    setAndRead("SET @level=7", 5, "gate 7");  // on old connections and on new ones
    setAndRead("SET @camera='door', @level=8", 7, "door 8");
}

TEST_P(PoolTest, AResultThatIsTooLargeIsAnError) {
    const std::string text(1000, 'x');
    std::string rows = "('0')";
    for (int i = 1; i < 16; ++i)
        rows += ",('" + std::to_string(i) + "')";
    expectOk(execute("insert into t(k) values" + rows));
    DataAccess small(host(), port(), user(), password(), "largest-result=8K");
    ASSERT_TRUE(small.Initialize(1, 1, true, true));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ("-3170", ::query(small, dbName(), "select '" + text + "' as v from t"));
        EXPECT_EQ("16", ::query(small, dbName(), "select count(*) as v from t"));
    }
}

INSTANTIATE_TEST_SUITE_P(Engines, PoolTest, kEngines, engineName);

}  // namespace
}  // namespace dbaccess
