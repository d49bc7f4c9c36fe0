#include "dbservice/devices/ChannelDao.h"

#include "dbservice/statement/NextId.h"
#include "dbservice/statement/ReadRows.h"
#include "dbservice/statement/Records.h"
#include "dbservice/statement/Result.h"
#include "dbservice/statement/Rows.h"
#include "dbservice/statement/Text.h"

namespace dbservice {

using namespace statement;

namespace {

constexpr char kColumns[] = "Guid,Device_Guid,DisplayName,Num,Type";

/// A row up to its type, still open.
void appendRow(std::string& rows, const T_Channel& channel) {
    append(rows, "('{}', '{}', '{}', {}, {}", channel.Guid, channel.Device_Guid,
           channel.DisplayName, channel.Num, channel.Type);
}

}  // namespace

ChannelDao::ChannelDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int ChannelDao::InsertChannelImp(const T_Channel* channels, int count) {
    const Records<T_Channel> records(channels, count);
    if (records.empty()) return noRecords();
    IdSequence ids(*dataAccess_, dbName_, "channel");
    std::string text = compose("insert into channel({},Id) values{};", kColumns,
                               rowsOf(records, appendRow, ", {})", ids));
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

int ChannelDao::UpdateChannelImp(const T_Channel* channels, int count) {
    const Records<T_Channel> records(channels, count);
    if (records.empty()) return noRecords();
    std::string text =
        compose("replace into channel({}) values{};", kColumns, rowsOf(records, appendRow, ")"));
    return zeroOrError(dataAccess_->Execute(dbName_, std::move(text)));
}

int ChannelDao::UpdateChannelImp(const T_Channel& channel) {
    std::string text = compose(
        "update channel set Device_Guid = '{}',DisplayName = '{}',Num = '{}',Type = '{}'"
        " where Guid = '{}'",
        channel.Device_Guid, channel.DisplayName, channel.Num, channel.Type, channel.Guid);
    return zeroOrError(dataAccess_->Update(dbName_, std::move(text)));
}

int ChannelDao::DeleteChannelImp(const T_Channel* channels, int count) {
    const Records<T_Channel> records(channels, count);
    if (records.empty()) return noRecords();
    std::string condition;
    for (const T_Channel& channel : records) {
        separate(condition, " or");
        if (!channel.Guid.empty()) {
            append(condition, " Guid='{}'", channel.Guid);
        } else {
            append(condition, " Device_Guid='{}'", channel.Device_Guid);
        }
    }
    return dataAccess_->Execute(dbName_, compose("delete from channel where{}", condition));
}

int ChannelDao::DeleteChannelImp(const std::string& deviceGuid, std::string guid) {
    std::string text = "delete from channel";
    if (!deviceGuid.empty()) {
        append(text, " where Device_Guid ='{}'", deviceGuid);
    } else if (!guid.empty()) {
        append(text, " where Guid ='{}'", guid);
    }  // without a key, deliberately, every channel goes
    return dataAccess_->Execute(dbName_, std::move(text));
}

T_CHANNEL_LIST* ChannelDao::QueryChannelImp(const std::string& deviceGuid, std::string guid) {
    std::string text = compose("select {} from channel", kColumns);
    if (!deviceGuid.empty()) {
        append(text, " where Device_Guid='{}'", deviceGuid);
    } else if (!guid.empty()) {
        append(text, " where Guid='{}'", guid);
    }
    text += " order by Num";
    return listOrEmpty<T_CHANNEL_LIST>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

T_CHANNEL_LIST* ChannelDao::QueryChannelImp(std::string userGuid) {
    std::string text = compose("select {} from channel", kColumns);
    // Both tables have a Guid, so that the database refuses the text with a user: deliberately so.
    if (!userGuid.empty()) append(text, ",usercameras where usercameras.User_Guid='{}'", userGuid);
    text += " order by Num";
    return listOrEmpty<T_CHANNEL_LIST>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

bool ChannelDao::IsExistChannelImp(const T_Channel& channel) {
    std::string text = "select * from channel";
    // Without a device, deliberately, any channel will do.
    if (!channel.Device_Guid.empty()) {
        append(text, " where Device_Guid='{}' and Num={}", channel.Device_Guid, channel.Num);
    }
    return hasRows(dataAccess_->Query(dbName_, std::move(text)));
}

int ChannelDao::SetValue(dbaccess::ResultSet* row, T_Channel* channel) {
    const dbaccess::Field fields[] = {
        {"Guid", &channel->Guid},
        {"Device_Guid", &channel->Device_Guid},
        {"DisplayName", &channel->DisplayName},
        {"Num", &channel->Num},
        {"Type", &channel->Type},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void ChannelDao::ReleaseChannelList(T_CHANNEL_LIST* list) {
    release(list);
}

}  // namespace dbservice
