#include "dbservice/recording/OnlineSchedulesDao.h"

#include <utility>

#include "dbservice/recording/ScheduleTable.h"
#include "dbservice/statement/ReadRows.h"

namespace dbservice {

using recording::ScheduleTable;

namespace {

constexpr char kTable[] = "onlineschedules";

}  // namespace

OnlineSchedulesDao::OnlineSchedulesDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int OnlineSchedulesDao::InsertOnlineSchedulesImp(const T_Schedules& schedules) {
    return ScheduleTable(dataAccess_, dbName_, kTable).insertWithId(schedules);
}

int OnlineSchedulesDao::UpdateOnlineSchedulesImp(const T_Schedules& schedules) {
    return ScheduleTable(dataAccess_, dbName_, kTable).update(schedules);
}

int OnlineSchedulesDao::DeleteOnlineSchedulesImp(std::string guid) {
    return ScheduleTable(dataAccess_, dbName_, kTable).remove(guid);
}

T_SchedulesList* OnlineSchedulesDao::QueryOnlineSchedulesImp(std::string guid) {
    return ScheduleTable(dataAccess_, dbName_, kTable).query(guid);
}

int OnlineSchedulesDao::SetValue(dbaccess::ResultSet* row, T_Schedules* schedules) {
    return ScheduleTable::setValue(row, schedules);
}

void OnlineSchedulesDao::ReleaseOnlineSchedules(T_SchedulesList* list) {
    statement::release(list);
}

}  // namespace dbservice
