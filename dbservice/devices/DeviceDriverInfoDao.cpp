#include "dbservice/devices/DeviceDriverInfoDao.h"

#include "dbservice/statement/ReadRows.h"
#include "dbservice/statement/Result.h"
#include "dbservice/statement/Text.h"

namespace dbservice {

using namespace statement;

namespace {

constexpr char kColumns[] = "Id,DriverKey,DriverName,DriverType,Source";

}  // namespace

DeviceDriverInfoDao::DeviceDriverInfoDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

/// Source stands without quotes here, and with them in the update: deliberately so.
int DeviceDriverInfoDao::InsertDeviceDriverInfoImp(const T_DeviceDriverInfo& driver) {
    std::string text =
        compose("insert into devicedriverinfo({}) values({}, '{}', '{}', {}, {});", kColumns,
                driver.Id, driver.DriverKey, driver.DriverName, driver.DriverType, driver.Source);
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

int DeviceDriverInfoDao::UpdateDeviceDriverInfoImp(const T_DeviceDriverInfo& driver) {
    std::string text = compose(
        "update devicedriverinfo set DriverKey = '{}',DriverName = '{}',DriverType = '{}',"
        "Source = '{}' where Id = '{}'",
        driver.DriverKey, driver.DriverName, driver.DriverType, driver.Source, driver.Id);
    return zeroOrError(dataAccess_->Update(dbName_, std::move(text)));
}

int DeviceDriverInfoDao::DeleteDeviceDriverInfoImp(const std::string& driverKey) {
    return dataAccess_->Execute(
        dbName_, compose("delete from devicedriverinfo where DriverKey ='{}'", driverKey));
}

T_DeviceDriverInfo* DeviceDriverInfoDao::QueryDeviceDriverInfoImp(int id) {
    std::string text = compose("select {} from devicedriverinfo where Id='{}'", kColumns, id);
    return firstOrDefault<T_DeviceDriverInfo>(dataAccess_->Query(dbName_, std::move(text)),
                                              SetValue);
}

int DeviceDriverInfoDao::SetValue(dbaccess::ResultSet* row, T_DeviceDriverInfo* driver) {
    const dbaccess::Field fields[] = {
        {"Id", &driver->Id},
        {"DriverKey", &driver->DriverKey},
        {"DriverName", &driver->DriverName},
        {"DriverType", &driver->DriverType},
        {"Source", &driver->Source},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void DeviceDriverInfoDao::ReleaseChannelConfig(T_DeviceDriverInfo* driver) {
    delete driver;
}

}  // namespace dbservice
