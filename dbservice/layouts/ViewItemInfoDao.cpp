#include "dbservice/layouts/ViewItemInfoDao.h"

#include "dbservice/statement/Condition.h"
#include "dbservice/statement/ReadRows.h"
#include "dbservice/statement/Records.h"
#include "dbservice/statement/Result.h"
#include "dbservice/statement/Rows.h"
#include "dbservice/statement/Text.h"

namespace dbservice {

using namespace statement;

namespace {

constexpr char kColumns[] = "Guid,ViewItemGuid,CameraGuid,Url,DisplayName,VideoStreamType";

}  // namespace

ViewItemInfoDao::ViewItemInfoDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int ViewItemInfoDao::InsertViewItemInfoImp(const T_ViewItemInfo& source) {
    std::string text =
        compose("insert into viewiteminfo({}) values('{}', '{}', '{}', '{}', '{}',{});", kColumns,
                source.Guid, source.ViewItemGuid, source.CameraGuid, source.Url, source.DisplayName,
                source.VideoStreamType);
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

/// A blank stands before the number here, and none in the single insert.
int ViewItemInfoDao::InsertViewItemInfoImp(const T_ViewItemInfo* sources, int count) {
    const Records<T_ViewItemInfo> records(sources, count);
    if (records.empty()) return noRecords();
    const auto appendRow = [](std::string& rows, const T_ViewItemInfo& source) {
        append(rows, "('{}', '{}', '{}', '{}', '{}', {})", source.Guid, source.ViewItemGuid,
               source.CameraGuid, source.Url, source.DisplayName, source.VideoStreamType);
    };
    std::string text =
        compose("insert into viewiteminfo({}) values{};", kColumns, rowsOf(records, appendRow));
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

/// By the pane, deliberately: all its sources become alike.
int ViewItemInfoDao::UpdateViewItemInfoImp(const T_ViewItemInfo& source) {
    std::string text = compose(
        "update viewiteminfo set ViewItemGuid = '{}',CameraGuid = '{}',Url = '{}',"
        "DisplayName = '{}',VideoStreamType = '{}' where ViewItemGuid = '{}'",
        source.ViewItemGuid, source.CameraGuid, source.Url, source.DisplayName,
        source.VideoStreamType, source.ViewItemGuid);
    return zeroOrError(dataAccess_->Update(dbName_, std::move(text)));
}

int ViewItemInfoDao::DeleteViewItemInfoImp(std::string viewItemGuid) {
    return dataAccess_->Execute(
        dbName_, compose("delete from viewiteminfo where ViewItemGuid ='{}'", viewItemGuid));
}

int ViewItemInfoDao::DeleteViewItemInfoImp(const T_ViewItemInfo* sources, int count) {
    const Records<T_ViewItemInfo> records(sources, count);
    if (records.empty()) return noRecords();
    const std::string condition =
        anyKey(records, " ViewItemGuid='{}'", &T_ViewItemInfo::ViewItemGuid);
    return dataAccess_->Execute(dbName_, compose("delete from viewiteminfo where{}", condition));
}

T_ViewItemInfo* ViewItemInfoDao::QueryViewItemInfoImp(std::string viewItemGuid) {
    std::string text = compose("select {} from viewiteminfo", kColumns);
    if (!viewItemGuid.empty()) append(text, " where ViewItemGuid='{}'", viewItemGuid);
    return firstOrNull<T_ViewItemInfo>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

T_ViewItemInfoList* ViewItemInfoDao::QueryViewItemInfoImp(const T_ViewItem* items, int count) {
    const Records<T_ViewItem> records(items, count);
    if (records.empty()) return noRecords();
    std::string text = compose("select {} from viewiteminfo where{}", kColumns,
                               anyKey(records, " ViewItemGuid='{}'", &T_ViewItem::Guid));
    return listOrEmpty<T_ViewItemInfoList>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

int ViewItemInfoDao::SetValue(dbaccess::ResultSet* row, T_ViewItemInfo* source) {
    const dbaccess::Field fields[] = {
        {"Guid", &source->Guid},
        {"ViewItemGuid", &source->ViewItemGuid},
        {"CameraGuid", &source->CameraGuid},
        {"Url", &source->Url},
        {"DisplayName", &source->DisplayName},
        {"VideoStreamType", &source->VideoStreamType},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void ViewItemInfoDao::ReleaseViewItemInfo(T_ViewItemInfo* source) {
    delete source;
}

void ViewItemInfoDao::ReleaseViewItemInfoList(T_ViewItemInfoList* list) {
    release(list);
}

}  // namespace dbservice
