#ifndef DBSERVICE_DEVICES_DEVICEDRIVERINFODAO_H
#define DBSERVICE_DEVICES_DEVICEDRIVERINFODAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/devices/DeviceRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table devicedriverinfo, the catalogue of device drivers. The service has no operations for
/// it: construct one over a DataAccess of your own. Texts go into the statements as they are.
class DBSERVICE_API DeviceDriverInfoDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    DeviceDriverInfoDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    DeviceDriverInfoDao(const DeviceDriverInfoDao&) = default;
    DeviceDriverInfoDao& operator=(const DeviceDriverInfoDao&) = default;

    /// Adds a driver with the caller's Id. `Source` goes into the statement without quotes: give a
    /// number or a complete literal, as "'cd'"; a bare text is refused by the database.
    /// @return  0, or the negated MySQL error number, as -1062 when the Id is there already.
    int InsertDeviceDriverInfoImp(const T_DeviceDriverInfo& driver);

    /// Changes the driver with this Id; `Source` is a plain text here.
    /// @return  0, also when there is none, or the negated error number.
    int UpdateDeviceDriverInfoImp(const T_DeviceDriverInfo& driver);

    /// Deletes all drivers with this key, not Id.
    /// @return  their number, or the negated error number.
    int DeleteDeviceDriverInfoImp(const std::string& driverKey);

    /// The driver with this Id; a default record, with Id 0, when there is none; null when the
    /// query failed. To be given to `ReleaseChannelConfig`.
    T_DeviceDriverInfo* QueryDeviceDriverInfoImp(int id);

    /// Frees a record; null is ignored. The name is that of another entity, and callers use it.
    void ReleaseChannelConfig(T_DeviceDriverInfo* driver);

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_DeviceDriverInfo* driver);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
