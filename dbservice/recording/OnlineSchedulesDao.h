#ifndef DBSERVICE_RECORDING_ONLINESCHEDULESDAO_H
#define DBSERVICE_RECORDING_ONLINESCHEDULESDAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/recording/RecordingRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table onlineschedules.
class DBSERVICE_API OnlineSchedulesDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    OnlineSchedulesDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    OnlineSchedulesDao(const OnlineSchedulesDao&) = default;
    OnlineSchedulesDao& operator=(const OnlineSchedulesDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int InsertOnlineSchedulesImp(const T_Schedules& schedules);
    int UpdateOnlineSchedulesImp(const T_Schedules& schedules);
    int DeleteOnlineSchedulesImp(std::string guid);
    T_SchedulesList* QueryOnlineSchedulesImp(std::string guid);
    void ReleaseOnlineSchedules(T_SchedulesList* list);
    /// @}

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_Schedules* schedules);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
