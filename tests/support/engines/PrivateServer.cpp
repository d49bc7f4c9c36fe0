#include "tests/support/engines/PrivateServer.h"

#include <arpa/inet.h>
#include <mysql.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <stdexcept>
#include <thread>
#include <utility>

#include "tests/support/engines/Process.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kStartTime{60};
constexpr std::chrono::seconds kStopTime{60};
constexpr std::chrono::milliseconds kPause{10};

std::string randomPassword() {
    constexpr char kDigits[] = "0123456789abcdef";
    std::random_device random;
    std::string password;
    for (int i = 0; i < 32; ++i)
        password += kDigits[random() % 16];
    return password;
}

bool isFree(unsigned int port) {
    const int descriptor = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int result =
        ::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof(address));
    ::close(descriptor);
    return result == 0;
}

std::string contentOf(const std::string& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

struct CloseConnection {
    void operator()(MYSQL* connection) const { ::mysql_close(connection); }
};
using Connection = std::unique_ptr<MYSQL, CloseConnection>;

/// A connection, made or not: `mysql_errno` tells.
Connection connect(const PrivateServer& server) {
    Connection connection(::mysql_init(nullptr));
    const unsigned int seconds = 10;
    ::mysql_options(connection.get(), MYSQL_OPT_CONNECT_TIMEOUT, &seconds);
    ::mysql_options(connection.get(), MYSQL_OPT_READ_TIMEOUT, &seconds);
    ::mysql_real_connect(connection.get(), nullptr, PrivateServer::user().c_str(),
                         server.password().c_str(), nullptr, 0, server.socket().c_str(), 0);
    return connection;
}

}  // namespace

PrivateServer::PrivateServer(std::vector<std::string> options)
    : options_(std::move(options)), password_(randomPassword()), owner_(::getpid()) {
    install();
    choosePort();
    start();
}

PrivateServer::~PrivateServer() {
    // A child that a test forked has a copy of this object, but not the server.
    if (::getpid() == owner_) kill9();
}

std::vector<std::string> PrivateServer::command(const std::string& program) const {
    // Small and quick. What the server leaves to the operating system to write is not lost when the
    // server is killed, only when the machine is. A starting server clears its folder for temporary
    // files of what looks left over, so that must not be shared with other servers.
    std::vector<std::string> command = {program,
                                        "--no-defaults",
                                        "--datadir=" + file("data"),
                                        "--tmpdir=" + file("tmp"),
                                        "--innodb-log-file-size=32M",
                                        "--innodb-buffer-pool-size=32M",
                                        "--innodb-use-native-aio=OFF",
                                        "--innodb-flush-log-at-trx-commit=2",
                                        "--debug-no-sync"};
    if (::geteuid() == 0) command.emplace_back("--user=root");
    return command;
}

void PrivateServer::install() {
    std::filesystem::create_directory(file("tmp"));
    std::vector<std::string> install = command("mariadb-install-db");
    // Forced, as it otherwise insists on looking up this machine's name.
    install.insert(install.end(),
                   {"--force", "--skip-test-db", "--auth-root-authentication-method=socket"});
    const pid_t process = startProcess(install, {-1, file("log")}, Orphan::Dies);
    int status = 0;
    ::waitpid(process, &status, 0);
    if (status != 0) fail("mariadb-install-db");
    std::ofstream(file("accounts.sql"))
        << "CREATE USER IF NOT EXISTS " << user() << "@'%' IDENTIFIED BY '" << password_ << "';\n"
        << "GRANT ALL ON *.* TO " << user() << "@'%' WITH GRANT OPTION;\n";
}

void PrivateServer::choosePort() {
    // Below the range that outgoing connections take theirs from: it must be free again for a
    // restart.
    std::random_device random;
    do {
        port_ = 20000 + random() % 12000;
    } while (!isFree(port_));
}

void PrivateServer::start() {
    if (process_ > 0) return;
    std::vector<std::string> server = command("mariadbd");
    server.insert(server.end(),
                  {"--skip-name-resolve", "--bind-address=" + host(),
                   "--port=" + std::to_string(port_), "--socket=" + socket_,
                   "--pid-file=" + file("pid"), "--init-file=" + file("accounts.sql")});
    server.insert(server.end(), options_.begin(), options_.end());
    process_ = startProcess(server, {-1, file("log")}, Orphan::Dies);
    awaitAnswer();
}

void PrivateServer::awaitAnswer() {
    const Clock::time_point giveUp = Clock::now() + kStartTime;
    while (::mysql_errno(connect(*this).get()) != 0) {
        if (hasExited()) fail("mariadbd exited");
        if (Clock::now() > giveUp) {
            kill9();
            fail("mariadbd does not answer");
        }
        std::this_thread::sleep_for(kPause);
    }
}

bool PrivateServer::hasExited() {
    if (process_ > 0 && ::waitpid(process_, nullptr, WNOHANG) == process_) process_ = -1;
    return process_ < 0;
}

void PrivateServer::execute(const std::string& statement) {
    const Connection connection = connect(*this);
    if (::mysql_errno(connection.get()) == 0)
        ::mysql_real_query(connection.get(), statement.data(), statement.size());
    if (::mysql_errno(connection.get()) != 0)
        throw std::runtime_error(statement + ": " + ::mysql_error(connection.get()));
}

void PrivateServer::stop() {
    thaw();
    if (process_ > 0) ::kill(process_, SIGTERM);
    const Clock::time_point giveUp = Clock::now() + kStopTime;
    while (!hasExited()) {
        if (Clock::now() > giveUp) {
            kill9();
            fail("mariadbd does not stop");
        }
        std::this_thread::sleep_for(kPause);
    }
}

void PrivateServer::kill9() {
    if (process_ > 0) {
        ::kill(process_, SIGKILL);
        ::waitpid(process_, nullptr, 0);
    }
    process_ = -1;
    frozen_ = false;
}

void PrivateServer::freeze() {
    if (process_ < 0 || frozen_) return;
    ::kill(process_, SIGSTOP);
    ::waitpid(process_, nullptr, WUNTRACED);
    frozen_ = true;
}

void PrivateServer::thaw() {
    if (frozen_) ::kill(process_, SIGCONT);
    frozen_ = false;
}

void PrivateServer::fail(const std::string& what) const {
    constexpr std::size_t kLogTail = 2000;
    const std::string log = contentOf(file("log"));
    throw std::runtime_error(what + ":\n" +
                             log.substr(log.size() - std::min(log.size(), kLogTail)));
}
