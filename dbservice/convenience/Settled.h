#ifndef DBSERVICE_CONVENIENCE_SETTLED_H
#define DBSERVICE_CONVENIENCE_SETTLED_H

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "dbservice/DBService.h"
#include "dbservice/convenience/Held.h"
#include "dbservice/convenience/Results.h"

// Writes whose -2013 ("in doubt") is settled: once there is a connection again, an insert is looked
// for by its key and sent again when it is not there, an update or delete is just sent again. What
// is answered then is done or not done, as long as the database comes back in time.
//
// Right for keys that nobody used before, as `newGuid` makes them: a record that is there already
// is taken for the one that was sent. Only doubt is settled: any other answer is returned at once,
// also a failure to connect, as nothing was done then.
//
// `within` bounds the time from the first doubt to the last sending. The calls themselves have time
// limits of their own (45 s each at most, unless set otherwise), so the last one may end later.
//
// A session that is cut off while its server lives on may still run what it had received, for as
// long as a statement may take. An insert cannot take effect twice even so, as its key is unique.
// An update may, and undo one that somebody else sends in the meantime.

namespace dbservice {

/// @cond internal

/// Waits between attempts, longer each time, until time is up.
class Attempts {
public:
    explicit Attempts(std::chrono::milliseconds within)
        : end_(std::chrono::steady_clock::now() +
               std::min<std::chrono::milliseconds>(within, std::chrono::hours(24 * 365))) {}

