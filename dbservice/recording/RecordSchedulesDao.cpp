#include "dbservice/recording/RecordSchedulesDao.h"

#include <utility>

#include "dbservice/recording/ScheduleTable.h"
#include "dbservice/statement/ReadRows.h"

namespace dbservice {

using recording::ScheduleTable;

namespace {

constexpr char kTable[] = "recordschedules";

}  // namespace

RecordSchedulesDao::RecordSchedulesDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int RecordSchedulesDao::InsertRecordSchedulesImp(const T_Schedules& schedules) {
    return ScheduleTable(dataAccess_, dbName_, kTable).insertWithId(schedules);
}

int RecordSchedulesDao::UpdateRecordSchedulesImp(const T_Schedules& schedules) {
    return ScheduleTable(dataAccess_, dbName_, kTable).update(schedules);
}

int RecordSchedulesDao::DeleteRecordSchedulesImp(std::string guid) {
    return ScheduleTable(dataAccess_, dbName_, kTable).remove(guid);
}

T_SchedulesList* RecordSchedulesDao::QueryRecordSchedulesImp(std::string guid) {
    return ScheduleTable(dataAccess_, dbName_, kTable).query(guid);
}

int RecordSchedulesDao::SetValue(dbaccess::ResultSet* row, T_Schedules* schedules) {
    return ScheduleTable::setValue(row, schedules);
}

void RecordSchedulesDao::ReleaseRecordSchedules(T_SchedulesList* list) {
    statement::release(list);
}

}  // namespace dbservice
