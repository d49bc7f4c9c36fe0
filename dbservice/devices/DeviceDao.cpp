#include "dbservice/devices/DeviceDao.h"

#include "dbservice/statement/Condition.h"
#include "dbservice/statement/NextId.h"
#include "dbservice/statement/ReadRows.h"
#include "dbservice/statement/Records.h"
#include "dbservice/statement/Result.h"
#include "dbservice/statement/Rows.h"
#include "dbservice/statement/Text.h"

namespace dbservice {

using namespace statement;

namespace {

constexpr char kColumns[] =
    "Guid,ServerGuid,Mac,DriverKey,DisplayName,IPAddress,HttpPort,FtpPort,DefaultHttpPort,"
    "DefaultFtpPort,State,UserName,Password,Com1Driver,Com2Driver,Browsable,VenderType,DeviceType,"
    "DriverType,ChannelCount";

/// A row up to its channel count, still open.
void appendRow(std::string& rows, const T_Device& device) {
    append(rows,
           "('{}', '{}', '{}', '{}', '{}', '{}', {}, {}, {}, {}, {}, "
           "'{}', '{}', '{}', '{}', {},{},{},{},{}",
           device.Guid, device.ServerGuid, device.Mac, device.DriverKey, device.DisplayName,
           device.IPAddress, device.HttpPort, device.FtpPort, device.DefaultHttpPort,
           device.DefaultFtpPort, device.State, device.UserName, device.Password, device.Com1Driver,
           device.Com2Driver, device.Browsable, device.VenderType, device.DeviceType,
           device.DriverType, device.ChannelCount);
}

}  // namespace

DeviceDao::DeviceDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

/// Unlike most batches this one is sent without records too, and the database refuses it.
int DeviceDao::InsertDeviceImp(const T_Device* devices, int count) {
    IdSequence ids(*dataAccess_, dbName_, "device");
    std::string text = compose("insert into device({},Id) values{};", kColumns,
                               rowsOf(Records<T_Device>(devices, count), appendRow, ",{})", ids));
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

int DeviceDao::UpdateDeviceImp(const T_Device* devices, int count) {
    const Records<T_Device> records(devices, count);
    if (records.empty()) return noRecords();
    std::string text =
        compose("replace into device({}) values{};", kColumns, rowsOf(records, appendRow, ")"));
    return zeroOrError(dataAccess_->Execute(dbName_, std::move(text)));
}

int DeviceDao::UpdateDeviceImp(const T_Device& device) {
    std::string text = compose(
        "update device set ServerGuid = '{}',Mac = '{}',DriverKey = '{}',DisplayName = '{}',"
        "IPAddress = '{}',HttpPort = '{}',FtpPort = '{}',DefaultHttpPort = '{}',"
        "DefaultFtpPort = '{}',State = '{}',UserName = '{}',Password = '{}',Com1Driver = '{}',"
        "Com2Driver = '{}',Browsable = '{}',VenderType = '{}',DeviceType = '{}',DriverType = '{}',"
        "ChannelCount = '{}' where Guid = '{}'",
        device.ServerGuid, device.Mac, device.DriverKey, device.DisplayName, device.IPAddress,
        device.HttpPort, device.FtpPort, device.DefaultHttpPort, device.DefaultFtpPort,
        device.State, device.UserName, device.Password, device.Com1Driver, device.Com2Driver,
        device.Browsable, device.VenderType, device.DeviceType, device.DriverType,
        device.ChannelCount, device.Guid);
    return zeroOrError(dataAccess_->Update(dbName_, std::move(text)));
}

int DeviceDao::DeleteDeviceImp(const T_Device* devices, int count) {
    const Records<T_Device> records(devices, count);
    if (records.empty()) return noRecords();
    const std::string condition = anyKey(records, " Guid='{}'", &T_Device::Guid);
    return dataAccess_->Execute(dbName_, compose("delete from device where{}", condition));
}

int DeviceDao::DeleteDeviceImp(const std::string& guid) {
    return dataAccess_->Execute(dbName_, compose("delete from device where Guid ='{}'", guid));
}

T_DeviceList* DeviceDao::QueryDeviceImp(const std::string& guid) {
    std::string text = compose("select {} from device", kColumns);
    if (!guid.empty()) append(text, " where Guid='{}'", guid);
    text += " order by DisplayName";
    return listOrNull<T_DeviceList>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

bool DeviceDao::IsExistDeviceImp(const T_Device& device) {
    std::string text = "select * from device";
    // Without an address, deliberately, any device will do.
    if (!device.IPAddress.empty()) {
        append(text, " where IPAddress='{}' and HttpPort={}", device.IPAddress, device.HttpPort);
    }
    return hasRows(dataAccess_->Query(dbName_, std::move(text)));
}

int DeviceDao::SetValue(dbaccess::ResultSet* row, T_Device* device) {
    const dbaccess::Field fields[] = {
        {"Guid", &device->Guid},
        {"ServerGuid", &device->ServerGuid},
        {"Mac", &device->Mac},
        {"DriverKey", &device->DriverKey},
        {"DisplayName", &device->DisplayName},
        {"IPAddress", &device->IPAddress},
        {"HttpPort", &device->HttpPort},
        {"FtpPort", &device->FtpPort},
        {"DefaultHttpPort", &device->DefaultHttpPort},
        {"DefaultFtpPort", &device->DefaultFtpPort},
        {"State", &device->State},
        {"UserName", &device->UserName},
        {"Password", &device->Password},
        {"Com1Driver", &device->Com1Driver},
        {"Com2Driver", &device->Com2Driver},
        {"Browsable", &device->Browsable},
        {"VenderType", &device->VenderType},
        {"DeviceType", &device->DeviceType},
        {"DriverType", &device->DriverType},
        {"ChannelCount", &device->ChannelCount},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void DeviceDao::ReleaseDevice(T_DeviceList* list) {
    release(list);
}

}  // namespace dbservice
