#ifndef DBSERVICE_DBACCESS_POOL_CONNECTION_H
#define DBSERVICE_DBACCESS_POOL_CONNECTION_H

#include <string>

#include "dbaccess/pool/Outcome.h"
#include "dbaccess/pool/Timeouts.h"
#include "dbaccess/reader/Statement.h"

namespace dbaccess {

/// One connection to a database, used by one thread at a time. Nothing throws but bad_alloc.
class Connection {
public:
    Connection() = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    virtual ~Connection() = default;

    /// Looks, without a round trip, whether the other side has hung up, or is not the one to be
    /// used any more. False: nothing was sent and the connection is of no use.
    virtual bool alive() = 0;

    /// When whatever is run from now on is to be over, besides the limits of each statement.
    virtual void endBy(TimePoint /*time*/) {}

    /// False once a failure has made the connection useless; it is then to be closed.
    virtual bool usable() const = 0;

    /// Runs one statement in the named database. `statement.kind` is never Transaction or Use.
    virtual Outcome run(const std::string& dbName, const Statement& statement) = 0;

    /// Runs a query that may have run before, on a connection that then broke. One that would
    /// change data, as by a function that it calls, ends in 1792 instead.
    virtual Outcome runAgain(const std::string& dbName, const Statement& query) {
        return run(dbName, query);
    }

    /// A transaction around the runs between them, all in the database named at its begin. After a
    /// failed run or commit nothing but `rollback` may follow.
    virtual Outcome begin(const std::string& dbName) = 0;
    virtual Outcome commit() = 0;
    /// Ends the transaction without effect.
    virtual void rollback() = 0;
};

}  // namespace dbaccess

#endif
