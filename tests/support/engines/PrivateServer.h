#ifndef TESTS_SUPPORT_ENGINES_PRIVATESERVER_H
#define TESTS_SUPPORT_ENGINES_PRIVATESERVER_H

#include <sys/types.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/engines/TemporaryDirectory.h"

/// A MariaDB server for this process alone: its data and its unix socket lie in a temporary
/// directory, its TCP port is a free one of the loopback interface. A server that is there already
/// is left alone. It dies with the process, however that ends.
///
/// The verbs return when the server is in the new state. What goes wrong is thrown as
/// std::runtime_error with the end of the server's log.
///
/// Threads: one at a time. The thread that makes or starts it must outlive it.
class PrivateServer {
public:
    /// Makes the data directory and starts the server.
    /// @param options  further ones for the server's command line, as "--max-connections=5".
    /// @param firstStart  those for its first start alone.
    explicit PrivateServer(std::vector<std::string> options = {},
                           const std::vector<std::string>& firstStart = {});
    PrivateServer(const PrivateServer&) = delete;
    PrivateServer& operator=(const PrivateServer&) = delete;
    ~PrivateServer() { kill9(); }

    static std::string host() { return "127.0.0.1"; }
    unsigned int port() const { return port_; }
    const std::string& socket() const { return socket_; }
    /// An account that may do everything, over TCP and over the socket.
    static std::string user() { return "tester"; }
    /// The same for all servers of this process.
    const std::string& password() const { return password_; }
    /// A port of the loopback interface that nobody uses, another one each time.
    static unsigned int freePort();

    std::string dataDirectory() const { return file("data"); }

    /// Runs a statement as `user`, on a connection of its own. An error of the statement is thrown.
    /// @return  the last column of the first row; empty when there is none.
    std::string execute(const std::string& statement);

    /// With the data and on the port of before; nothing when it runs.
    /// @param more  options for this time alone.
    void start(const std::vector<std::string>& more = {});
    /// A clean shutdown.
    void stop();
    /// Without a chance to say goodbye to anybody.
    void kill9();
    /// As long as the result lives its connections stay open, the kernel accepts new ones, and
    /// nothing answers.
    [[nodiscard]] std::shared_ptr<void> frozen();

private:
    std::string file(const std::string& name) const { return directory_.path() + "/" + name; }
    std::vector<std::string> command(const std::string& program) const;
    void install();
    void await(const std::function<bool()>& condition, const std::string& otherwise);
    bool hasExited();
    [[noreturn]] void fail(const std::string& what) const;

    TemporaryDirectory directory_;
    const std::vector<std::string> options_;
    const std::string socket_ = file("server.sock");
    const std::string password_;
    const unsigned int port_;
    pid_t process_ = -1;
};

#endif
