#ifndef DBSERVICE_RECORDING_RECORDSCHEDULESDAO_H
#define DBSERVICE_RECORDING_RECORDSCHEDULESDAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/recording/RecordingRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table recordschedules.
class DBSERVICE_API RecordSchedulesDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    RecordSchedulesDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    RecordSchedulesDao(const RecordSchedulesDao&) = default;
    RecordSchedulesDao& operator=(const RecordSchedulesDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int InsertRecordSchedulesImp(const T_Schedules& schedules);
    int UpdateRecordSchedulesImp(const T_Schedules& schedules);
    int DeleteRecordSchedulesImp(std::string guid);
    T_SchedulesList* QueryRecordSchedulesImp(std::string guid);
    void ReleaseRecordSchedules(T_SchedulesList* list);
    /// @}

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_Schedules* schedules);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
