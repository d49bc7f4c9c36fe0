// Nodes of a real cluster fail under callers whose pool has all of them in its host list.
#include <set>

#include "dbaccess/LastError.h"
#include "dbservice/Convenience.h"
#include "schema/Schema.h"
#include "tests/cluster/Load.h"
#include "tests/support/Threads.h"

namespace {

using namespace dbservice;
using namespace std::chrono_literals;
using testing::ElementsAre;

// The nodes wait for 6 seconds until they take one of them for lost.
constexpr double kLossOfANode = 7.5;
// Who leaves and comes back in an orderly way holds the others up for 0.5 to 3.5 seconds.
constexpr double kRestart = 5;

constexpr int kMinConnections = 4;

void sleepSeconds(int seconds) {
    std::this_thread::sleep_for(std::chrono::seconds(seconds));
}

class ClusterTest : public testing::Test {
protected:
    static void SetUpTestSuite() { cluster_ = std::make_unique<Cluster>(); }
    static void TearDownTestSuite() { cluster_.reset(); }

    ClusterTest() {
        cluster().awaitSynced();
        // No unique key on k: a row that is written twice stands there twice.
        first().execute("create or replace table " + kDatabase +
                        ".t(number BIGINT AUTO_INCREMENT PRIMARY KEY, k VARCHAR(40), KEY(k))");
    }

    static Cluster& cluster() { return *cluster_; }
    /// The one that the host list names first.
    static Node& first() { return cluster().node(0); }

    static std::unique_ptr<dbaccess::DataAccess> pool() {
        auto access =
            std::make_unique<dbaccess::DataAccess>(cluster().hosts(), 0, kUser, first().password());
        EXPECT_TRUE(access->Initialize(kMinConnections, 10, true, true))
            << dbaccess::LastError().message;
        return access;
    }
    static int insert(dbaccess::DataAccess& access, const std::string& key) {
        return static_cast<int>(access.Insert(kDatabase, "insert into t(k) values('" + key + "')"));
    }

    /// The names of the nodes that the connections are on.
    static std::set<std::string> nodesOf(dbaccess::DataAccess& access) {
        std::mutex mutex;
        std::set<std::string> names;
        inThreads(8, [&](int) {
            const auto name = query(access, kDatabase, "select @@wsrep_node_name as v, sleep(0.2)");
            const std::lock_guard<std::mutex> lock(mutex);
            names.insert(name);
        });
        return names;
    }
    /// All are on one node that is not the first.
    static void expectMoved(dbaccess::DataAccess& access) {
        EXPECT_THAT(nodesOf(access), ElementsAre(testing::AnyOf("n1", "n2")));
    }
    /// All of the minimum are on the first node; its question whether they are is one more session.
    static bool isBack() { return first().number("Threads_connected") > kMinConnections; }

    /// Callers write while the first node has a fault, and some seconds after it.
    static void expectUnhurt(const std::string& name, const std::function<Node::Fault()>& strike) {
        const auto access = pool();
        Load load(*access);
        sleepSeconds(2);
        Node::Fault fault = strike();
        sleepSeconds(12);
        expectMoved(*access);
        fault.reset();
        sleepSeconds(4);
        load.finish(name, cluster(), kLossOfANode);
    }

