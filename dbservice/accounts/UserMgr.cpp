#include "dbservice/accounts/UserMgr.h"

#include <utility>

#include "dbservice/accounts/UserInfoDao.h"

namespace dbservice {

UserMgr::UserMgr(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess),
      dbName_(std::move(dbName)),
      userInfoDao_(new UserInfoDao(dataAccess_, dbName_)) {}

UserMgr::~UserMgr() = default;

int UserMgr::LoginImp(std::string userName, std::string password) {
    return userInfoDao_->LoginImp(std::move(userName), std::move(password));
}

}  // namespace dbservice
