#include "dbservice/events/CAlarmInfoDao.h"

#include <cstdint>
#include <memory>

#include "dbservice/statement/Condition.h"
#include "dbservice/statement/ReadRows.h"
#include "dbservice/statement/Records.h"
#include "dbservice/statement/Result.h"
#include "dbservice/statement/Text.h"

namespace dbservice {

using namespace statement;

namespace {

constexpr char kColumns[] =
    "Guid,DeviceGuid,ChannelGuid,AlarmLevel,AlarmMethod,BeginTime,EndTime,AlarmContent,AlarmSource,"
    "SN";

std::string keyFilter(const std::string& guid, const std::string& channelGuid) {
    std::string condition;
    andGivenKey(condition, " Guid='{}'", guid);
    andGivenKey(condition, " ChannelGuid='{}'", channelGuid);
    return condition;
}

Records<T_Channel> channelsOf(const T_SearchAlarmParam& request) {
    return {request.Channels, request.ChannelCount};
}

/// The channels stand without parentheses, deliberately: the other filters bind to the last only.
std::string searchOf(const T_SearchAlarmParam& request) {
    std::string text = compose("select {} from alarminfo where{}", kColumns,
                               anyKey(channelsOf(request), " ChannelGuid='{}'", &T_Channel::Guid));
    append(text, " and AlarmLevel={} and AlarmMethod='{}' and BeginTime='{}' and EndTime='{}';",
           request.AlarmLevel, request.AlarmMethod, request.BeginTime, request.EndTime);
    return text;
}

/// How many records a search returns of so many rows; more than fit into the range are not filled.
int pageSize(int rows, const T_SearchAlarmParam& request) {
    const std::int64_t span = std::int64_t{request.EndIndex} - request.BeginIndex;
    return rows > span ? static_cast<int>(span + 1) : rows;
}

}  // namespace

CAlarmInfoDao::CAlarmInfoDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

/// Stores nothing, deliberately: alarms come into the table by other ways.
int CAlarmInfoDao::InsertAlarmInfoImp(const T_AlarmInfo& /*alarm*/) {
    return nothingToDo();
}

int CAlarmInfoDao::UpdateAlarmInfoImp(const T_AlarmInfo& alarm) {
    std::string text = compose(
        "update alarminfo set DeviceGuid = '{}',ChannelGuid = '{}',AlarmLevel = '{}',"
        "AlarmMethod = '{}',BeginTime = '{}',EndTime = '{}',AlarmContent = '{}',AlarmSource = '{}'"
        " where Guid = '{}'",
        alarm.DeviceGuid, alarm.ChannelGuid, alarm.AlarmLevel, alarm.AlarmMethod, alarm.BeginTime,
        alarm.EndTime, alarm.AlarmContent, alarm.AlarmSource, alarm.Guid);
    return zeroOrError(dataAccess_->Update(dbName_, std::move(text)));
}

/// Without a key, deliberately, every alarm goes.
int CAlarmInfoDao::DeleteAlarmInfoImp(const std::string& guid, std::string channelGuid) {
    const std::string condition = keyFilter(guid, channelGuid);
    return dataAccess_->Execute(dbName_, compose("delete from alarminfo{}", where(condition)));
}

T_AlarmInfoList* CAlarmInfoDao::QueryAlarmInfoImp(const std::string& guid,
                                                  std::string channelGuid) {
    const std::string condition = keyFilter(guid, channelGuid);
    std::string text =
        compose("select {} from alarminfo{} order by SN", kColumns, where(condition));
    return listOrNull<T_AlarmInfoList>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

T_AlarmInfoList* CAlarmInfoDao::QueryAlarmInfoImp(const T_SearchAlarmParam* request, int& total) {
    if (request == nullptr || channelsOf(*request).empty()) return noRecords();
    const RowsPtr rows(dataAccess_->Query(dbName_, searchOf(*request)));
    if (!rows) return nullptr;
    const int found = rows->rowsCount();
    if (found == 0 || request->EndIndex < request->BeginIndex) return new T_AlarmInfoList;

    total = found;
    auto list = newList<T_AlarmInfoList>(pageSize(found, *request));
    int filled = 0;
    for (int row = 0; row <= request->EndIndex && rows->next(); ++row) {
        if (row >= request->BeginIndex && filled < list->count)
            SetValue(rows.get(), &list->items[filled++]);
    }
    return list.release();
}

int CAlarmInfoDao::SetValue(dbaccess::ResultSet* row, T_AlarmInfo* alarm) {
    const dbaccess::Field fields[] = {
        {"Guid", &alarm->Guid},
        {"DeviceGuid", &alarm->DeviceGuid},
        {"ChannelGuid", &alarm->ChannelGuid},
        {"AlarmLevel", &alarm->AlarmLevel},
        {"AlarmMethod", &alarm->AlarmMethod},
        {"BeginTime", &alarm->BeginTime},
        {"EndTime", &alarm->EndTime},
        {"AlarmContent", &alarm->AlarmContent},
        {"AlarmSource", &alarm->AlarmSource},
        {"SN", &alarm->SN},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void CAlarmInfoDao::ReleaseAlarmInfo(T_AlarmInfoList* list) {
    release(list);
}

}  // namespace dbservice
