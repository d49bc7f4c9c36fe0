// Which server of a host text is used, and how hard the others are tried.
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>

#include "tests/fault/FaultTest.h"

namespace dbaccess {
namespace {

constexpr seconds kAtMostLate{2};  // on a busy machine

/// Listens on a port of the loopback interface, and hangs up on whoever calls.
class Doorman {
public:
    Doorman() {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        EXPECT_EQ(0, bind(socket_, reinterpret_cast<sockaddr*>(&address), size));
        EXPECT_EQ(0, listen(socket_, 100));
        getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &size);
        port_ = ntohs(address.sin_port);
        thread_ = std::thread([this] {
            for (int caller; (caller = accept(socket_, nullptr, nullptr)) >= 0; ++callers)
                close(caller);
        });
    }
    Doorman(const Doorman&) = delete;
    Doorman& operator=(const Doorman&) = delete;
    ~Doorman() {
        shutdown(socket_, SHUT_RDWR);
        thread_.join();
        close(socket_);
    }
    unsigned int port() const { return port_; }
    std::atomic<int> callers{0};

private:
    const int socket_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    unsigned int port_ = 0;
    std::thread thread_;
};

/// Two servers with the same tables and an account on both that may not write to a read-only one.
/// The first is preferred.
class HostsTest : public FaultTest {
protected:
    static void SetUpTestSuite() {
        FaultTest::SetUpTestSuite();
        second_ = std::make_unique<PrivateServer>();
        second_->execute("create database " + kDatabase);
        second_->execute("create table " + kDatabase + ".t(k VARCHAR(40), n INT)");
        for (PrivateServer* each : {&server(), second_.get()}) {
            each->execute("create user writer identified by 'right'");
            each->execute("grant all on " + kDatabase + ".* to writer");
        }
    }
    static void TearDownTestSuite() {
        second_.reset();
        FaultTest::TearDownTestSuite();
    }

    HostsTest() : runner_(writer(both())) {}

    /// Waits for an answer longer than for a connect, so that it shows which one ended.
    static std::unique_ptr<Connector> writer(const std::string& host) {
        Settings settings = shortLimits();
        settings.timeouts.answer = settings.timeouts.call = seconds(8);
        return mariadb::makeConnector(parseHost(host, server().port()).servers, "writer", "right",
                                      settings);
    }

    static std::string both() {
        return server().host() + "," + second_->host() + ":" + std::to_string(second_->port());
    }
    Outcome run(const std::string& text) { return runner_.run(kDatabase, Statement(text)); }
    void open(unsigned int connections) {
        PoolSettings settings;
        settings.minConnections = connections;
        Error error;
        ASSERT_TRUE(runner_.open(settings, error)) << error.message;
    }
    /// Which of the servers all connections of the pool are on; 0: on both.
    int place() {
        std::mutex mutex;
        std::set<std::string> ports;
        inThreads(3, [&](int) {
            const std::string port = firstValue(run("select @@port as v, sleep(0.1)"));
            const std::lock_guard<std::mutex> lock(mutex);
            ports.insert(port);
        });
        if (ports.size() != 1) return 0;
        return *ports.begin() == std::to_string(second_->port()) ? 2 : 1;
    }
    int connectsToFirst() {
        return std::stoi(
            ask("select variable_value as v from "
                "information_schema.global_status where variable_name='Connections'"));
    }

    StatementRunner runner_;
    static inline std::unique_ptr<PrivateServer> second_;
};

TEST_F(HostsTest, AFrozenFirstServerCostsOneConnectLimit) {
    const auto frozen = server().frozen();
    const auto begin = Clock::now();
    open(5);
    EXPECT_LT(Clock::now() - begin, kShort.connect + kAtMostLate);
    EXPECT_EQ(2, place());
}

TEST_F(HostsTest, AServerThatFreezesUnderStatementsIsLeft) {
    open(3);
    EXPECT_EQ(1, place());
    const auto frozen = server().frozen();
    const auto begin = Clock::now();
    inThreads(3, [&](int thread) {
        if (thread == 0)
            EXPECT_EQ(2013, run("insert into t(k) values('doubt')").error.number);
        else
            EXPECT_EQ("read", firstValue(run("select 'read' as v")));
    });
    // It takes half a second to suspect, and the connect limit to be sure.
    EXPECT_LT(Clock::now() - begin, milliseconds(500) + kShort.connect + kAtMostLate);
    EXPECT_EQ(2, place());
}

TEST_F(HostsTest, WhoWaitsForAFrozenServersConnectionIsTold) {
    PoolSettings one;
    one.maxConnections = 1;
    StatementRunner runner(writer(server().host()));
    Error error;
    ASSERT_TRUE(runner.open(one, error));
    auto frozen = server().frozen();
    std::thread stuck([&] { EXPECT_FALSE(runner.run("", Statement("select 1")).error); });
    std::this_thread::sleep_for(milliseconds(100));
    const auto begin = Clock::now();
    EXPECT_EQ(2002, runner.run("", Statement("select 2")).error.number);
    EXPECT_LT(Clock::now() - begin, milliseconds(500) + kShort.connect + kAtMostLate);
    frozen.reset();
    stuck.join();
    EXPECT_TRUE(becomes([&] { return !runner.run("", Statement("select 3")).error; }));
}

TEST_F(HostsTest, AReadOnlyServerIsLeftAndReturnedTo) {
    open(3);
    const int before = connectsToFirst();
    admin("set global read_only=1");
    for (int i = 0; i < 20; ++i) {
        const Outcome outcome = run("insert into t(k) values('a')");
        EXPECT_EQ(1, outcome.affectedRows) << outcome.error.message;
    }
    EXPECT_LE(connectsToFirst() - before, 5);
    EXPECT_EQ("0", ask("select count(*) as v from t"));
    EXPECT_EQ(2, place());
    admin("set global read_only=0");
    std::this_thread::sleep_for(seconds(6));
    EXPECT_EQ(1, place());

    // Without a better one it is as good as any: it reads, and says why it does not write.
    admin("set global read_only=1");
    second_->execute("set global read_only=1");
    EXPECT_EQ(1290, run("insert into t(k) values('b')").error.number);
    EXPECT_EQ("c", firstValue(run("select 'c' as v")));
    admin("set global read_only=0");
    second_->execute("set global read_only=0");
}

TEST_F(HostsTest, RefusedAndBrokenLoginsAreNotTriedAllTheTime) {
    const auto attempts = [&] {
        return std::stoi(
            ask("select variable_value as v from "
                "information_schema.global_status where variable_name='Access_denied_errors'"));
    };
    DataAccess wrong(server().host(), server().port(), server().user(), "wrong");
    Doorman doorman;
    DataAccess closed("127.0.0.1", doorman.port(), server().user(), "any");
    const int before = attempts();
    testing::internal::CaptureStderr();
    const auto end = Clock::now() + seconds(2);
    inThreads(8, [&](int thread) {
        DataAccess& access = thread % 2 == 0 ? wrong : closed;
        while (Clock::now() < end) {
            EXPECT_GT(0, access.Execute(kDatabase, "insert into t(k) values('a')"));
            std::this_thread::sleep_for(milliseconds(1));
        }
    });
    testing::internal::GetCapturedStderr();
    EXPECT_LE(attempts() - before, 20);
    EXPECT_LE(doorman.callers, 200);
    EXPECT_GT(doorman.callers, 1);
}

}  // namespace
}  // namespace dbaccess
