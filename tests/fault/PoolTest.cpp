// Many threads on one access layer, on both engines.
#include <gmock/gmock.h>

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

#include "dbaccess/DataAccess.h"
#include "tests/support/engines/EngineTest.h"

namespace dbaccess {
namespace {

void inThreads(int count, const std::function<void(int)>& work) {
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i)
        threads.emplace_back(work, i);
    for (std::thread& thread : threads)
        thread.join();
}

class PoolTest : public EngineTest {
protected:
    PoolTest() {
        expectOk(access().Execute(dbName(), "create table t(k VARCHAR(40) PRIMARY KEY, n INT)"));
    }

    int count(const std::string& condition = "") {
        ResultSet* rows = access().Query(dbName(), "select count(*) as n from t" + condition);
        int result = -1;
        if (rows != nullptr && rows->next()) rows->getInt("n", &result);
        DataAccess::ReleaseResulitSet(rows);
        return result;
    }
};

TEST_P(PoolTest, MoreThreadsThanConnections) {
    auto shared = newAccess();
    ASSERT_TRUE(shared->Initialize(1, 3, true, true));
    std::atomic<int> failures{0};
    inThreads(8, [&](int thread) {
        for (int i = 0; i < 40; ++i) {
            const std::string key = std::to_string(thread) + "-" + std::to_string(i);
            if (shared->Insert(dbName(), "insert into t(k,n) values('" + key + "',1)") != 1)
                ++failures;
            ResultSet* rows = shared->Query(dbName(), "select k from t where k='" + key + "'");
            std::string found;
            if (rows != nullptr && rows->next()) rows->getString("k", found);
            if (found != key) ++failures;
            DataAccess::ReleaseResulitSet(rows);
        }
    });
    EXPECT_EQ(0, failures);
    EXPECT_EQ(320, count());
}

TEST_P(PoolTest, ListsOfManyThreadsDoNotMix) {
    expectOk(access().Execute(dbName(), "insert into t(k,n) values('a',0),('b',0)"));
    inThreads(6, [&](int) {
        for (int i = 0; i < 15; ++i) {
            std::deque<std::string> list{"update t set n=n+1 where k='a'",
                                         "update t set n=n-1 where k='b'"};
            EXPECT_EQ(2, access().Update(dbName(), list));
        }
    });
    EXPECT_EQ(1, count(" where k='a' and n=90"));
    EXPECT_EQ(1, count(" where k='b' and n=-90"));
}

TEST_P(PoolTest, ErrorsBelongToTheirThread) {
    expectOk(access().Execute(dbName(), "insert into t(k) values('a')"));
    EXPECT_EQ(-1062, access().Execute(dbName(), "insert into t(k) values('a')"));
    inThreads(4, [&](int thread) {
        EXPECT_EQ(0, LastError().number);
        access().Execute(dbName(), thread % 2 == 0 ? "nonsense" : "select k from t");
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
    EXPECT_EQ(done, count());
}

TEST_P(PoolTest, SessionStatementsReachEveryConnection) {
    if (GetParam() == Engine::Embedded) {
        EXPECT_EQ(0, access().Execute(dbName(), "SET @camera='gate'"));  // taken, without effect
        return;
    }
    auto shared = newAccess();
    ASSERT_TRUE(shared->Initialize(3, 6, true, true));
    expectOk(shared->Execute(dbName(), "SET @camera='gate'"));
    expectOk(shared->Execute(dbName(), "SET @camera='door', @level=7"));
    std::atomic<int> right{0};
    inThreads(6, [&](int) {
        for (int i = 0; i < 10; ++i) {
            ResultSet* rows =
                shared->Query(dbName(), "select @camera as c, @level as n, sleep(0.01)");
            std::string camera;
            if (rows != nullptr && rows->next() && rows->getString("c", camera) &&
                camera == "door" && rows->getUInt("n") == 7) {
                ++right;
            }
            DataAccess::ReleaseResulitSet(rows);
        }
    });
    EXPECT_EQ(60, right);
}

INSTANTIATE_TEST_SUITE_P(Engines, PoolTest, kEngines, engineName);

}  // namespace
}  // namespace dbaccess
