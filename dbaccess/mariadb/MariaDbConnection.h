#ifndef DBSERVICE_DBACCESS_MARIADB_MARIADBCONNECTION_H
#define DBSERVICE_DBACCESS_MARIADB_MARIADBCONNECTION_H

#include <mysql.h>

#include <memory>
#include <string>

#include "dbaccess/mariadb/MariaDbConnector.h"
#include "dbaccess/pool/Connection.h"
#include "dbaccess/pool/HostText.h"

namespace dbaccess::mariadb {

/// One session on a server.
class MariaDbConnection final : public Connection {
public:
    /// Null with `error` set when the server cannot be reached or refuses the login.
    static std::unique_ptr<MariaDbConnection> open(const ServerAddress& server,
                                                   const std::string& user,
                                                   const std::string& password,
                                                   const Timeouts& timeouts, Error& error);

    bool alive() override;
    bool usable() const override { return usable_; }
    Outcome run(const std::string& dbName, const Statement& statement) override;
    Outcome begin(const std::string& dbName) override;
    Outcome commit() override;
    void rollback() override;

private:
    struct Close {
        void operator()(MYSQL* handle) const { mysql_close(handle); }
    };
    using Handle = std::unique_ptr<MYSQL, Close>;

    explicit MariaDbConnection(Handle handle) : handle_(std::move(handle)) {}

    bool readLimits(Error& error);
    Outcome selectDatabase(const std::string& dbName);
    Outcome send(std::string_view text);
    Outcome receive();
    Outcome receiveRows(MYSQL_RES* result);
    void skipFurtherResults();
    void endStrayTransaction();
    Outcome failure();

    Handle handle_;
    std::string database_;
    std::size_t largestText_ = 0;
    bool inTransaction_ = false;
    bool usable_ = true;
};

}  // namespace dbaccess::mariadb

#endif
