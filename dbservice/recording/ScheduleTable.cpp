#include "dbservice/recording/ScheduleTable.h"

#include "dbservice/statement/NextId.h"
#include "dbservice/statement/ReadRows.h"
#include "dbservice/statement/Result.h"
#include "dbservice/statement/Text.h"

namespace dbservice::recording {

using namespace statement;

/// Writes the largest Id itself, not the next one, deliberately: schedules may share an Id.
int ScheduleTable::insertWithId(const T_Schedules& schedules) const {
    const auto id = static_cast<int>(largestId(dataAccess_, dbName_, table_));
    std::string text = compose(
        "insert into {}(Guid,Name,Schedules,SchedulesType,Id) values('{}','{}','{}',{},{});",
        table_, schedules.Guid, schedules.Name, schedules.Schedules, schedules.SchedulesType, id);
    return zeroOrError(dataAccess_.Insert(dbName_, std::move(text)));
}

int ScheduleTable::insertWithoutId(const T_Schedules& schedules) const {
    std::string text = compose(
        "insert into {}(Guid,Name,Schedules,SchedulesType) values('{}','{}','{}',{});", table_,
        schedules.Guid, schedules.Name, schedules.Schedules, schedules.SchedulesType);
    return zeroOrError(dataAccess_.Insert(dbName_, std::move(text)));
}

int ScheduleTable::update(const T_Schedules& schedules) const {
    std::string text = compose(
        "update {} set Guid = '{}',Name = '{}',Schedules = '{}',SchedulesType = '{}'"
        " where Guid = '{}'",
        table_, schedules.Guid, schedules.Name, schedules.Schedules, schedules.SchedulesType,
        schedules.Guid);
    return zeroOrError(dataAccess_.Update(dbName_, std::move(text)));
}

int ScheduleTable::remove(const std::string& guid) const {
    return dataAccess_.Execute(dbName_, compose("delete from {} where Guid='{}'", table_, guid));
}

T_SchedulesList* ScheduleTable::query(const std::string& guid) const {
    std::string text = compose("select Guid,Name,Schedules,SchedulesType from {}", table_);
    if (!guid.empty()) append(text, " where Guid='{}'", guid);
    return listOrNull<T_SchedulesList>(dataAccess_.Query(dbName_, std::move(text)), setValue);
}

int ScheduleTable::setValue(dbaccess::ResultSet* row, T_Schedules* schedules) {
    const dbaccess::Field fields[] = {
        {"Guid", &schedules->Guid},
        {"Name", &schedules->Name},
        {"Schedules", &schedules->Schedules},
        {"SchedulesType", &schedules->SchedulesType},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

}  // namespace dbservice::recording
