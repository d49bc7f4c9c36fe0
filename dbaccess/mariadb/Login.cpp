#include "dbaccess/mariadb/Login.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <mutex>

#include "base/Version.h"
#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/mariadb/TlsGuard.h"
#include "dbaccess/mariadb/WaitLimit.h"

namespace dbaccess::mariadb {
namespace {

using std::chrono::milliseconds;

// Numbers of the client library that say less than the cause does.
constexpr int kSomethingFailed = 2000;
constexpr int kMethodNotAllowed = 5010;

bool isLocal(const ServerAddress& server) {
    return !server.socket.empty() || server.name == "localhost";
}

/// Over a socket of this machine nobody can listen.
TlsMode tlsModeOf(const ServerAddress& server, const Tls& tls) {
    return isLocal(server) ? TlsMode::Off : tls.effectiveMode();
}

bool isVerified(TlsMode mode) {
    return mode == TlsMode::VerifyCa || mode == TlsMode::VerifyIdentity;
}

void setLimits(MYSQL* handle, const Timeouts& timeouts, milliseconds limit) {
    const auto set = [&](mysql_option option, std::chrono::seconds::rep value) {
        const auto count = static_cast<unsigned int>(value);
        mysql_optionsv(handle, option, &count);
    };
    set(MYSQL_OPT_CONNECT_TIMEOUT, inSeconds(limit));
    // Behind the limit of the whole statement: these count anew with each packet.
    set(MYSQL_OPT_READ_TIMEOUT, inSeconds(timeouts.patience()) + 1);
    set(MYSQL_OPT_WRITE_TIMEOUT, inSeconds(timeouts.patience()) + 1);
}

void setTls(MYSQL* handle, TlsMode mode, const Tls& tls) {
    if (mode == TlsMode::Off) return;
    const auto set = [&](mysql_option option, const std::string& value) {
        if (!value.empty()) mysql_optionsv(handle, option, value.c_str());
    };
    set(MYSQL_OPT_SSL_CERT, tls.certificate);
    set(MYSQL_OPT_SSL_KEY, tls.key);
    mysql_optionsv(handle, MARIADB_OPT_TLS_PASSPHRASE, "");  // nobody is asked for one
    set(MYSQL_OPT_SSL_CIPHER, tls.ciphers);
    set(MARIADB_OPT_TLS_VERSION, tls.versions);
    if (isVerified(mode)) {
        set(MYSQL_OPT_SSL_CA, tls.ca);
        set(MYSQL_OPT_SSL_CAPATH, tls.caPath);
        set(MYSQL_OPT_SSL_CRL, tls.crl);
        set(MYSQL_OPT_SSL_CRLPATH, tls.crlPath);
    }
    const my_bool named = mode == TlsMode::VerifyIdentity ? 1 : 0;
    mysql_optionsv(handle, MYSQL_OPT_SSL_VERIFY_SERVER_CERT, &named);
    guardTls(handle);
}

/// Keeps the password from who has not proven to be the server: whoever answers may ask for any way
/// to log in, and the client library would tell it in clear. The two that hide it under a key that
/// the server sends are no better, but the only ones that today's MySQL servers have.
void restrictLogin(MYSQL* handle, bool local, TlsMode mode, bool fetchServerKey) {
    std::string methods = "mysql_native_password,client_ed25519,parsec";
    if (mode != TlsMode::Off) methods += std::string(",") + kTlsGuard;
    if (isVerified(mode)) methods += ",mysql_clear_password";
    if (isVerified(mode) || local || fetchServerKey) {
        methods += ",caching_sha2_password,sha256_password";
    } else if (mode == TlsMode::Off) {
        // Works for who has logged in to the server lately; otherwise no key is to be had in here.
        methods += ",caching_sha2_password";
        mysql_optionsv(handle, MYSQL_SERVER_PUBLIC_KEY, "/dev/null");
    }
    mysql_optionsv(handle, MARIADB_OPT_RESTRICTED_AUTH, methods.c_str());
}

void introduce(MYSQL* handle) {
    mysql_optionsv(handle, MYSQL_OPT_CONNECT_ATTR_ADD, "program_name",
                   program_invocation_short_name);
    mysql_optionsv(handle, MYSQL_OPT_CONNECT_ATTR_ADD, "dbservice_version", DBSERVICE_VERSION);
}

bool run(MYSQL* handle, const std::string& statement) {
    return mysql_real_query(handle, statement.data(), statement.size()) == 0;
}

/// Every session is pinned to what the statements rely on, whatever the server's defaults: UTF-8,
/// strict (a value that does not fit is refused, not changed) and with backslash escapes. The rest
/// is for speed, and for the server to end what takes too long; one that does not know it goes
/// without. MySQL has a limit for queries only.
bool pinSession(MYSQL* handle, const Timeouts& timeouts) {
    const std::string pin =
        "SET NAMES utf8mb4,sql_mode='STRICT_TRANS_TABLES',autocommit=1,innodb_lock_wait_timeout=" +
        std::to_string(inSeconds(timeouts.lock));
    // So that the server has said that it ended a statement before we stop listening.
    const milliseconds ahead =
        std::min<milliseconds>(timeouts.answer / 10, std::chrono::seconds(1));
    const std::string limit = std::to_string((timeouts.answer - ahead).count());
    // MariaDB sorts row numbers and then fetches each row a second time, unless rows as wide as the
    // library's may take part in the sort.
    const std::string more =
        "/*M!100101 ,max_length_for_sort_data=16384,max_statement_time=" + limit +
        "/1000*//*!80000 ,max_execution_time=" + limit + "*/";
    return run(handle, pin + more) || (mysql_errno(handle) == kUnknownVariable && run(handle, pin));
}

/// Lets the system notice a peer that vanished without a word. Has no effect on a unix socket.
void keepAlive(MYSQL* handle, const Timeouts& timeouts) {
    const auto set = [socket = mysql_get_socket(handle)](int option, int value) {
        setsockopt(socket, IPPROTO_TCP, option, &value, sizeof value);
    };
    set(TCP_KEEPIDLE, 30);
    set(TCP_KEEPINTVL, 10);
    set(TCP_KEEPCNT, 3);
    set(TCP_USER_TIMEOUT, static_cast<int>(timeouts.answer.count()));
}

Error loginError(MYSQL* handle, const WaitLimit& wait, milliseconds limit, bool fetchServerKey) {
    Error error = errorOf(handle);
    if (wait.ended())
        return makeError(kCannotConnect, "no login within " + std::to_string(limit.count()) +
                                             " ms: " + error.message);
    if (error.number == kMethodNotAllowed || (error.number == kSomethingFailed && !fetchServerKey))
        return makeError(kUnsafeLogin,
                         "the server asks for the password in a way that is not allowed on an "
                         "unverified connection");
    return error.number == kTlsError ? error : connectError(error);
}

}  // namespace

Handle logIn(const ServerAddress& server, const Account& account, const Settings& settings,
             milliseconds limit, Error& error) {
    static std::once_flag once;
    std::call_once(once, [] { mysql_library_init(0, nullptr, nullptr); });
    Handle handle(mysql_init(nullptr));
    if (!handle) {
        error = makeError(kOutOfMemory, "out of memory");
        return nullptr;
    }
    const unsigned int off = 0;
    mysql_optionsv(handle.get(), MYSQL_OPT_LOCAL_INFILE, &off);  // a server may not read our files
    mysql_optionsv(handle.get(), MYSQL_SET_CHARSET_NAME, "utf8mb4");
    const TlsMode mode = tlsModeOf(server, settings.tls);
    setLimits(handle.get(), settings.timeouts, limit);
    setTls(handle.get(), mode, settings.tls);
    restrictLogin(handle.get(), isLocal(server), mode, settings.fetchServerKey);
    introduce(handle.get());
    const std::string& path = server.socket.empty() ? settings.localSocket : server.socket;
    const char* name = server.socket.empty() ? server.name.c_str() : nullptr;
    const char* socket = isLocal(server) && !path.empty() ? path.c_str() : nullptr;

    const WaitLimit wait(handle.get(), WaitLimit::Clock::now() + limit);
    // CLIENT_FOUND_ROWS: an update counts the rows that it met, also those that were so already.
    // The options are remembered for their end, see Close.
    if (mysql_real_connect(handle.get(), name, account.user.c_str(), account.password.c_str(),
                           nullptr, server.port, socket,
                           CLIENT_FOUND_ROWS | CLIENT_REMEMBER_OPTIONS) == nullptr) {
        error = loginError(handle.get(), wait, limit, settings.fetchServerKey);
        return nullptr;
    }
    if (!pinSession(handle.get(), settings.timeouts)) {
        error = connectError(errorOf(handle.get()));
        return nullptr;
    }
    keepAlive(handle.get(), settings.timeouts);
    return handle;
}

Error errorOf(MYSQL* handle) {
    return Error{static_cast<int>(mysql_errno(handle)), mysql_sqlstate(handle),
                 mysql_error(handle)};
}

Error connectError(Error error) {
    if (error.number == kServerLost || error.number == kServerGone || error.number == kTlsError)
        return makeError(kCannotConnect, error.message);
    return error;
}

}  // namespace dbaccess::mariadb
