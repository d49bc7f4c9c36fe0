#include "dbservice/layouts/CarouselDao.h"

#include <cstdio>

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
    "Guid,ItemInfoGuid,ChannelGuid,ShowTime,nIndex,DisplayName,VideoStreamType";

void appendRow(std::string& rows, const T_CarouselInfo& entry) {
    append(rows, "('{}', '{}', '{}', {},{},'{}',{})", entry.Guid, entry.ItemInfoGuid,
           entry.ChannelGuid, entry.ShowTime, entry.nIndex, entry.DisplayName,
           entry.VideoStreamType);
}

std::string insertOf(const Records<T_CarouselInfo>& records) {
    return compose("insert into carousel({}) values{};", kColumns, rowsOf(records, appendRow));
}

}  // namespace

CarouselDao::CarouselDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

/// Traces its statement on standard output, deliberately; no other operation does.
int CarouselDao::InsertCarouselImp(const T_CarouselInfo& entry) {
    std::string text = insertOf({&entry, 1});
    std::printf("CarouselDao::InsertCarouselImp------------%s\n", text.c_str());
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

int CarouselDao::InsertCarouselImp(const T_CarouselInfo* entries, int count) {
    const Records<T_CarouselInfo> records(entries, count);
    if (records.empty()) return noRecords();
    return zeroOrError(dataAccess_->Insert(dbName_, insertOf(records)));
}

/// No comma before DisplayName, deliberately: the database refuses the statement (-1064).
int CarouselDao::UpdateCarouselImp(const T_CarouselInfo& entry) {
    std::string text = compose(
        "update carousel set ItemInfoGuid = '{}',ChannelGuid = '{}',ShowTime = '{}',nIndex = '{}'"
        "DisplayName = '{}',VideoStreamType = '{}' where Guid = '{}'",
        entry.ItemInfoGuid, entry.ChannelGuid, entry.ShowTime, entry.nIndex, entry.DisplayName,
        entry.VideoStreamType, entry.Guid);
    return zeroOrError(dataAccess_->Update(dbName_, std::move(text)));
}

int CarouselDao::DeleteCarouselImp(const std::string& itemInfoGuid) {
    std::string text = "delete from carousel";
    // Without a key, deliberately, every entry goes.
    if (!itemInfoGuid.empty()) append(text, " where ItemInfoGuid ='{}'", itemInfoGuid);
    return dataAccess_->Execute(dbName_, std::move(text));
}

/// Each record stands for all entries of its source; its own key is not looked at.
int CarouselDao::DeleteCarouselImp(const T_CarouselInfo* entries, int count) {
    const Records<T_CarouselInfo> records(entries, count);
    if (records.empty()) return noRecords();
    const std::string condition =
        anyKey(records, " ItemInfoGuid='{}'", &T_CarouselInfo::ItemInfoGuid);
    return dataAccess_->Execute(dbName_, compose("delete from carousel where{}", condition));
}

T_CarouselInfoList* CarouselDao::QueryCarouselImp(std::string itemInfoGuid) {
    std::string text = compose("select {} from carousel", kColumns);
    if (!itemInfoGuid.empty()) append(text, " where ItemInfoGuid='{}'", itemInfoGuid);
    text += " order by nIndex";
    return listOrEmpty<T_CarouselInfoList>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

T_CarouselInfoList* CarouselDao::QueryCarouselImp(const T_ViewItemInfo* sources, int count) {
    const Records<T_ViewItemInfo> records(sources, count);
    if (records.empty()) return noRecords();
    std::string text = compose("select {} from carousel where{}", kColumns,
                               anyKey(records, " ItemInfoGuid='{}'", &T_ViewItemInfo::Guid));
    return listOrEmpty<T_CarouselInfoList>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

int CarouselDao::SetValue(dbaccess::ResultSet* row, T_CarouselInfo* entry) {
    const dbaccess::Field fields[] = {
        {"Guid", &entry->Guid},
        {"ItemInfoGuid", &entry->ItemInfoGuid},
        {"ChannelGuid", &entry->ChannelGuid},
        {"ShowTime", &entry->ShowTime},
        {"nIndex", &entry->nIndex},
        {"DisplayName", &entry->DisplayName},
        {"VideoStreamType", &entry->VideoStreamType},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void CarouselDao::ReleaseCarouselList(T_CarouselInfoList* list) {
    release(list);
}

}  // namespace dbservice
