#ifndef DBSERVICE_DBSERVICE_H
#define DBSERVICE_DBSERVICE_H

#include <cstdint>
#include <deque>
#include <memory>
#include <string>

#include "base/Export.h"
#include "dbaccess/ResultSet.h"
#include "dbservice/ConnectionProperty.h"
#include "dbservice/Helpers.h"
#include "dbservice/accounts/AccountRecords.h"

namespace dbaccess {
class DataAccess;
}

namespace dbservice {

class ServerInfoDao;

/// The configuration and event data of a video-surveillance management system, in a database.
///
/// One object serves the whole process: `Initialize` makes it, `GetDBServiceObject` gives it,
/// `Cleanup` destroys it. An object made by hand is connected to nothing.
///
/// What its operations have in common:
/// - Inserts and updates return 0 for success (also when no row was met, unless said otherwise), or
///   a negative number: the negated MySQL error number, as -1062 for a duplicate key, whatever the
///   engine. `dbaccess::LastError` tells the rest.
/// - Deletes return the number of rows deleted, or the negated error number.
/// - Queries return a list or record on the heap, to be given back to the Release operation of the
///   entity before `Cleanup`; Release operations ignore null.
/// - An object that is not connected answers -1, null, false, or does nothing.
/// - Text values go into the statements as they are. A quote or backslash in a value becomes part of
///   the statement: callers escape text that they do not control.
/// - Keys (`Guid`) are made by the caller, see `getGuid`.
/// - Nothing throws.
///
/// Threads: all operations may be called from any number of threads at once; `Cleanup` must not run
/// beside any other.
class DBSERVICE_API DBService {
public:
    /// Makes the process-wide object and connects it. Prints a line on standard output, always.
    /// @return  1 when connected, and also, without looking at the settings, when the object is
    ///          there already; -1 when the database could not be reached. The object then exists all
    ///          the same: with `accessFlagA` its operations keep trying, so that a program started
    ///          before its database recovers by itself. To use other settings call `Cleanup` first.
    static int Initialize(const DB_CONNECTION_PROPERTY& settings);

    /// Disconnects and destroys the object, if there is one. Always returns 1.
    static int Cleanup();

    /// The process-wide object; null before `Initialize` and after `Cleanup`.
    static DBService* GetDBServiceObject();

    /// Frees a set that `Query` returned; null is ignored.
    static void ReleaseResulitSet(dbaccess::ResultSet* set);

    DBService();
    DBService(const DBService&) = delete;
    DBService& operator=(const DBService&) = delete;
    virtual ~DBService();

    /// The database that all statements are for; empty when not connected.
    std::string getDBName() const;

    // Raw statements, in MySQL's dialect on both engines. Results as in dbaccess::DataAccess: the
    // number of affected rows, 0, or the negated error number.

    std::int64_t Insert(std::string statement);
    int Update(std::string statement);
    /// All statements in one transaction: all take effect or none does.
    int Update(std::deque<std::string>& statements);
    int Execute(std::string statement);
    /// The rows, to be given to `ReleaseResulitSet`; null when the statement failed.
    dbaccess::ResultSet* Query(std::string statement);

    // Recording servers.

    /// Adds a server. -1062 when its Guid is there already.
    int InsertServerInfo(const T_ServerInfo& server);
    /// Changes the server with this Guid. 0 also when there is none.
    int UpdateServerInfo(const T_ServerInfo& server);
    /// Deletes the server with this Guid. An empty Guid is a key like any other.
    int DeleteServerInfo(const std::string& guid);
    /// The server with this Guid, or with an empty Guid all servers in the order in which they were
    /// added; null when there is none and when the query failed.
    T_ServerInfoList* QueryServerInfo(const std::string& guid);
    void ReleaseServerInfo(T_ServerInfoList* list);

private:
    bool creatDBAccess(DB_CONNECTION_PROPERTY settings);

    std::unique_ptr<dbaccess::DataAccess> dataAccess_;
    std::string dbName_;
    std::unique_ptr<ServerInfoDao> serverInfoDao_;
};

}  // namespace dbservice

#endif
