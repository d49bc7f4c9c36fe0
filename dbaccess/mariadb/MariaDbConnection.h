#ifndef DBSERVICE_DBACCESS_MARIADB_MARIADBCONNECTION_H
#define DBSERVICE_DBACCESS_MARIADB_MARIADBCONNECTION_H

#include <mysql.h>

#include <memory>
#include <string>

#include "dbaccess/mariadb/KeptStatement.h"
#include "dbaccess/mariadb/MariaDbConnector.h"
#include "dbaccess/pool/Connection.h"
#include "dbaccess/pool/HostText.h"
#include "dbaccess/reader/RecentlyUsed.h"

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

    /// What the connection knows of a skeleton.
    struct Known {
        std::unique_ptr<KeptStatement> statement;  // from its second sight on
        bool seen = false;
        bool asText = false;  // it cannot be kept, or not with the same outcome
    };

    explicit MariaDbConnection(Handle handle);

    bool readLimits(Error& error);
    void tuneSession();
    Outcome selectDatabase(const std::string& dbName);
    Outcome send(std::string_view text);
    bool mayKeep(const Statement& statement) const;
    bool runKept(const Statement& statement, Outcome& outcome);
    void prepare(const Statement& statement, Known& known, Outcome& outcome);
    Outcome run(KeptStatement& kept, const Skeleton& skeleton);
    Outcome receive();
    Outcome receiveRows(MYSQL_RES* result);
    void skipFurtherResults();
    void endStrayTransaction();
    Outcome failure();
    Outcome failure(Error error);

    RecentlyUsed<Known> known_;  // by database and skeleton; outlives the session
    Handle handle_;
    std::string database_;
    std::size_t largestText_ = 0;
    bool mariaDb_ = false;  // not a MySQL server
    bool bindsArrays_ = false;
    bool mayKeep_ = true;  // the session reads texts as the statement reader does
    bool inTransaction_ = false;
    bool usable_ = true;
};

}  // namespace dbaccess::mariadb

#endif
