#include "dbservice/accounts/UserTypeDao.h"

#include <utility>

namespace dbservice {

UserTypeDao::UserTypeDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int UserTypeDao::Load() {
    return 0;
}

std::string UserTypeDao::QueryDeviceTypeDaoImp(int) {
    return {};
}

}  // namespace dbservice
