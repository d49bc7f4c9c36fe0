#include "dbservice/recording/SchedulingTypeDao.h"

#include <utility>

#include "dbservice/statement/Result.h"

namespace dbservice {

SchedulingTypeDao::SchedulingTypeDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int SchedulingTypeDao::Load() {
    return statement::nothingToDo();
}

std::string SchedulingTypeDao::QuerySchedulingTypeImp(int) {
    statement::nothingToDo();
    return {};
}

}  // namespace dbservice
