#include "dbservice/maps/CEMapDao.h"

#include <ctime>
#include <functional>
#include <vector>

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

constexpr char kMapColumns[] =
    "MapGuid,UserGuid,ParentMapGuid,MapType,MapName,Gis_CenterCityName,Gis_Pos_X,Gis_Pos_Y,"
    "Gis_Zoom,Customize_Image_Path,Customize_Image_Size,Customize_Image_Type,LastTime";

constexpr char kItemColumns[] =
    "Guid,MapInfoGuid,MapItemGuid,MapItemType,DisplayName,Discription,MapItemPos_X,MapItemPos_Y";

/// The records that are for the operation with this flag.
template <class Record>
std::vector<std::reference_wrapper<const Record>> flagged(const Record* records, int count,
                                                          int flag) {
    std::vector<std::reference_wrapper<const Record>> result;
    for (const Record& record : Records<Record>(records, count)) {
        if (record.EditFlag == flag) result.emplace_back(record);
    }
    return result;
}

/// A row up to its time, still open: seconds since 1970 in 32 bits, the same in all rows.
auto appendMapNow() {
    const auto now = static_cast<std::uint32_t>(std::time(nullptr));
    return [now](std::string& rows, const T_EMapInfo& map) {
        append(rows, "('{}', '{}', '{}', {}, '{}', '{}', '{}', '{}', {}, '{}', {},{}, {}",
               map.MapGuid, map.UserGuid, map.ParentMapGuid, map.MapType, map.MapName,
               map.Gis_CenterCityName, map.Gis_Pos_X, map.Gis_Pos_Y, map.Gis_Zoom,
               map.Customize_Image_Path, map.Customize_Image_Size, map.Customize_Image_Type, now);
    };
}

/// A row up to its position, still open.
void appendItem(std::string& rows, const T_EMapItemInfo& item) {
    append(rows, "('{}', '{}', '{}', {}, '{}', '{}', '{}', '{}'", item.Guid, item.MapInfoGuid,
           item.MapItemGuid, item.MapItemType, item.DisplayName, item.Discription,
           item.MapItemPos_X, item.MapItemPos_Y);
}

}  // namespace

