#ifndef DBSERVICE_DBACCESS_MARIADB_LOGIN_H
#define DBSERVICE_DBACCESS_MARIADB_LOGIN_H

#include <mysql.h>

#include <chrono>
#include <memory>
#include <string>

#include "dbaccess/LastError.h"
#include "dbaccess/pool/HostText.h"
#include "dbaccess/settings/Settings.h"

namespace dbaccess::mariadb {

struct Account {
    std::string user;
    std::string password;
};

struct Close {
    void operator()(MYSQL* handle) const {
        // The one option that the client library leaves behind.
        mysql_optionsv(handle, MYSQL_SERVER_PUBLIC_KEY, nullptr);
        mysql_close(handle);
    }
};
using Handle = std::unique_ptr<MYSQL, Close>;

/// Connects to a server and logs in; the session is pinned to what the statements rely on. Takes
/// `limit` at most. Null with `error` set on failure, of which no statement can be in doubt.
Handle logIn(const ServerAddress& server, const Account& account, const Settings& settings,
             std::chrono::milliseconds limit, Error& error);

/// Servers and the client library count in seconds: part of one is a whole one.
inline std::chrono::seconds::rep inSeconds(std::chrono::milliseconds time) {
    return std::chrono::ceil<std::chrono::seconds>(time).count();
}

/// The error of the last call on the handle.
Error errorOf(MYSQL* handle);

/// An error after the login and before the first statement: a lost connection is one that could not
/// be made. Callers take a 2013 for one in doubt, and there is none.
Error connectError(Error error);

}  // namespace dbaccess::mariadb

#endif
