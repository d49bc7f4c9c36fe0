#ifndef TESTS_CLUSTER_CLUSTER_H
#define TESTS_CLUSTER_CLUSTER_H

#include <algorithm>
#include <array>
#include <chrono>
#include <fstream>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/engines/PrivateServer.h"

inline const std::string kDatabase = "vms";
inline const std::string kUser = "caller";  // has no rights on settings

/// Waits until the condition holds, as many seconds at most. @return  whether it does.
inline bool becomes(int seconds, const std::function<bool()>& condition) {
    const auto giveUp = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > giveUp) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return true;
}

/// A server that is a node of a cluster. What is done to it lasts as long as the result lives.
class Node : public PrivateServer {
public:
    using PrivateServer::PrivateServer;
    using Fault = std::shared_ptr<void>;

    static std::string address(unsigned int port) { return host() + ":" + std::to_string(port); }

    /// A status value, which a node without a quorum tells, too.
    std::string status(const std::string& name) {
        return execute("show global status like '" + name + "'");
    }
    int number(const std::string& name) { return std::stoi(status(name)); }

    /// It hears and is heard by no other node: its clients stay, and after some seconds it knows
    /// that it has no quorum.
    [[nodiscard]] Fault isolated() {
        return setting("wsrep_provider_options='gmcast.isolate=1'",
                       "wsrep_provider_options='gmcast.isolate=0'");
    }
    /// Only an account with more rights than `kUser` writes.
    [[nodiscard]] Fault readOnly() { return setting("read_only=1", "read_only=0"); }
    /// Statements on tables are refused with 1047, as by a node that is taken out of service; its
    /// state is that of a healthy one.
    [[nodiscard]] Fault rejecting() {
        return setting("wsrep_reject_queries=ALL", "wsrep_reject_queries=NONE");
    }
    [[nodiscard]] Fault killed() {
        kill9();
        return Fault(this, [](Node* node) { node->recover(); });
    }

private:
    Fault setting(const std::string& on, const std::string& off) {
        execute("set global " + on);
        return Fault(this, [off](Node* node) { node->execute("set global " + off); });
    }

    /// What was killed has to read from its data how far they go.
    void recover() {
        std::string position;
        try {
            start({"--wsrep-recover"});  // logs it and ends
        } catch (const std::runtime_error& exit) {
            const std::string log = exit.what();
            const std::string mark = "Recovered position: ";
            position = log.substr(log.rfind(mark) + mark.size());
        }
        start({"--wsrep-start-position=" + position.substr(0, position.find('\n'))});
    }
};

/// Three nodes on the loopback interface, with the cluster software's own time limits.
class Cluster {
public:
    static constexpr std::size_t kNodes = 3;

    Cluster() {
        ::setenv("PATH", (std::string(SOURCE_DIR "/tests/cluster:") + ::getenv("PATH")).c_str(), 1);
        std::array<std::string, kNodes> addresses;
        std::string all = "gcomm://";
        for (std::string& address : addresses) {
            address = Node::address(PrivateServer::freePort());
            all += address + ",";
        }
        for (std::size_t i = 0; i < kNodes; ++i) {
            const std::vector<std::string> options{
                "--binlog-format=ROW",
                "--innodb-autoinc-lock-mode=2",
                "--wsrep-on=ON",
                "--wsrep-provider=/usr/lib/galera/libgalera_smm.so",
                "--wsrep-cluster-address=" + all,
                "--wsrep-node-name=n" + std::to_string(i),
                "--wsrep-node-address=" + addresses[i],
                "--wsrep-provider-options=gmcast.listen_addr=tcp://" + addresses[i] +
                    ";ist.recv_addr=" + Node::address(PrivateServer::freePort()) +
                    ";gcache.size=32M",
                "--wsrep-sst-method=position",
                "--wsrep-sst-receive-address=" + files_.path() + "/n" + std::to_string(i)};
            nodes_[i] = std::make_unique<Node>(
                options,
                std::vector<std::string>{i == 0 ? "--wsrep-new-cluster" : "--wsrep-provider=none"});
            if (i > 0) join(node(i));
        }
        awaitSynced();
        node(0).execute("create database " + kDatabase);
        node(0).execute("create user " + kUser + " identified by '" + node(0).password() + "'");
        node(0).execute("grant all on " + kDatabase + ".* to " + kUser);
    }

    /// Counted from 0, and named n0 and so on.
    Node& node(std::size_t number) { return *nodes_[number]; }

    /// The host text of all, in their order.
    std::string hosts() {
        std::string hosts;
        for (const auto& node : nodes_)
            hosts += (hosts.empty() ? "" : ",") + Node::address(node->port());
        return hosts;
    }

    /// Starts those that do not run. Throws when they have not found together and exchanged what
    /// they missed within a minute.
    void awaitSynced() {
        constexpr int kMinute = 60;
        // A node that was frozen goes on saying for a while what was true before. It is mostly the
        // first, which is therefore asked last.
        constexpr const char* kView = "wsrep_cluster_conf_id";
        for (const auto& node : nodes_)
            node->start();
        const auto isSynced = [&](const std::unique_ptr<Node>& node) {
            return node->status("wsrep_local_state_comment") == "Synced" &&
                   node->status("wsrep_ready") == "ON" &&
                   node->number("wsrep_cluster_size") == kNodes &&
                   node->status(kView) == nodes_[0]->status(kView);
        };
        if (!becomes(kMinute,
                     [&] { return std::all_of(nodes_.rbegin(), nodes_.rend(), isSynced); }))
            throw std::runtime_error("the nodes do not find together");
    }

private:
    /// What a new node has, the tables and accounts of an installation, is what the first one has:
    /// it needs no copy but begins where the first one is.
    void join(Node& joiner) {
        joiner.stop();
        std::ofstream(joiner.dataDirectory() + "/grastate.dat")
            << "version: 2.1\nuuid: " << node(0).status("wsrep_cluster_state_uuid")
            << "\nseqno: " << node(0).status("wsrep_last_committed") << "\n";
        joiner.start();
    }

    const TemporaryDirectory files_;
    std::array<std::unique_ptr<Node>, kNodes> nodes_;
};

#endif
