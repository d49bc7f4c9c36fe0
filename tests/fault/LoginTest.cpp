// What a server may do while somebody logs in: prove itself or not, ask for the password, dawdle.
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>

#include "tests/fault/FaultTest.h"
#include "tests/support/engines/TemporaryDirectory.h"

namespace dbaccess {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::string kNative = "mysql_native_password";

std::string packet(char number, const std::string& body) {
    return std::string{static_cast<char>(body.size()), '\0', '\0', number} + body;
}

/// The first words of a MariaDB server.
std::string greeting(const std::string& method, bool tls = false) {
    return packet(0, "\x0a\x35.5.5-10.11.0-MariaDB" + std::string(5, '\0') + "12345678" +
                         std::string("\0\x0a", 2) + (tls ? '\xaa' : '\xa2') +
                         std::string("\x2d\2\0\x3a\0\x15", 6) + std::string(10, '\0') +
                         "123456789012" + '\0' + method + '\0');
}

/// A server for one login, which says each of its texts when it has heard something since.
class Impostor {
public:
    explicit Impostor(std::vector<std::string> texts, milliseconds perByte = milliseconds(0))
        : texts_(std::move(texts)), perByte_(perByte) {
        EXPECT_EQ(0, ::listen(listener_, 1));
        sockaddr_in address{};
        socklen_t size = sizeof address;
        ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
        port_ = ntohs(address.sin_port);
        thread_ = std::thread([this] { serve(); });
    }
    ~Impostor() { heard(); }

    unsigned int port() const { return port_; }

    /// All that was sent to it, once the login is over.
    const std::string& heard() {
        if (thread_.joinable()) thread_.join();
        return heard_;
    }

private:
    void serve() {
        const int connection = ::accept(listener_, nullptr, nullptr);
        ::close(listener_);
        char buffer[4096];
        for (std::size_t i = 0, count = 0;; heard_.append(buffer, count), ++i) {
            const std::string text = i < texts_.size() ? texts_[i] : "";
            const std::size_t piece = perByte_.count() == 0 ? text.size() : 1;
            for (std::size_t at = 0; at < text.size(); at += piece) {
                if (::send(connection, &text[at], piece, MSG_NOSIGNAL) < 0) break;
                std::this_thread::sleep_for(perByte_);
            }
            const ssize_t result = ::recv(connection, buffer, sizeof buffer, 0);
            if (result <= 0) break;
            count = static_cast<std::size_t>(result);
        }
        ::close(connection);
    }

    const std::vector<std::string> texts_;
    const milliseconds perByte_;
    const int listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);  // any port, unbound
    unsigned int port_ = 0;
    std::string heard_;
    std::thread thread_;
};

/// 0 when the login works, or the error's number.
int logIn(unsigned int port, const std::string& password, const std::string& options) {
    DataAccess access("127.0.0.1", port, "tester", password, options);
    return access.Initialize(1, 1, true, true) ? 0 : LastError().number;
}

TEST(LoginTest, ThePasswordIsForTheServerAlone) {
    for (const std::string method : {"mysql_clear_password", "dialog", "mysql_old_password"}) {
        Impostor impostor({greeting(kNative), packet(2, "\xfe" + method + '\0'), packet(4, "?")});
        EXPECT_EQ(2061, logIn(impostor.port(), "hunter2", "")) << method;
        EXPECT_THAT(impostor.heard(), HasSubstr("tester"));
        EXPECT_THAT(impostor.heard(), Not(HasSubstr("hunter2"))) << method;
    }
    // It would be hidden by a key that the impostor sends when it is asked for it.
    const std::string asksForKey("\1\0\0\3\2", 5);
    const std::vector<std::string> sha2 = {greeting("caching_sha2_password"), packet(2, "\1\4")};
    Impostor trusted(sha2);
    logIn(trusted.port(), "hunter2", "connect-timeout=300ms");
    EXPECT_THAT(trusted.heard(), EndsWith(asksForKey));
    Impostor mistrusted(sha2);
    EXPECT_EQ(2061, logIn(mistrusted.port(), "hunter2", "get-server-public-key=0"));
    EXPECT_THAT(mistrusted.heard(), Not(HasSubstr(asksForKey)));

    for (const std::string mode : {"required", "verify-ca\nssl-capath=/etc", "verify-identity"}) {
        Impostor withoutTls({greeting(kNative)});
        EXPECT_EQ(2026, logIn(withoutTls.port(), "hunter2", "ssl-mode=" + mode));
        EXPECT_THAT(LastError().message, HasSubstr("TLS"));
        EXPECT_THAT(withoutTls.heard(), IsEmpty()) << mode;
    }
}

