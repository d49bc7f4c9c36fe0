#include "dbservice/devices/DeviceMgr.h"

#include <utility>

namespace dbservice {

DeviceMgr::DeviceMgr(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

}  // namespace dbservice
