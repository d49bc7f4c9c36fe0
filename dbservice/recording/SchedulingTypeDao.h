#ifndef DBSERVICE_RECORDING_SCHEDULINGTYPEDAO_H
#define DBSERVICE_RECORDING_SCHEDULINGTYPEDAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/recording/RecordingRecords.h"

namespace dbaccess {
class DataAccess;
}  // namespace dbaccess

namespace dbservice {

/// Kinds of scheduling. There is no table behind it, and the service makes none.
class DBSERVICE_API SchedulingTypeDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    SchedulingTypeDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    SchedulingTypeDao(const SchedulingTypeDao&) = default;
    SchedulingTypeDao& operator=(const SchedulingTypeDao&) = default;

    /// Always 0.
    int Load();
    /// Always empty.
    std::string QuerySchedulingTypeImp(int type);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
