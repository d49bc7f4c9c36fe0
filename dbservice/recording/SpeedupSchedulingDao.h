#ifndef DBSERVICE_RECORDING_SPEEDUPSCHEDULINGDAO_H
#define DBSERVICE_RECORDING_SPEEDUPSCHEDULINGDAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/recording/RecordingRecords.h"

namespace dbaccess {
class DataAccess;
}  // namespace dbaccess

namespace dbservice {

/// There is no table behind it, and the service makes none.
class DBSERVICE_API SpeedupSchedulingDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    SpeedupSchedulingDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    SpeedupSchedulingDao(const SpeedupSchedulingDao&) = default;
    SpeedupSchedulingDao& operator=(const SpeedupSchedulingDao&) = default;

    /// @{
    /// Does nothing, and answers 0 or a default record.
    int InsertSpeedupSchedulingImp(const T_SpeedupScheduling& scheduling);
    int UpdateSpeedupSchedulingImp(const T_SpeedupScheduling& scheduling);
    int DeleteSpeedupSchedulingImp(const std::string& guid);
    T_SpeedupScheduling QuerySpeedupSchedulingImp(const std::string& guid);
    /// @}

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
