#include "dbservice/devices/DeviceTypeDao.h"

#include <utility>

namespace dbservice {

DeviceTypeDao::DeviceTypeDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int DeviceTypeDao::Load() {
    return 0;
}

T_DeviceType* DeviceTypeDao::QueryDeviceTypeDaoImp(int) {
    return nullptr;
}

}  // namespace dbservice
