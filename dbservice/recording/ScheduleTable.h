#ifndef DBSERVICE_RECORDING_SCHEDULETABLE_H
#define DBSERVICE_RECORDING_SCHEDULETABLE_H

#include <string>

#include "dbservice/recording/RecordingRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice::recording {

/// The statements that the three tables of schedules have in common. Internal.
class ScheduleTable {
public:
    ScheduleTable(dbaccess::DataAccess* dataAccess, const std::string& dbName, const char* table)
        : dataAccess_(*dataAccess), dbName_(dbName), table_(table) {}

    int insertWithId(const T_Schedules& schedules) const;
    int insertWithoutId(const T_Schedules& schedules) const;
    int update(const T_Schedules& schedules) const;
    int remove(const std::string& guid) const;
    T_SchedulesList* query(const std::string& guid) const;

    static int setValue(dbaccess::ResultSet* row, T_Schedules* schedules);

private:
    dbaccess::DataAccess& dataAccess_;
    const std::string& dbName_;
    const char* const table_;
};

}  // namespace dbservice::recording

#endif
