#ifndef DBSERVICE_RECORDING_STORAGEMGR_H
#define DBSERVICE_RECORDING_STORAGEMGR_H

#include <string>

#include "base/Export.h"

namespace dbaccess {
class DataAccess;
}  // namespace dbaccess

namespace dbservice {

/// Made and destroyed with the service, and used for nothing else.
class DBSERVICE_API StorageMgr {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    StorageMgr(dbaccess::DataAccess* dataAccess, std::string dbName);
    StorageMgr(const StorageMgr&) = default;
    StorageMgr& operator=(const StorageMgr&) = default;

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
