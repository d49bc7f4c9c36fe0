#ifndef DBSERVICE_DEVICES_DEVICEMGR_H
#define DBSERVICE_DEVICES_DEVICEMGR_H

#include <string>

#include "base/Export.h"

namespace dbaccess {
class DataAccess;
}  // namespace dbaccess

namespace dbservice {

/// Made and destroyed with the service, and used for nothing else.
class DBSERVICE_API DeviceMgr {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    DeviceMgr(dbaccess::DataAccess* dataAccess, std::string dbName);
    DeviceMgr(const DeviceMgr&) = default;
    DeviceMgr& operator=(const DeviceMgr&) = default;

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
