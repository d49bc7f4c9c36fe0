#include "dbservice/recording/SchedulingTypeDao.h"

#include <utility>

namespace dbservice {

SchedulingTypeDao::SchedulingTypeDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int SchedulingTypeDao::Load() {
    return 0;
}

std::string SchedulingTypeDao::QuerySchedulingTypeImp(int) {
    return {};
}

}  // namespace dbservice
