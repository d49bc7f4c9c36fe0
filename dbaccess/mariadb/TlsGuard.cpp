#include "dbaccess/mariadb/TlsGuard.h"

#include <mysql/plugin_auth.h>

#include <mutex>

#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/mariadb/WaitLimit.h"

namespace dbaccess::mariadb {
namespace {

int authenticate(MYSQL_PLUGIN_VIO* connection, MYSQL* handle) {
    if ((handle->server_capabilities & CLIENT_SSL) == 0) {
        handle->methods->set_error(handle, kTlsError, "HY000", "%s",
                                   "TLS is required, but the server does not offer it");
        return CR_ERROR;
    }
    setBlocking(handle, false);
    // Reading what nothing was sent for makes the client library begin TLS and name this method,
    // and the server ask for another one: which is no error for the library.
    unsigned char* answer = nullptr;
    return connection->read_packet(connection, &answer) < 0 ? CR_ERROR : CR_OK_HANDSHAKE_COMPLETE;
}

/// As in mysql/client_plugin.h, which includes a header that is not packaged.
struct LoginMethod {
    MYSQL_CLIENT_PLUGIN_HEADER
    int (*authenticate)(MYSQL_PLUGIN_VIO* connection, MYSQL* handle);
};

LoginMethod makeGuard() {
    LoginMethod guard{};
    guard.type = 2;                    // a login method
    guard.interface_version = 0x0100;  // of such ones
    guard.name = kTlsGuard;
    guard.author = guard.desc = guard.license = "";
    guard.authenticate = &authenticate;
    return guard;
}

}  // namespace

void guardTls(MYSQL* handle) {
    static LoginMethod guard = makeGuard();
    static std::once_flag once;
    std::call_once(once, [&] {
        mysql_client_register_plugin(handle, reinterpret_cast<st_mysql_client_plugin*>(&guard));
    });
    mysql_optionsv(handle, MYSQL_DEFAULT_AUTH, kTlsGuard);
    const my_bool on = 1;
    mysql_optionsv(handle, MYSQL_OPT_SSL_ENFORCE, &on);
}

}  // namespace dbaccess::mariadb
