#ifndef DBSERVICE_RECORDING_SPEEDUPSCHEDULESDAO_H
#define DBSERVICE_RECORDING_SPEEDUPSCHEDULESDAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/recording/RecordingRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table speedupschedules.
class DBSERVICE_API SpeedupSchedulesDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    SpeedupSchedulesDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    SpeedupSchedulesDao(const SpeedupSchedulesDao&) = default;
    SpeedupSchedulesDao& operator=(const SpeedupSchedulesDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int InsertSpeedupSchedulesImp(const T_Schedules& schedules);
    int UpdateSpeedupSchedulesImp(const T_Schedules& schedules);
    int DeleteSpeedupSchedulesImp(std::string guid);
    T_SchedulesList* QuerySpeedupSchedulesImp(std::string guid);
    void ReleaseSpeedupSchedules(T_SchedulesList* list);
    /// @}

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_Schedules* schedules);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
