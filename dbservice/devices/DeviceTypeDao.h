#ifndef DBSERVICE_DEVICES_DEVICETYPEDAO_H
#define DBSERVICE_DEVICES_DEVICETYPEDAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/devices/DeviceRecords.h"

namespace dbaccess {
class DataAccess;
}  // namespace dbaccess

namespace dbservice {

/// Kinds of devices. There is no table behind it, and the service makes none.
class DBSERVICE_API DeviceTypeDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    DeviceTypeDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    DeviceTypeDao(const DeviceTypeDao&) = default;
    DeviceTypeDao& operator=(const DeviceTypeDao&) = default;

    /// Always 0.
    int Load();
    /// Always null.
    T_DeviceType* QueryDeviceTypeDaoImp(int type);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
