// A rogue server: the client's side of a session meets any bytes, without a crash, and gives away
// neither its password nor a file. The first byte of an input says where and how the rest is sent:
// 1 as the answer to the first query of a session that was sound so far, otherwise as the greeting;
// 2 as it is, otherwise it is a list of packets: a byte for the length, one for the number of the
// packet, the content. Behind it the server hangs up.
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <thread>

#include "dbaccess/mariadb/MariaDbConnector.h"
#include "tests/fuzz/Fuzz.h"

/// What a server may claim to send is no memory to really ask for.
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1:max_allocation_size_mb=1024";
}

/// The packaged client library loses what it has read of a result's columns when one is malformed.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libmariadb.so";
}

namespace dbaccess {
namespace {

using namespace std::string_literals;

constexpr const char* kPassword = "s3cret-of-the-account";

// As a MariaDB server without TLS greets.
const std::string kGreeting =
    "\x0a"
    "5.5.5-10.11.19-MariaDB\0"
    "\4\0\0\0abcdefgh\0\xfe\xf7\x08\2\0\xff\x81\x15\0\0\0\0\0\0\x1d\0\0\0abcdefghijkl\0"
    "mysql_native_password\0"s;
const std::string kOk = "\0\0\0\2\0\0\0"s;

std::string packet(char number, const std::string& content) {
    return std::string{static_cast<char>(content.size()), '\0', '\0', number} + content;
}

std::string bytesOf(const std::string& input) {
    if (input.empty() || (input[0] & 2) != 0) return input.substr(input.empty() ? 0 : 1);
    std::string bytes;
    for (std::size_t i = 1; i + 2 < input.size();) {
        const std::size_t length = static_cast<std::uint8_t>(input[i]);
        bytes += packet(input[i + 1], input.substr(i + 2, length));
        i += 2 + length;
    }
    return bytes;
}

/// Serves one session. @return  what it was told.
std::string serve(int listener, std::string bytes, bool soundAtFirst) {
    const int session = ::accept(listener, nullptr, nullptr);
    // The packaged client library does not survive error 65535 in the place of a greeting.
    if (!soundAtFirst && bytes.size() > 6 && bytes.compare(4, 3, "\xff\xff\xff") == 0) bytes[5] = 0;
    std::string received;
    for (char buffer[4096];;) {
        const bool reached = !soundAtFirst || received.find("where a='x'") != std::string::npos;
        const std::string& answer = reached ? bytes
                                    : received.empty()
                                        ? packet(0, kGreeting)
                                        : packet(static_cast<char>(buffer[3] + 1), kOk);
        ::send(session, answer.data(), answer.size(), MSG_NOSIGNAL);
        if (reached) ::shutdown(session, SHUT_WR);
        const ssize_t size = ::recv(session, buffer, sizeof buffer, 0);
        if (size <= 0) break;
        received.append(buffer, static_cast<std::size_t>(size));
    }
    ::close(session);
    return received;
}

void converse(const std::string& path) {
    Error error;
    const auto connector =
        mariadb::makeConnector({{"", 0, path}}, "user", kPassword, shortLimits());
    const auto connection = connector->connect(TimePoint::max(), error);
    require(error.message.find(kPassword) == std::string::npos, "no error repeats the password");
    for (int i = 0; connection && connection->usable() && i < 3; ++i) {
        for (const char* text : {"select a,b from t where a='x' and b=5",
                                 "insert into t values('x',1),('y',2)", "replace t values(1)"}) {
            const Outcome outcome = connection->run("fuzz", Statement(text));
            while (outcome.rows && outcome.rows->next())
                for (const std::string& column : outcome.rows->columns().all())
                    outcome.rows->getUInt64(column);
        }
        if (!connection->begin("fuzz").error && connection->commit().error) connection->rollback();
    }
}

int listenAt(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const int listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
    require(::bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 &&
                ::listen(listener, 1) == 0,
            "the socket is made");
    return listener;
}

}  // namespace

void tryInput(const std::string& input) {
    static const std::string path = directory() + "/socket";
    static const int listener = listenAt(path);
    std::string received;
    std::thread server(
        [&] { received = serve(listener, bytesOf(input), !input.empty() && (input[0] & 1) != 0); });
    converse(path);
    server.join();
    require(received.find("root:x:0:") == std::string::npos, "no file is sent");
    // On a unix socket this login may ask for it.
    require(input.find("caching_sha2") != std::string::npos ||
                received.find(kPassword) == std::string::npos,
            "the password is not sent in clear");
}

}  // namespace dbaccess
