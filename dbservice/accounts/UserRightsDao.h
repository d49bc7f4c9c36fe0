#ifndef DBSERVICE_ACCOUNTS_USERRIGHTSDAO_H
#define DBSERVICE_ACCOUNTS_USERRIGHTSDAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/accounts/AccountRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table userrights.
class DBSERVICE_API UserRightsDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    UserRightsDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    UserRightsDao(const UserRightsDao&) = default;
    UserRightsDao& operator=(const UserRightsDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int InsertUserRightsImp(const T_UserRights& rights);
    int UpdateUserRightsImp(const T_UserRights& rights);
    int DeleteUserRightsImp(std::string userGuid);
    T_UserRights* QueryUserRightsImp(std::string userGuid);
    void ReleaseUserRights(T_UserRights* rights);
    /// @}

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_UserRights* rights);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
