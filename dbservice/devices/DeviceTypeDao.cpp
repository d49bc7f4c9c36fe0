#include "dbservice/devices/DeviceTypeDao.h"

#include <utility>

#include "dbservice/statement/Result.h"

namespace dbservice {

DeviceTypeDao::DeviceTypeDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int DeviceTypeDao::Load() {
    return statement::nothingToDo();
}

T_DeviceType* DeviceTypeDao::QueryDeviceTypeDaoImp(int) {
    statement::nothingToDo();
    return nullptr;
}

}  // namespace dbservice
