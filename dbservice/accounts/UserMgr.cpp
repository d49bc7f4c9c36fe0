#include "dbservice/accounts/UserMgr.h"

#include <utility>

#include "dbservice/accounts/UserInfoDao.h"

namespace dbservice {

UserMgr::UserMgr(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess),
      dbName_(std::move(dbName)),
      userInfoDao_(new UserInfoDao(dataAccess_, dbName_)) {}

UserMgr::~UserMgr() = default;

int UserMgr::LoginImp(const std::string& userName, const std::string& password) {
    return userInfoDao_->LoginImp(userName, password);
}

}  // namespace dbservice
