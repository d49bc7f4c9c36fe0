#ifndef DBSERVICE_DBACCESS_MARIADB_MARIADBCONNECTION_H
#define DBSERVICE_DBACCESS_MARIADB_MARIADBCONNECTION_H

#include <mysql.h>

#include <chrono>
#include <memory>
#include <string>

#include "dbaccess/mariadb/KeptStatement.h"
#include "dbaccess/mariadb/Login.h"
#include "dbaccess/mariadb/Servers.h"
#include "dbaccess/pool/Connection.h"
#include "dbaccess/pool/HostText.h"
#include "dbaccess/reader/RecentlyUsed.h"

namespace dbaccess::mariadb {

/// One session on a server.
class MariaDbConnection final : public Connection {
public:
    /// Null with `error` set when the server cannot be reached within the limit or refuses the
    /// login.
    static std::unique_ptr<MariaDbConnection> open(std::shared_ptr<Servers> servers,
                                                   Hosts::Index host, const ServerAddress& address,
                                                   const Account& account, const Settings& settings,
                                                   std::chrono::milliseconds limit, Error& error);
    ~MariaDbConnection() override;

    Hosts::Index host() const { return host_; }
    Standing standing() const { return standing_; }

    /// Belongs from now on to this epoch of the servers. @return  false for 0, which is none.
    bool join(std::uint64_t epoch);

    bool alive() override;
    bool usable() const override { return usable_ && servers_->hosts.isCurrent(epoch_); }
    void endBy(TimePoint time) override { endBy_ = time; }
    Outcome run(const std::string& dbName, const Statement& statement) override;
    Outcome runAgain(const std::string& dbName, const Statement& query) override;
    Outcome begin(const std::string& dbName) override;
    Outcome commit() override;
    void rollback() override;

private:
    /// What the connection knows of a skeleton.
    struct Known {
        std::unique_ptr<KeptStatement> statement;  // from its second sight on
        bool seen = false;
        bool asText = false;  // it cannot be kept, or not with the same outcome
    };

    class Timed;

    MariaDbConnection(std::shared_ptr<Servers> servers, Hosts::Index host, Handle handle,
                      const Settings& settings);

    bool lookAround(Error& error);
    bool readLimits(Error& error);
    bool readClusterState(Error& error);
    Outcome runTimed(const std::string& dbName, const Statement& statement);
    Outcome runIn(const std::string& dbName, const Statement& statement);
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

    const std::shared_ptr<Servers> servers_;
    const Hosts::Index host_;
    const Settings settings_;
    RecentlyUsed<Known> known_;  // by database and skeleton; outlives the session
    std::string knownKey_;       // one of them, whose memory is used again
    Handle handle_;
    Watch::Session watched_;  // gone before the handle's socket is
    std::uint64_t epoch_ = 0;
    TimePoint endBy_ = TimePoint::max();
    Standing standing_ = Standing::Fit;
    std::string database_;
    std::size_t largestText_ = 0;
    bool mariaDb_ = false;  // not a MySQL server
    bool bindsArrays_ = false;
    bool mayKeep_ = true;  // the session reads texts as the statement reader does
    bool inTransaction_ = false;
    bool inReadOnlyTransaction_ = false;
    bool usable_ = true;
};

}  // namespace dbaccess::mariadb

#endif