    /// False when time is up. The first time at once.
    bool next() {
        const std::chrono::steady_clock::time_point now = std::chrono::steady_clock::now();
        if (now > end_) return false;
        std::this_thread::sleep_until(std::min(now + pause_, end_));
        pause_ = std::min<std::chrono::milliseconds>(2 * pause_ + std::chrono::milliseconds(10),
                                                     std::chrono::milliseconds(200));
        return true;
    }

private:
    std::chrono::steady_clock::time_point end_;
    std::chrono::milliseconds pause_{0};
};

/// Whether a write may be sent again after this answer.
inline bool mayPass(const Result& result) {
    return isInDoubt(result) || mayPass(result.number());
}

/// @endcond

/// Runs an update or delete, which may be sent again, and settles its doubt.
/// @param write   sends it: `[&] { return service.UpdateDevice(device); }`.
/// @param within  for how long it is tried again.
/// @return  what the last sending answered: after a doubt a delete counts what was left. In doubt
///          only when time was up.
template <class Write>
Result writeSettled(Write write, std::chrono::milliseconds within) {
    Result answer = write();
    if (!isInDoubt(answer)) return answer;
    Result doubt = answer;
    for (Attempts attempts(within); attempts.next();) {
        answer = write();
        if (!mayPass(answer)) return answer;
    }
    return doubt;
}

/// Runs an insert, of one record or of several, all or none, and settles its doubt.
/// @param write    sends it: `[&] { return storeAlarm(service, alarm); }`.
/// @param find     how many of its records are there: a count, or a negative answer.
/// @param records  how many there are when it took effect.
/// @param within   for how long it is looked for and tried again.
/// @return  0 when the records are there. -1062 when one of the keys was there before, and no other
///          record was added. In doubt only when time was up.
template <class Write, class Find>
Result insertSettled(Write write, Find find, std::int64_t records,
                     std::chrono::milliseconds within) {
    Result answer = write();
    if (!isInDoubt(answer)) return answer;
    Result doubt = answer;
    for (Attempts attempts(within); attempts.next();) {
        const Result found = find();
        if (!found.ok()) continue;
        if (found.count() >= records) return Result(0);
        // What had been cut off may have come in first, but not as a part of itself.
        if (answer.number() == ErrorNumber::kDuplicateKey) return answer;
        answer = write();
        if (!mayPass(answer) && answer.number() != ErrorNumber::kDuplicateKey) return answer;
    }
    return doubt;
}

/// How many rows of a table have one of these keys, as they stand in statements; a negative answer
/// when that could not be read.
inline Result countKeys(DBService& service, const std::string& table, const std::string& column,
                        const std::vector<std::string>& keys) {
    std::string list;
    for (const std::string& key : keys)
        list += (list.empty() ? "'" : ",'") + key + "'";
    const Rows found = rows(service, "select count(*) as found from " + table + " where " + column +
                                         " in (" + list + ")");
    if (!found || !found->next()) return Result::lastFailure();
    return Result(static_cast<std::int64_t>(found->getUInt64("found")));
}

/// @cond internal

/// Where the records of a kind lie, and under which key.
template <class Record>
struct KeyedTable {
    const char* name;
    const char* column;
    std::string Record::*key;
};

// The tables of all kinds that have a unique key. Rights and faces have none; schedules, of which
// three tables hold the same records, are told apart by their insert.

inline KeyedTable<T_ServerInfo> tableOf(const T_ServerInfo*) {
    return {"serverinfo", "Guid", &T_ServerInfo::Guid};
}
inline KeyedTable<T_UserInfo> tableOf(const T_UserInfo*) {
    return {"userinfo", "Guid", &T_UserInfo::Guid};
}
inline KeyedTable<T_UserCameras> tableOf(const T_UserCameras*) {
    return {"usercameras", "Guid", &T_UserCameras::Guid};
}
inline KeyedTable<T_Device> tableOf(const T_Device*) {
    return {"device", "Guid", &T_Device::Guid};
}
inline KeyedTable<T_Channel> tableOf(const T_Channel*) {
    return {"channel", "Guid", &T_Channel::Guid};
}
inline KeyedTable<T_ChannelConfig> tableOf(const T_ChannelConfig*) {
    return {"channelproperty", "Channel_Guid", &T_ChannelConfig::Channel_Guid};
}
inline KeyedTable<T_Storage> tableOf(const T_Storage*) {
    return {"storage", "Channel_Guid", &T_Storage::Channel_Guid};
}
inline KeyedTable<T_ArchiveInfo> tableOf(const T_ArchiveInfo*) {
    return {"archiveInfo", "Guid", &T_ArchiveInfo::Guid};
}
inline KeyedTable<T_CameraSchedule> tableOf(const T_CameraSchedule*) {
    return {"cameraschedule", "Guid", &T_CameraSchedule::Guid};
}
inline KeyedTable<T_ViewGroupInfo> tableOf(const T_ViewGroupInfo*) {
    return {"viewgroupinfo", "Guid", &T_ViewGroupInfo::Guid};
}
inline KeyedTable<T_GroupInfo> tableOf(const T_GroupInfo*) {
    return {"groupinfo", "GroupGuid", &T_GroupInfo::GroupGuid};
}
inline KeyedTable<T_ViewInfo> tableOf(const T_ViewInfo*) {
    return {"viewinfo", "ViewGuid", &T_ViewInfo::ViewGuid};
}
inline KeyedTable<T_ViewItem> tableOf(const T_ViewItem*) {
    return {"viewitem", "Guid", &T_ViewItem::Guid};
}
inline KeyedTable<T_ViewItemInfo> tableOf(const T_ViewItemInfo*) {
    return {"viewiteminfo", "Guid", &T_ViewItemInfo::Guid};
}
inline KeyedTable<T_CarouselInfo> tableOf(const T_CarouselInfo*) {
    return {"carousel", "Guid", &T_CarouselInfo::Guid};
}
inline KeyedTable<T_EMapInfo> tableOf(const T_EMapInfo*) {
    return {"mapinfo", "MapGuid", &T_EMapInfo::MapGuid};
}
inline KeyedTable<T_EMapItemInfo> tableOf(const T_EMapItemInfo*) {
    return {"mapitemparam", "Guid", &T_EMapItemInfo::Guid};
}
inline KeyedTable<T_AlarmInfo> tableOf(const T_AlarmInfo*) {
    return {"alarminfo", "Guid", &T_AlarmInfo::Guid};
}

/// The table that an insert writes.
template <class Record, class Insert>
KeyedTable<Record> tableOf(Insert /*insert*/, const Record* record) {
    return tableOf(record);
}
inline KeyedTable<T_Schedules> tableOf(int (DBService::*insert)(const T_Schedules&),
                                       const T_Schedules* /*record*/) {
    const char* name = insert == &DBService::InsertOnlineSchedules   ? "onlineschedules"
                       : insert == &DBService::InsertRecordSchedules ? "recordschedules"
                                                                     : "speedupschedules";
    return {name, "Guid", &T_Schedules::Guid};
}

/// Whether an insert takes the record: of maps and map items only those that are new.
template <class Record>
bool isInserted(const Record& /*record*/) {
    return true;
}
inline bool isInserted(const T_EMapInfo& map) {
    return map.EditFlag == kEMapNew;
}
inline bool isInserted(const T_EMapItemInfo& item) {
    return item.EditFlag == kEMapNew;
}

/// @endcond

/// Runs an insert of one record and settles its doubt:
/// `insertSettled(service, &DBService::InsertServerInfo, server, std::chrono::seconds(30))`.
template <class Record>
Result insertSettled(DBService& service, int (DBService::*insert)(const Record&),
                     const Record& record, std::chrono::milliseconds within) {
    const KeyedTable<Record> table = tableOf(insert, &record);
    return insertSettled(
        [&] { return (service.*insert)(record); },
        [&] { return countKeys(service, table.name, table.column, {record.*(table.key)}); }, 1,
        within);
}

/// Runs an insert of several records, all or none, and settles its doubt:
/// `insertSettled(service, &DBService::InsertDevice, devices, count, std::chrono::seconds(30))`.
template <class Record>
Result insertSettled(DBService& service, int (DBService::*insert)(const Record*, int),
                     const Record* records, int count, std::chrono::milliseconds within) {
    return insertSettled(
        service,
        [insert](DBService& to, const Record* first, int n) { return (to.*insert)(first, n); },
        records, count, within);
}

/// The same with a function: `insertSettled(service, storeAlarms, alarms, count, ...)`.
template <class Record, class Insert>
Result insertSettled(DBService& service, Insert insert, const Record* records, int count,
                     std::chrono::milliseconds within) {
    const KeyedTable<Record> table = tableOf(records);
    std::vector<std::string> keys;
    for (int i = 0; records != nullptr && i < count; ++i) {
        if (isInserted(records[i])) keys.push_back(records[i].*(table.key));
    }
    return insertSettled([&] { return insert(service, records, count); },
                         [&] { return countKeys(service, table.name, table.column, keys); },
                         static_cast<std::int64_t>(keys.size()), within);
}

}  // namespace dbservice

#endif