CEMapDao::CEMapDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int CEMapDao::InsertEMapInfoImp(const T_EMapInfo* maps, int count) {
    if (Records<T_EMapInfo>(maps, count).empty()) return noRecords();
    const auto records = flagged(maps, count, kEMapNew);
    if (records.empty()) return nothingToDo();  // unlike the items, where it is -1
    IdSequence ids(*dataAccess_, dbName_, "mapinfo");
    std::string text = compose("insert into mapinfo({},Id) values{};", kMapColumns,
                               rowsOf(records, appendMapNow(), ",{})", ids));
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

int CEMapDao::UpdateEMapInfoImp(const T_EMapInfo* maps, int count) {
    if (Records<T_EMapInfo>(maps, count).empty()) return noRecords();
    const auto records = flagged(maps, count, kEMapChanged);
    if (records.empty()) return nothingToDo();
    // Without the Id: replaced rows get a new one from the schema.
    std::string text = compose("replace into mapinfo({}) values{};", kMapColumns,
                               rowsOf(records, appendMapNow(), ")"));
    return zeroOrError(dataAccess_->Execute(dbName_, std::move(text)));
}

int CEMapDao::DeleteEMapInfoImp(const T_EMapInfo* maps, int count) {
    const std::string condition =
        anyGivenKey(flagged(maps, count, kEMapRemoved), " MapGuid='{}'", &T_EMapInfo::MapGuid);
    if (condition.empty()) return noRecords();
    return dataAccess_->Execute(dbName_, compose("delete from mapinfo where{}", condition));
}

/// The last argument has no effect, deliberately. Without any key the bare " where" is sent, as
/// deliberately: the database refuses it.
T_EMapInfoList* CEMapDao::QueryEMapInfoImp(const T_EMapInfo* keys, int count, bool /*unused*/) {
    const Records<T_EMapInfo> records(keys, count);
    if (records.empty()) return noRecords();
    std::string condition;
    for (const T_EMapInfo& key : records) {
        if (!key.UserGuid.empty()) {
            orGivenKey(condition, " UserGuid='{}'", key.UserGuid);
        } else {
            orGivenKey(condition, " MapGuid='{}'", key.MapGuid);
        }
    }
    std::string text =
        compose("select {},Id from mapinfo where{} order by Id", kMapColumns, condition);
    return listOrEmpty<T_EMapInfoList>(dataAccess_->Query(dbName_, std::move(text)),
                                       SetMapInfoValue);
}

int CEMapDao::InsertEMapItemInfoImp(const T_EMapItemInfo* items, int count) {
    const auto records = flagged(items, count, kEMapNew);
    if (records.empty()) return noRecords();
    IdSequence ids(*dataAccess_, dbName_, "mapitemparam");
    std::string text = compose("insert into mapitemparam({},Id) values{};", kItemColumns,
                               rowsOf(records, appendItem, ", {})", ids));
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

int CEMapDao::UpdateEMapItemInfoImp(const T_EMapItemInfo* items, int count) {
    const auto records = flagged(items, count, kEMapChanged);
    if (records.empty()) return noRecords();
    std::string text = compose("replace into mapitemparam({}) values{};", kItemColumns,
                               rowsOf(records, appendItem, ") "));
    return zeroOrError(dataAccess_->Execute(dbName_, std::move(text)));
}

int CEMapDao::DeleteEMapItemInfoImp(const T_EMapInfo* maps, int count) {
    const std::string condition =
        anyGivenKey(flagged(maps, count, kEMapRemoved), " MapInfoGuid='{}'", &T_EMapInfo::MapGuid);
    if (condition.empty()) return noRecords();
    return dataAccess_->Execute(dbName_, compose("delete from mapitemparam where{}", condition));
}

int CEMapDao::DeleteEMapItemInfoImp(const T_EMapItemInfo* items, int count) {
    std::string condition;
    for (const T_EMapItemInfo& item : flagged(items, count, kEMapRemoved)) {
        if (!item.Guid.empty()) {
            orGivenKey(condition, " Guid='{}'", item.Guid);
        } else {
            orGivenKey(condition, " MapItemGuid='{}'", item.MapItemGuid);
        }
    }
    if (condition.empty()) return noRecords();
    return dataAccess_->Execute(dbName_, compose("delete from mapitemparam where{}", condition));
}

T_EMapItemInfoList* CEMapDao::QueryEMapItemInfoImp(const T_EMapInfo* maps, int count) {
    const Records<T_EMapInfo> records(maps, count);
    if (records.empty()) return noRecords();
    std::string text = compose("select {} from mapitemparam where{}", kItemColumns,
                               anyGivenKey(records, " MapInfoGuid='{}'", &T_EMapInfo::MapGuid));
    return listOrEmpty<T_EMapItemInfoList>(dataAccess_->Query(dbName_, std::move(text)),
                                           SetMapItemValue);
}

int CEMapDao::SetMapInfoValue(dbaccess::ResultSet* row, T_EMapInfo* map) {
    const dbaccess::Field fields[] = {
        {"MapGuid", &map->MapGuid},
        {"UserGuid", &map->UserGuid},
        {"ParentMapGuid", &map->ParentMapGuid},
        {"MapType", &map->MapType},
        {"MapName", &map->MapName},
        {"Gis_CenterCityName", &map->Gis_CenterCityName},
        {"Gis_Pos_X", &map->Gis_Pos_X},
        {"Gis_Pos_Y", &map->Gis_Pos_Y},
        {"Gis_Zoom", &map->Gis_Zoom},
        {"Customize_Image_Path", &map->Customize_Image_Path},
        {"Customize_Image_Size", &map->Customize_Image_Size},
        {"Customize_Image_Type", &map->Customize_Image_Type},
        {"LastTime", &map->LastTime},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

int CEMapDao::SetMapItemValue(dbaccess::ResultSet* row, T_EMapItemInfo* item) {
    const dbaccess::Field fields[] = {
        {"Guid", &item->Guid},
        {"MapInfoGuid", &item->MapInfoGuid},
        {"MapItemGuid", &item->MapItemGuid},
        {"MapItemType", &item->MapItemType},
        {"DisplayName", &item->DisplayName},
        {"Discription", &item->Discription},
        {"MapItemPos_X", &item->MapItemPos_X},
        {"MapItemPos_Y", &item->MapItemPos_Y},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void CEMapDao::ReleaseEMapInfo(T_EMapInfoList* list) {
    release(list);
}

void CEMapDao::ReleaseEMapItemInfoListImp(T_EMapItemInfoList* list) {
    release(list);
}

}  // namespace dbservice
