#include "dbservice/recording/SpeedupSchedulingDao.h"

#include <utility>

#include "dbservice/statement/Result.h"

namespace dbservice {

SpeedupSchedulingDao::SpeedupSchedulingDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int SpeedupSchedulingDao::InsertSpeedupSchedulingImp(const T_SpeedupScheduling&) {
    return statement::nothingToDo();
}

int SpeedupSchedulingDao::UpdateSpeedupSchedulingImp(const T_SpeedupScheduling&) {
    return statement::nothingToDo();
}

int SpeedupSchedulingDao::DeleteSpeedupSchedulingImp(const std::string&) {
    return statement::nothingToDo();
}

T_SpeedupScheduling SpeedupSchedulingDao::QuerySpeedupSchedulingImp(const std::string&) {
    statement::nothingToDo();
    return {};
}

}  // namespace dbservice
