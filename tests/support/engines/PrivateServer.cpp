#include "tests/support/engines/PrivateServer.h"

#include <arpa/inet.h>
#include <mysql.h>
#include <netinet/in.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <thread>

namespace {

/// Servers of one cluster share their accounts.
const std::string& processPassword() {
    static const std::string password = [] {
        std::random_device random;
        return std::to_string(random()) + std::to_string(random());
    }();
    return password;
}

/// Starts a program that dies with the calling thread, with its output in a file. An interrupt from
/// the terminal is the test process' business.
pid_t startProcess(std::vector<std::string> command, const std::string& output) {
    command.insert(command.begin(), {"sh", "-c",
                                     "PATH=$PATH:/usr/local/sbin:/usr/sbin:/sbin; "
                                     "exec setsid setpriv --pdeathsig KILL \"$@\" "
                                     "</dev/null >>\"$0\" 2>&1",
                                     output});
    std::vector<char*> arguments;
    for (std::string& argument : command)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    pid_t process = -1;
    // Each program becomes the next, so that the process id stays.
    const int error =
        ::posix_spawnp(&process, "sh", &actions, nullptr, arguments.data(), ::environ);
    ::posix_spawn_file_actions_destroy(&actions);
    if (error != 0) throw std::system_error(error, std::generic_category(), "posix_spawn");
    return process;
}

using Connection = std::unique_ptr<MYSQL, decltype(&::mysql_close)>;

/// A connection, made or not: `mysql_errno` tells.
Connection connect(const PrivateServer& server) {
    Connection connection(::mysql_init(nullptr), &::mysql_close);
    const unsigned int seconds = 10;
    ::mysql_options(connection.get(), MYSQL_OPT_CONNECT_TIMEOUT, &seconds);
    ::mysql_options(connection.get(), MYSQL_OPT_READ_TIMEOUT, &seconds);
    ::mysql_real_connect(connection.get(), nullptr, PrivateServer::user().c_str(),
                         server.password().c_str(), nullptr, 0, server.socket().c_str(), 0);
    return connection;
}

}  // namespace

PrivateServer::PrivateServer(std::vector<std::string> options,
                             const std::vector<std::string>& firstStart)
    : options_(std::move(options)), password_(processPassword()), port_(freePort()) {
    install();
    start(firstStart);
}

unsigned int PrivateServer::freePort() {
    // Below the range that outgoing connections take theirs from: it must be free again for a
    // restart.
    constexpr unsigned int kFirst = 20000;
    constexpr unsigned int kPorts = 12000;
    static unsigned int number = std::random_device()();
    for (;;) {
        const unsigned int port = kFirst + ++number % kPorts;
        const int descriptor = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        const int result =
            ::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof(address));
        ::close(descriptor);
        if (result == 0) return port;
    }
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
    int status = 0;
    ::waitpid(startProcess(install, file("log")), &status, 0);
    if (status != 0) fail("mariadb-install-db");
    std::ofstream(file("accounts.sql"))
        << "CREATE USER IF NOT EXISTS " << user() << "@'%' IDENTIFIED BY '" << password_ << "';\n"
        << "GRANT ALL ON *.* TO " << user() << "@'%' WITH GRANT OPTION;\n";
}

void PrivateServer::start(const std::vector<std::string>& more) {
    if (process_ > 0) return;
    std::vector<std::string> server = command("mariadbd");
    server.insert(server.end(),
                  {"--skip-name-resolve", "--bind-address=" + host(),
                   "--port=" + std::to_string(port_), "--socket=" + socket_,
                   "--pid-file=" + file("pid"), "--init-file=" + file("accounts.sql")});
    server.insert(server.end(), options_.begin(), options_.end());
    server.insert(server.end(), more.begin(), more.end());
    process_ = startProcess(server, file("log"));
    const auto answers = [this] { return ::mysql_errno(connect(*this).get()) == 0; };
    await([&] { return hasExited() || answers(); }, "mariadbd does not answer");
    if (process_ < 0) fail("mariadbd exited");
}

void PrivateServer::await(const std::function<bool()>& condition, const std::string& otherwise) {
    const auto giveUp = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > giveUp) {
            kill9();
            fail(otherwise);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

bool PrivateServer::hasExited() {
    if (process_ > 0 && ::waitpid(process_, nullptr, WNOHANG) == process_) process_ = -1;
    return process_ < 0;
}

std::string PrivateServer::execute(const std::string& statement) {
    const Connection connection = connect(*this);
    std::string value;
    if (::mysql_errno(connection.get()) == 0 &&
        ::mysql_real_query(connection.get(), statement.data(), statement.size()) == 0) {
        MYSQL_RES* const rows = ::mysql_store_result(connection.get());
        char** const row = rows != nullptr ? ::mysql_fetch_row(rows) : nullptr;
        if (row != nullptr && row[::mysql_num_fields(rows) - 1] != nullptr)
            value = row[::mysql_num_fields(rows) - 1];
        ::mysql_free_result(rows);
    }
    if (::mysql_errno(connection.get()) != 0)
        throw std::runtime_error(statement + ": " + ::mysql_error(connection.get()));
    return value;
}

void PrivateServer::stop() {
    if (process_ > 0) ::kill(process_, SIGTERM);
    await([this] { return hasExited(); }, "mariadbd does not stop");
}

void PrivateServer::kill9() {
    if (process_ > 0) {
        ::kill(process_, SIGKILL);
        ::waitpid(process_, nullptr, 0);
    }
    process_ = -1;
}

std::shared_ptr<void> PrivateServer::frozen() {
    ::kill(process_, SIGSTOP);
    ::waitpid(process_, nullptr, WUNTRACED);
    return {this, [process = process_](void*) { ::kill(process, SIGCONT); }};
}

void PrivateServer::fail(const std::string& what) const {
    constexpr std::size_t kLogTail = 2000;
    std::ifstream stream(file("log"));
    const std::string log{std::istreambuf_iterator<char>(stream), {}};
    throw std::runtime_error(what + ":\n" +
                             log.substr(log.size() - std::min(log.size(), kLogTail)));
}
