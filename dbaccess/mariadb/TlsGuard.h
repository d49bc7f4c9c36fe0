#ifndef DBSERVICE_DBACCESS_MARIADB_TLSGUARD_H
#define DBSERVICE_DBACCESS_MARIADB_TLSGUARD_H

#include <mysql.h>

namespace dbaccess::mariadb {

/// Refuses servers that do not offer TLS, with error 2026, before the login is sent. The client
/// library logs in to them in clear, whatever it was told of TLS; only for one that is to prove
/// its name it does not. The guard is the login method that a handle begins with, a round trip
/// more: when it has seen that TLS is offered, the server asks for the account's own method.
constexpr const char* kTlsGuard = "dbservice_tls";

/// To be called before `mysql_real_connect`, which then uses TLS or fails. Its waits can be limited
/// from the beginning of TLS on, too.
void guardTls(MYSQL* handle);

}  // namespace dbaccess::mariadb

#endif
