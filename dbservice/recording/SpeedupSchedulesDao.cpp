#include "dbservice/recording/SpeedupSchedulesDao.h"

#include <utility>

#include "dbservice/recording/ScheduleTable.h"
#include "dbservice/statement/ReadRows.h"

namespace dbservice {

using recording::ScheduleTable;

namespace {

constexpr char kTable[] = "speedupschedules";

}  // namespace

SpeedupSchedulesDao::SpeedupSchedulesDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int SpeedupSchedulesDao::InsertSpeedupSchedulesImp(const T_Schedules& schedules) {
    return ScheduleTable(dataAccess_, dbName_, kTable).insertWithoutId(schedules);
}

int SpeedupSchedulesDao::UpdateSpeedupSchedulesImp(const T_Schedules& schedules) {
    return ScheduleTable(dataAccess_, dbName_, kTable).update(schedules);
}

int SpeedupSchedulesDao::DeleteSpeedupSchedulesImp(std::string guid) {
    return ScheduleTable(dataAccess_, dbName_, kTable).remove(guid);
}

T_SchedulesList* SpeedupSchedulesDao::QuerySpeedupSchedulesImp(std::string guid) {
    return ScheduleTable(dataAccess_, dbName_, kTable).query(guid);
}

int SpeedupSchedulesDao::SetValue(dbaccess::ResultSet* row, T_Schedules* schedules) {
    return ScheduleTable::setValue(row, schedules);
}

void SpeedupSchedulesDao::ReleaseSpeedupSchedules(T_SchedulesList* list) {
    statement::release(list);
}

}  // namespace dbservice