TEST(LoginTest, DawdlersAreGivenUp) {
    const auto expectGivenUp = [](std::vector<std::string> texts, int perByte,
                                  const std::string& mode) {
        Impostor impostor(std::move(texts), milliseconds(perByte));
        const auto begin = Clock::now();
        EXPECT_EQ(2002, logIn(impostor.port(), "", "connect-timeout=700ms\nssl-mode=" + mode));
        EXPECT_GE(Clock::now() - begin, milliseconds(700));
        EXPECT_LT(Clock::now() - begin, seconds(4));  // what dawdles takes longer by far
    };
    const std::string tls = greeting(kNative, true);
    expectGivenUp({}, 0, "required");
    expectGivenUp({tls}, 200, "disabled");
    expectGivenUp({tls}, 0, "disabled");  // no answer to the login
    expectGivenUp({tls}, 0, "required");  // nor to the beginning of TLS
    expectGivenUp({tls, "\x16\3\3\x40" + std::string(1000, '\2')}, 10, "required");
}

/// A server with TLS, whose certificate the test exchanges. It takes raw sessions for latin1.
class TlsTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        for (const std::string name : {"ca", "other"})
            shell(request(name + ".key", name) + " -x509 -out " + file(name + ".pem"));
        certify("ca", "127.0.0.1", 2);
        server_ = std::make_unique<PrivateServer>(std::vector<std::string>{
            "--ssl-cert=" + file("cert.pem"), "--ssl-key=" + file("key.pem"),
            "--character-set-client-handshake=0", "--performance-schema=ON"});
        server_->execute("create database vms character set utf8mb4");
    }
    static void TearDownTestSuite() { server_.reset(); }

    static std::string file(const std::string& name) {
        static const TemporaryDirectory directory;
        return directory.path() + "/" + name;
    }
    static void shell(const std::string& command) {
        const std::string quiet = "(" + command + ") 2>>" + file("log");
        ASSERT_EQ(0, std::system(quiet.c_str())) << command;
    }
    static std::string request(const std::string& key, const std::string& subject) {
        return "openssl req -nodes -newkey ec -pkeyopt ec_paramgen_curve:P-256 -keyout " +
               file(key) + " -subj /CN=" + subject;
    }
    /// The server's certificate from now on, for so many days.
    static void certify(const std::string& authority, const std::string& address, int days) {
        shell(request("key.pem", "server") + " -addext subjectAltName=IP:" + address +
              " | openssl x509 -req -copy_extensions copy -days " + std::to_string(days) + " -CA " +
              file(authority + ".pem") + " -CAkey " + file(authority + ".key") + " -out " +
              file("cert.pem"));
        if (server_) server_->execute("flush ssl");
    }
    static std::unique_ptr<DataAccess> connected(const std::string& options) {
        auto access = std::make_unique<DataAccess>("127.0.0.1", server_->port(), "tester",
                                                   server_->password(), options);
        EXPECT_TRUE(access->Initialize(1, 1, true, true)) << LastError().message;
        return access;
    }

    const std::string verified_ = "ssl-ca=" + file("ca.pem");
    inline static std::unique_ptr<PrivateServer> server_;
};

