#ifndef DBSERVICE_DBACCESS_POOL_CONNECTION_H
#define DBSERVICE_DBACCESS_POOL_CONNECTION_H

#include <string>

#include "dbaccess/pool/Outcome.h"
#include "dbaccess/reader/Statement.h"

namespace dbaccess {

/// One connection to a database, used by one thread at a time. Nothing throws but bad_alloc.
class Connection {
public:
    Connection() = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    virtual ~Connection() = default;

    /// Looks, without a round trip, whether the other side has hung up. False: nothing was sent and
    /// the connection is of no use.
    virtual bool alive() = 0;

    /// False once a failure has made the connection useless; it is then to be closed.
    virtual bool usable() const = 0;

    /// Runs one statement in the named database. `statement.kind` is never Transaction or Use.
    virtual Outcome run(const std::string& dbName, const Statement& statement) = 0;

    /// A transaction around the runs between them, all in the database named at its begin. After a
    /// failed run or commit nothing but `rollback` may follow.
    virtual Outcome begin(const std::string& dbName) = 0;
    virtual Outcome commit() = 0;
    /// Ends the transaction without effect.
    virtual void rollback() = 0;
};

}  // namespace dbaccess

#endif
