#ifndef DBSERVICE_ACCOUNTS_USERINFODAO_H
#define DBSERVICE_ACCOUNTS_USERINFODAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/accounts/AccountRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table userinfo.
class DBSERVICE_API UserInfoDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    UserInfoDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    UserInfoDao(const UserInfoDao&) = default;
    UserInfoDao& operator=(const UserInfoDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int LoginImp(const std::string& userName, const std::string& password);
    int InsertUserInfoImp(const T_UserInfo& user);
    int UpdateUserInfoImp(const T_UserInfo& user);
    int DeleteUserInfoImp(std::string guid);
    T_UserInfoList* QueryUserInfoImp(std::string guid, std::string userName, std::string password);
    void ReleaseUserInfo(T_UserInfoList* list);
    /// @}

    /// Always 0, without a look at the database: use `QueryUserInfoImp`.
    int IsExistUserImp(const T_UserInfo& user);

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_UserInfo* user);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