    /// Twenty writes reach a node that takes them while the first does not, which is not asked each
    /// time: from a pool that was there before the fault, and from a new one.
    static void expectTwentyWrites(const std::string& name,
                                   const std::function<Node::Fault()>& strike) {
        const auto old = pool();
        const Node::Fault fault = strike();
        for (const char* const which : {"old", "new"}) {
            const int before = first().number("Connections");
            const auto fresh = *which == 'n' ? pool() : nullptr;
            int written = 0;
            for (int i = 0; i < 20; ++i)
                written += insert(fresh ? *fresh : *old, which) == 1;
            const int connects = first().number("Connections") - before - 1;
            std::printf("%s, %s pool: %d of 20 writes, %d connects\n", name.c_str(), which, written,
                        connects);
            EXPECT_EQ(20, written) << dbaccess::LastError().number;
            EXPECT_LE(connects, 10);
        }
    }

private:
    inline static std::unique_ptr<Cluster> cluster_;
};

TEST_F(ClusterTest, OwnNodeCutOff) {
    expectUnhurt("own node cut off", [] { return first().isolated(); });
}

TEST_F(ClusterTest, OwnNodeFrozen) {
    expectUnhurt("own node frozen", [] { return first().frozen(); });
}

TEST_F(ClusterTest, OwnNodeKilled) {
    expectUnhurt("own node killed", [] { return first().killed(); });
}

/// Writers whose doubt is settled are told done or not done, and all nodes agree with it, when the
/// node that they work on is cut off under them.
TEST_F(ClusterTest, SettledWritesLeaveNoDoubt) {
    EXPECT_EQ(0, schema::Create(*pool(), kDatabase));
    DBService::Initialize({cluster().hosts(), 0, kUser, first().password(), kDatabase,
                           kMinConnections, 10, true, true});
    DBService& service = *DBService::GetDBServiceObject();
    std::atomic<bool> over{false};
    std::atomic<int> doubts{0};
    std::mutex mutex;
    std::set<std::string> done;
    int notDone = 0;
    const auto insert = [&](DBService& to, const T_ServerInfo* server, int /*one*/) {
        const int answer = to.InsertServerInfo(*server);
        doubts += isInDoubt(answer);
        return answer;
    };
    std::thread writers([&] {
        inThreads(6, [&](int) {
            while (!over) {
                T_ServerInfo server;
                server.Guid = newGuid();
                const Result answer = insertSettled(service, insert, &server, 1, 60s);
                EXPECT_FALSE(isInDoubt(answer));
                const std::lock_guard<std::mutex> lock(mutex);
                answer.ok() ? static_cast<void>(done.insert(server.Guid))
                            : static_cast<void>(++notDone);
            }
        });
    });
    sleepSeconds(2);
    Node::Fault cutOff = first().isolated();
    sleepSeconds(12);
    cutOff.reset();
    cluster().awaitSynced();
    over = true;
    writers.join();
    DBService::Cleanup();
    std::printf("settled: %zu done, %d not done, %d had been in doubt\n", done.size(), notDone,
                doubts.load());
    EXPECT_LE(1, doubts);
    for (std::size_t i = 0; i < Cluster::kNodes; ++i) {
        std::istringstream keys(cluster().node(i).execute(
            "set statement wsrep_sync_wait=1, group_concat_max_len=100000000 for "
            "select group_concat(Guid) from " +
            kDatabase + ".serverinfo"));
        std::set<std::string> there;
        for (std::string key; std::getline(keys, key, ',');)
            there.insert(key);
        EXPECT_EQ(done, there);
    }
}

TEST_F(ClusterTest, RollingRestart) {
    const auto access = pool();
    Load load(*access);
    for (std::size_t i = 0; i < Cluster::kNodes; ++i) {
        sleepSeconds(1);
        cluster().node(i).stop();
        cluster().awaitSynced();
    }
    sleepSeconds(1);
    load.finish("rolling restart", cluster(), kRestart);
}

TEST_F(ClusterTest, PoolMovesAsAWholeAndReturnsWhenIdle) {
    const auto access = pool();
    EXPECT_THAT(nodesOf(*access), ElementsAre("n0"));
    Load load(*access);
    sleepSeconds(1);
    first().stop();
    sleepSeconds(2);
    expectMoved(*access);
    cluster().awaitSynced();
    sleepSeconds(5);
    expectMoved(*access);  // not back in the middle of load
    load.finish("failover", cluster(), kLossOfANode);
    EXPECT_TRUE(becomes(10, isBack));
    EXPECT_THAT(nodesOf(*access), ElementsAre("n0"));
}

TEST_F(ClusterTest, NodeThatFlapsIsNotReturnedToEachTime) {
    const auto access = pool();
    constexpr int kTimes = 5;
    int returns = 0;
    for (int i = 0; i < kTimes; ++i) {
        Node::Fault fault = first().readOnly();
        EXPECT_EQ(1, insert(*access, "flap"));
        expectMoved(*access);
        fault.reset();
        sleepSeconds(11);
        returns += isBack();
    }
    std::printf("a node that flapped %d times: %d returns\n", kTimes, returns);
    EXPECT_LE(1, returns);
    EXPECT_LE(returns, kTimes - 2);
}

TEST_F(ClusterTest, FirstNodeReadOnly) {
    expectTwentyWrites("read-only", [] { return first().readOnly(); });
}

TEST_F(ClusterTest, FirstNodeWithoutQuorum) {
    expectTwentyWrites("without a quorum", [] {
        auto fault = first().isolated();
        EXPECT_TRUE(becomes(20, [] { return first().status("wsrep_ready") == "OFF"; }));
        return fault;
    });
}

TEST_F(ClusterTest, FirstNodeOutOfService) {
    expectTwentyWrites("out of service", [] { return first().rejecting(); });
}

}  // namespace
