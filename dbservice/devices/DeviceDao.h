#ifndef DBSERVICE_DEVICES_DEVICEDAO_H
#define DBSERVICE_DEVICES_DEVICEDAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/devices/DeviceRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table device.
class DBSERVICE_API DeviceDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    DeviceDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    DeviceDao(const DeviceDao&) = default;
    DeviceDao& operator=(const DeviceDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int InsertDeviceImp(const T_Device* devices, int count);
    int UpdateDeviceImp(const T_Device* devices, int count);
    int UpdateDeviceImp(const T_Device& device);
    int DeleteDeviceImp(const T_Device* devices, int count);
    int DeleteDeviceImp(const std::string& guid);
    T_DeviceList* QueryDeviceImp(const std::string& guid);
    bool IsExistDeviceImp(const T_Device& device);
    void ReleaseDevice(T_DeviceList* list);
    /// @}

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_Device* device);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
