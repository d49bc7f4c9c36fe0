#include "dbservice/accounts/UserTypeDao.h"

#include <utility>

#include "dbservice/statement/Result.h"

namespace dbservice {

UserTypeDao::UserTypeDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int UserTypeDao::Load() {
    return statement::nothingToDo();
}

std::string UserTypeDao::QueryDeviceTypeDaoImp(int) {
    statement::nothingToDo();
    return {};
}

}  // namespace dbservice
