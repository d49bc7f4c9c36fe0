#include "dbservice/recording/SchedulesMgr.h"

#include <utility>

namespace dbservice {

SchedulesMgr::SchedulesMgr(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

}  // namespace dbservice
