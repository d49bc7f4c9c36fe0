#ifndef DBSERVICE_CONNECTIONPROPERTY_H
#define DBSERVICE_CONNECTIONPROPERTY_H

#include <string>
#include <utility>

namespace dbservice {

/// Where the database is and how to connect to it; see `DBService::Initialize`.
struct DB_CONNECTION_PROPERTY {
    DB_CONNECTION_PROPERTY() = default;
    /// All settings, in the order of the members.
    DB_CONNECTION_PROPERTY(std::string serverHost, int serverPort, std::string account,
                           std::string accountPassword, std::string database,
                           unsigned int minConnections, unsigned int maxConnections,
                           bool autoReconnect, bool waitForConnection)
        : host(std::move(serverHost)),
          port(serverPort),
          user(std::move(account)),
          password(std::move(accountPassword)),
          dbName(std::move(database)),
          accessParamA(minConnections),
          accessParamB(maxConnections),
          accessFlagA(autoReconnect),
          accessFlagB(waitForConnection) {}

    /// "db1" (a server over TCP), "localhost" or "/run/db.sock" (its unix socket), "db1,db2:3307"
    /// (servers tried in order), "sqlite:DIR" (the embedded engine, files in the directory DIR,
    /// which must exist: nothing makes it).
    std::string host;
    int port = 3306;  ///< TCP port of entries of `host` that name none
    /// The account on the server; DBService tells the rights it needs. Empty: the name of the
    /// system's user that the program runs as, as the client library finds it; over a unix socket a
    /// server may let it in without a password. The embedded engine has no accounts.
    std::string user;
    std::string password;            ///< of the account; empty for none
    std::string dbName;              ///< the database; embedded: the file DIR/dbName.db
    unsigned int accessParamA = 5;   ///< connections opened by Initialize and kept
    unsigned int accessParamB = 10;  ///< most connections at a time
    bool accessFlagA = true;         ///< replace lost connections
    bool accessFlagB = true;         ///< wait (30 s at most) when all connections are busy
};

}  // namespace dbservice

#endif
