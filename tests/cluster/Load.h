#ifndef TESTS_CLUSTER_LOAD_H
#define TESTS_CLUSTER_LOAD_H

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <deque>
#include <map>
#include <mutex>
#include <sstream>
#include <vector>

#include "tests/cluster/Cluster.h"
#include "tests/support/engines/EngineTest.h"

/// Six callers that write into the table `t`, one row or a list of two in turns, and read back what
/// was acknowledged. A ledger has what they were told. The access layer must outlive it.
class Load {
public:
    explicit Load(dbaccess::DataAccess& access) : access_(access) {
        for (int i = 0; i < kCallers; ++i)
            callers_.emplace_back([this, i] { call(i); });
    }
    Load(const Load&) = delete;
    Load& operator=(const Load&) = delete;
    ~Load() { halt(); }

    /// Ends the callers, compares the ledger with the tables of all nodes, prints the figures,
    /// and expects that callers noticed nothing but writes in doubt and a pause.
    /// @param longestPause  seconds without an acknowledged write.
    void finish(const std::string& name, Cluster& cluster, double longestPause);

private:
    static constexpr int kCallers = 6;
    using Clock = std::chrono::steady_clock;
    struct Call {
        std::string key;
        bool read;
        int rows;    // as many have the key
        int answer;  // of a write the layer's, of a read the rows that it saw or the negated error
        Clock::time_point end;
    };

    static double seconds(Clock::duration time) {
        return std::chrono::duration<double>(time).count();
    }
    int write(const std::string& key, int rows) {
        const std::string insert = "insert into t(k) values('" + key + "')";
        if (rows == 1) return static_cast<int>(access_.Insert(kDatabase, insert));
        std::deque<std::string> list{insert, insert};
        return access_.Update(kDatabase, list);
    }
    int read(const std::string& key) {
        return std::stoi(
            query(access_, kDatabase, "select count(*) as v from t where k='" + key + "'"));
    }
    void note(Call call) {
        const std::lock_guard<std::mutex> lock(mutex_);
        ledger_.push_back(std::move(call));
    }
    void call(int number) {
        for (int i = 0; !halted_; ++i) {
            const int rows = 1 + i % 2;
            const std::string key = std::to_string(number) + "-" + std::to_string(i);
            const int written = write(key, rows);
            note({key, false, rows, written, Clock::now()});
            if (written > 0) note({key, true, rows, read(key), Clock::now()});
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    void halt() {
        halted_ = true;
        for (std::thread& caller : callers_)
            caller.join();
        callers_.clear();
    }

    /// How many rows of a node's table have a key.
    static std::map<std::string, int> tableOf(Node& node) {
        std::istringstream keys(
            node.execute("set statement wsrep_sync_wait=1, group_concat_max_len=100000000 for "
                         "select group_concat(k) from " +
                         kDatabase + ".t"));
        std::map<std::string, int> table;
        for (std::string key; std::getline(keys, key, ',');)
            ++table[key];
        return table;
    }

    dbaccess::DataAccess& access_;
    const Clock::time_point start_ = Clock::now();
    std::mutex mutex_;
    std::vector<Call> ledger_;
    std::atomic<bool> halted_{false};
    std::vector<std::thread> callers_;
};

inline void Load::finish(const std::string& name, Cluster& cluster, double longestPause) {
    halt();
    cluster.awaitSynced();
    std::map<std::string, int> figures;
    double pause = 0;
    std::vector<Clock::time_point> acknowledged{start_};
    for (const Call& call : ledger_) {
        const std::string verb = call.read ? "read" : "write";
        ++figures[verb + "s"];
        if (call.answer < 0) ++figures[verb + std::to_string(call.answer)];
        if (call.read && call.answer >= 0 && call.answer != call.rows) ++figures["stale"];
        if (!call.read && call.answer > 0) acknowledged.push_back(call.end);
    }
    std::sort(acknowledged.begin(), acknowledged.end());
    for (std::size_t i = 1; i < acknowledged.size(); ++i)
        pause = std::max(pause, seconds(acknowledged[i] - acknowledged[i - 1]));
    for (std::size_t i = 0; i < Cluster::kNodes; ++i) {
        auto table = tableOf(cluster.node(i));
        for (const Call& call : ledger_) {
            const int there = table[call.key];
            if (there > call.rows) ++figures["twice"];
            if (there == 1 && call.rows == 2) ++figures["half lists"];
            if (there == 0 && call.answer > 0) ++figures["missing"];
            if (there > 0 && !call.read && call.answer < 0 && call.answer != -2013)
                ++figures["failed and there"];
        }
    }
    std::printf("%s:", name.c_str());
    for (const auto& [what, count] : figures)
        std::printf(" %s %d,", what.c_str(), count);
    std::printf(" longest pause %.1f s\n", pause);
    EXPECT_LE(1000, figures["reads"]);
    for (const char* right : {"reads", "writes", "write-2013"})
        figures.erase(right);
    EXPECT_THAT(figures, testing::IsEmpty());
    EXPECT_LE(pause, longestPause);
}

#endif