TEST_F(TlsTest, OnlyWhoProvesItselfIsToldAnything) {
    const std::string modes[] = {"ssl-mode=required", "ssl-mode=verify-ca\n" + verified_, verified_,
                                 "ssl-mode=verify-identity"};
    const struct {
        const char* authority;
        const char* address;
        int days;
        int answers[4];
    } cases[] = {{"other", "127.0.0.1", 2, {0, 2026, 2026, 2026}},
                 {"ca", "127.0.0.2", 2, {0, 0, 2026, 2026}},
                 {"ca", "127.0.0.1", -1, {0, 2026, 2026, 2026}},
                 {"ca", "127.0.0.1", 2, {0, 0, 0, 2026}}};
    for (const auto& server : cases) {
        certify(server.authority, server.address, server.days);
        for (int i = 0; i < 20; ++i)
            EXPECT_EQ(server.answers[i % 4],
                      logIn(server_->port(), server_->password(), modes[i % 4]))
                << server.authority << server.address << server.days << modes[i % 4];
    }
    EXPECT_EQ(1045, logIn(server_->port(), "wrong", verified_));
}

TEST_F(TlsTest, StatementsRunOverIt) {
    const auto access = connected(verified_);
    const std::string cipher =
        "select variable_value as v from information_schema.session_status "
        "where variable_name='Ssl_cipher'";
    EXPECT_THAT(query(*access, cipher), Not(IsEmpty()));
    EXPECT_EQ("", query(*connected("ssl-mode=disabled\n" + verified_), cipher));
    EXPECT_EQ(0, access->Execute(kDatabase, "create or replace table t(k TEXT, n INT)"));
    for (int i = 0; i < 4; ++i) {  // the later ones are kept
        const std::string key = "\xF0\x9F\x93\xB7" + std::to_string(i);
        EXPECT_EQ(1, access->Insert(kDatabase, "insert into t(k) values('" + key + "')"));
        EXPECT_EQ(key, query(*access, "select k as v from t where k='" + key + "'"));
    }
    const std::string large = "select repeat('x',1000000) as v from t a, t b limit 16";
    EXPECT_EQ(16U * 1000001U - 1U, query(*access, large).size());

    const auto admin = connected("");
    const auto kill = [&](const std::string& session) { admin->Execute("", "kill " + session); };
    kill(query(*access, "select connection_id() as v"));
    EXPECT_EQ(1, access->Insert(kDatabase, "insert into t(k) values('unseen')"));
    const std::string session = query(*access, "select connection_id() as v");
    const std::string sleeps =
        "select state as v from information_schema.processlist where id=" + session;
    std::thread killer([&] {
        EXPECT_TRUE(becomes([&] { return query(*admin, sleeps) == "User sleep"; }));
        kill(session);
    });
    EXPECT_EQ(-2013, access->Execute(kDatabase, "insert into t select 'doubt', sleep(1)"));
    killer.join();
}

TEST_F(TlsTest, SessionsAreThoseOfTheLibrary) {
    // The client library would obey.
    std::ofstream(file(".my.cnf")) << "[client]\nmulti-statements=1\ninit-command=nonsense\n";
    ::setenv("HOME", file("").c_str(), 1);
    const auto access = connected("lock-timeout=1s\nanswer-timeout=2s");
    EXPECT_EQ("-1064", query(*access, "select 1 as v; select 2 as v"));
    EXPECT_EQ("utf8mb4 1 16384 1.800000",
              query(*access,
                    "select concat_ws(' ',@@character_set_client,@@innodb_lock_wait_timeout,"
                    "@@max_length_for_sort_data,@@max_statement_time) as v"));
    EXPECT_THAT(query(*access,
                      "select group_concat(attr_value order by attr_name) as v from "
                      "performance_schema.session_account_connect_attrs where attr_name in "
                      "('dbservice_version','program_name') and processlist_id=connection_id()"),
                testing::MatchesRegex("[0-9.]+,fault_tests"));
    // The server ends what takes too long, so that nothing is in doubt.
    EXPECT_EQ(0, access->Execute(kDatabase, "create or replace table u(n INT)"));
    EXPECT_EQ(-1969, access->Execute(kDatabase, "insert into u select sleep(9)"));
    EXPECT_EQ("0", query(*access, "select count(*) as v from u"));
}

}  // namespace
}  // namespace dbaccess
