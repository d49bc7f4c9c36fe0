#ifndef DBSERVICE_ACCOUNTS_SERVERINFODAO_H
#define DBSERVICE_ACCOUNTS_SERVERINFODAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/accounts/AccountRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table serverinfo.
class DBSERVICE_API ServerInfoDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    ServerInfoDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    ServerInfoDao(const ServerInfoDao&) = default;
    ServerInfoDao& operator=(const ServerInfoDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int InsertServerImp(const T_ServerInfo& server);
    int UpdateServerImp(const T_ServerInfo& server);
    int DeleteServerImp(std::string guid);
    T_ServerInfoList* QueryServerImp(std::string guid);
    void ReleaseServerList(T_ServerInfoList* list);
    /// @}

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_ServerInfo* server);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
