#ifndef DBSERVICE_ACCOUNTS_USERTYPEDAO_H
#define DBSERVICE_ACCOUNTS_USERTYPEDAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/accounts/AccountRecords.h"

namespace dbaccess {
class DataAccess;
}  // namespace dbaccess

namespace dbservice {

/// Kinds of users. There is no table behind it, and the service makes none.
class DBSERVICE_API UserTypeDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    UserTypeDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    UserTypeDao(const UserTypeDao&) = default;
    UserTypeDao& operator=(const UserTypeDao&) = default;

    /// Always 0.
    int Load();
    /// Always empty.
    std::string QueryDeviceTypeDaoImp(int type);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
