#ifndef DBSERVICE_ACCOUNTS_USERMGR_H
#define DBSERVICE_ACCOUNTS_USERMGR_H

#include <memory>
#include <string>

#include "base/Export.h"

namespace dbaccess {
class DataAccess;
}

namespace dbservice {

class UserInfoDao;

/// Checks logins, with a UserInfoDao of its own.
class DBSERVICE_API UserMgr {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    UserMgr(dbaccess::DataAccess* dataAccess, std::string dbName);
    UserMgr(const UserMgr&) = delete;
    UserMgr& operator=(const UserMgr&) = delete;
    ~UserMgr();

    /// As `DBService::Login`, which goes on to it.
    int LoginImp(const std::string& userName, const std::string& password);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
    std::unique_ptr<UserInfoDao> userInfoDao_;
};

}  // namespace dbservice

#endif
