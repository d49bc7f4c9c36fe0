#ifndef DBSERVICE_RECORDING_SCHEDULESMGR_H
#define DBSERVICE_RECORDING_SCHEDULESMGR_H

#include <string>

#include "base/Export.h"

namespace dbaccess {
class DataAccess;
}  // namespace dbaccess

namespace dbservice {

/// Made and destroyed with the service, and used for nothing else.
class DBSERVICE_API SchedulesMgr {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    SchedulesMgr(dbaccess::DataAccess* dataAccess, std::string dbName);
    SchedulesMgr(const SchedulesMgr&) = default;
    SchedulesMgr& operator=(const SchedulesMgr&) = default;

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
