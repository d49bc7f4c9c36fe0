#include "dbservice/recording/StorageMgr.h"

#include <utility>

namespace dbservice {

StorageMgr::StorageMgr(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

}  // namespace dbservice
