#include "dbservice/recording/SpeedupSchedulingDao.h"

#include <utility>

namespace dbservice {

SpeedupSchedulingDao::SpeedupSchedulingDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int SpeedupSchedulingDao::InsertSpeedupSchedulingImp(const T_SpeedupScheduling&) {
    return 0;
}

int SpeedupSchedulingDao::UpdateSpeedupSchedulingImp(const T_SpeedupScheduling&) {
    return 0;
}

int SpeedupSchedulingDao::DeleteSpeedupSchedulingImp(const std::string&) {
    return 0;
}

T_SpeedupScheduling SpeedupSchedulingDao::QuerySpeedupSchedulingImp(const std::string&) {
    return {};
}

}  // namespace dbservice
