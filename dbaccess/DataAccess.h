#ifndef DBSERVICE_DBACCESS_DATAACCESS_H
#define DBSERVICE_DBACCESS_DATAACCESS_H

#include <cstdint>
#include <deque>
#include <memory>
#include <string>

#include "base/Export.h"
#include "dbaccess/Engine.h"
#include "dbaccess/LastError.h"
#include "dbaccess/ResultSet.h"

namespace dbaccess {

/// Runs statements of MySQL's dialect on a pool of connections.
///
/// The host text picks the engine:
///
/// | host                         | engine                                                      |
/// | ---------------------------- | ----------------------------------------------------------- |
/// | "db1", "10.0.0.5"            | a MariaDB or MySQL server over TCP at `port` (0: 3306)      |
/// | "localhost", "/run/db.sock"  | such a server on this machine, over its unix socket         |
/// | "db1,db2:3307"               | such servers, one in use at a time: the first that is fit    |
/// | "sqlite:DIR"                 | embedded: the file DIR/NAME.db for each database NAME       |
///
/// DIR must exist, and so must the databases and tables that statements name.
///
/// Every operation names the database it is for and answers alike on both engines: a positive count
/// of affected rows (never an auto-increment value), 0 when no row was affected, and on failure the
/// negated MySQL error number, as -1062 for a duplicate key (`LastError` tells the rest). Each call
/// carries one statement; a second one in the text is a syntax error.
///
/// What became of a statement is certain unless the answer is -2013: the connection was lost after
/// sending and the statement may have run. A write is then never sent again; a read is. A
/// connection found dead before sending is replaced unseen.
///
/// `SET` statements that concern the session (as SET NAMES) are taken over by every connection of
/// the pool, present and future. Transactions are run by the list form of `Update` alone: BEGIN,
/// COMMIT, LOCK TABLES and the like are refused with -1235.
///
/// Nothing waits without a bound: 45 s for a call as a whole, of it 5 s to connect to one server,
/// 30 s for a free connection, 10 s for another writer's lock, 35 s for an answer, unless the
/// settings say otherwise.
///
/// A process that is forked needs a `DataAccess` of its own for servers; embedded databases are
/// refused to it until it has called exec.
///
/// Threads: all operations may be called from any number of threads at once.
class DBSERVICE_API DataAccess {
public:
    /// Only keeps the settings; nothing is connected yet. An ill-formed host is reported by
    /// `Initialize` and by every statement. An empty user is the system's user that the
    /// program runs as; the embedded engine has no accounts.
    DataAccess(const std::string& host, unsigned int port, const std::string& user,
               const std::string& password);
    /// @param options  settings, one `key=value` on a line, as "answer-timeout=10s\nmax-age=5min";
    ///                 they win over those of the environment and of the client's option files,
    ///                 which every DataAccess reads when it is made (docs/settings.md). One that is
    ///                 unknown or ill-formed anywhere there is reported as an ill-formed host is,
    ///                 with -2034.
    DataAccess(const std::string& host, unsigned int port, const std::string& user,
               const std::string& password, const std::string& options);
    DataAccess(const DataAccess&) = delete;
    DataAccess& operator=(const DataAccess&) = delete;
    virtual ~DataAccess();

    /// Sizes the pool and opens its first connections.
    /// @param minConnections     opened now and kept open; 0 still tries one.
    /// @param maxConnections     never more than this at a time; less than the minimum (or 0) means
    ///                           the minimum.
    /// @param autoReconnect      replace lost connections; when off, a lost one is gone for good
    ///                           and once all are, statements answer -2006.
    /// @param waitForConnection  when all connections are busy, wait for one (30 s, then -1040);
    ///                           when off, answer -1040 at once.
    /// @return  true when the minimum could be opened. After a false with `autoReconnect`, later
    ///          statements try again: a program started before its database recovers by itself.
    bool Initialize(unsigned int minConnections, unsigned int maxConnections, bool autoReconnect,
                    bool waitForConnection);

    /// Runs a statement and reads all its rows.
    /// @return  the rows (none for a statement that has no result), or null on failure.
    ResultSet* Query(std::string dbName, std::string statement);

    /// Runs a statement. @return affected rows, 0, or the negated error number.
    std::int64_t Insert(std::string dbName, std::string statement);

    /// Runs a statement. @return affected rows, 0, or the negated error number.
    int Update(std::string dbName, std::string statement);

    /// Runs all statements of the list, in order, in one transaction: all take effect or none does.
    /// Statements that would commit by themselves (CREATE, DROP, ...) are refused with -1235.
    /// @return  the sum of affected rows, 0 for an empty list, or the negated number of the first
    ///          error. The list is left as it was.
    int Update(std::string dbName, std::deque<std::string>& statements);

    /// Runs a statement. @return affected rows, 0, or the negated error number.
    int Execute(std::string dbName, std::string statement);

    /// Frees a set that `Query` returned; null is ignored.
    static void ReleaseResulitSet(ResultSet* set);

    /// The engine that the host text picked.
    Engine engine() const noexcept;

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace dbaccess

#endif
