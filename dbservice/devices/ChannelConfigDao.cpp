#include "dbservice/devices/ChannelConfigDao.h"

#include "dbservice/statement/Condition.h"
#include "dbservice/statement/ReadRows.h"
#include "dbservice/statement/Records.h"
#include "dbservice/statement/Result.h"
#include "dbservice/statement/Rows.h"
#include "dbservice/statement/Text.h"

namespace dbservice {

using namespace statement;

namespace {

constexpr char kColumns[] =
    "Channel_Guid,Hidden,Disabled,Preview,HalfSize,DeviceIndex,DBRepairStrateqy,LiveStreamIndex,"
    "LiveStreamSettings";

void appendRow(std::string& rows, const T_ChannelConfig& config) {
    append(rows, "('{}', {}, {}, {}, {}, {}, {}, {}, {})", config.Channel_Guid, config.Hidden,
           config.Disabled, config.Preview, config.HalfSize, config.DeviceIndex,
           config.DBRepairStrateqy, config.LiveStreamIndex, config.LiveStreamSettings);
}

}  // namespace

ChannelConfigDao::ChannelConfigDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int ChannelConfigDao::InsertChannelConfigImp(const T_ChannelConfig* configs, int count) {
    const Records<T_ChannelConfig> records(configs, count);
    if (records.empty()) return noRecords();
    std::string text =
        compose("insert into channelproperty({}) values{};", kColumns, rowsOf(records, appendRow));
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

int ChannelConfigDao::UpdateChannelConfigImp(const T_ChannelConfig* configs, int count) {
    const Records<T_ChannelConfig> records(configs, count);
    if (records.empty()) return noRecords();
    std::string text =
        compose("replace into channelproperty({}) values{};", kColumns, rowsOf(records, appendRow));
    return zeroOrError(dataAccess_->Execute(dbName_, std::move(text)));
}

int ChannelConfigDao::UpdateChannelConfigImp(const T_ChannelConfig& config) {
    std::string text = compose(
        "update channelproperty set Hidden = '{}',Disabled = '{}',Preview = '{}',HalfSize = '{}',"
        "DeviceIndex = '{}',DBRepairStrateqy = '{}',LiveStreamIndex = '{}',"
        "LiveStreamSettings = '{}' where Channel_Guid = '{}'",
        config.Hidden, config.Disabled, config.Preview, config.HalfSize, config.DeviceIndex,
        config.DBRepairStrateqy, config.LiveStreamIndex, config.LiveStreamSettings,
        config.Channel_Guid);
    return zeroOrError(dataAccess_->Update(dbName_, std::move(text)));
}

int ChannelConfigDao::DeleteChannelConfigImp(const T_ChannelConfig* configs, int count) {
    const Records<T_ChannelConfig> records(configs, count);
    if (records.empty()) return noRecords();
    const std::string condition =
        anyKey(records, " Channel_Guid='{}'", &T_ChannelConfig::Channel_Guid);
    return dataAccess_->Execute(dbName_, compose("delete from channelproperty where{}", condition));
}

int ChannelConfigDao::DeleteChannelConfigImp(const std::string& channelGuid) {
    return dataAccess_->Execute(
        dbName_, compose("delete from channelproperty where Channel_Guid ='{}'", channelGuid));
}

T_ChannelConfig* ChannelConfigDao::QueryChannelConfigImp(const std::string& channelGuid) {
    std::string text =
        compose("select {} from channelproperty where Channel_Guid='{}' order by Channel_Guid",
                kColumns, channelGuid);
    return firstOrDefault<T_ChannelConfig>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

int ChannelConfigDao::SetValue(dbaccess::ResultSet* row, T_ChannelConfig* config) {
    const dbaccess::Field fields[] = {
        {"Channel_Guid", &config->Channel_Guid},
        {"Hidden", &config->Hidden},
        {"Disabled", &config->Disabled},
        {"Preview", &config->Preview},
        {"HalfSize", &config->HalfSize},
        {"DeviceIndex", &config->DeviceIndex},
        {"DBRepairStrateqy", &config->DBRepairStrateqy},
        {"LiveStreamIndex", &config->LiveStreamIndex},
        {"LiveStreamSettings", &config->LiveStreamSettings},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void ChannelConfigDao::ReleaseChannelConfig(T_ChannelConfig* config) {
    delete config;
}

}  // namespace dbservice
