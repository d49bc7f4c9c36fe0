#ifndef DBSERVICE_RECORDING_ONLINESCHEDULINGDAO_H
#define DBSERVICE_RECORDING_ONLINESCHEDULINGDAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/recording/RecordingRecords.h"

namespace dbaccess {
class DataAccess;
}  // namespace dbaccess

namespace dbservice {

/// There is no table behind it, and the service makes none.
class DBSERVICE_API OnlineSchedulingDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    OnlineSchedulingDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    OnlineSchedulingDao(const OnlineSchedulingDao&) = default;
    OnlineSchedulingDao& operator=(const OnlineSchedulingDao&) = default;

    /// @{
    /// Does nothing, and answers 0 or a default record.
    int InsertOnlineSchedulingImp(const T_OnlineScheduling& scheduling);
    int UpdateOnlineSchedulingImp(const T_OnlineScheduling& scheduling);
    int DeleteOnlineSchedulingImp(std::string guid);
    T_OnlineScheduling QueryOnlineSchedulingImp(std::string guid);
    /// @}

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
