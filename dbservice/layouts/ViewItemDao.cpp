#include "dbservice/layouts/ViewItemDao.h"

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

constexpr char kColumns[] = "Guid,ViewInfoGuid,DisplayName,ItemNumber,ViewItemType,Id";

}  // namespace

ViewItemDao::ViewItemDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

/// A stray quote behind the type, deliberately: the database refuses the statement (-1064). The
/// batch form works.
int ViewItemDao::InsertViewItemImp(const T_ViewItem& item) {
    IdSequence ids(*dataAccess_, dbName_, "viewitem");
    std::string text = compose("insert into viewitem({}) values('{}', '{}', '{}', '{}', {}', {});",
                               kColumns, item.Guid, item.ViewInfoGuid, item.DisplayName,
                               item.ItemNumber, item.ViewItemType, ids.next());
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

int ViewItemDao::InsertViewItemImp(const T_ViewItem* items, int count) {
    const Records<T_ViewItem> records(items, count);
    if (records.empty()) return noRecords();
    IdSequence ids(*dataAccess_, dbName_, "viewitem");
    const auto appendRow = [&ids](std::string& rows, const T_ViewItem& item) {
        append(rows, "('{}', '{}', '{}', {}, {}, {})", item.Guid, item.ViewInfoGuid,
               item.DisplayName, item.ItemNumber, item.ViewItemType, ids.next());
    };
    std::string text =
        compose("insert into viewitem({}) values{};", kColumns, rowsOf(records, appendRow));
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

int ViewItemDao::UpdateViewItemImp(const T_ViewItem& item) {
    std::string text = compose(
        "update viewitem set ViewInfoGuid = '{}',DisplayName = '{}',ItemNumber = '{}',"
        "ViewItemType = '{}' where Guid = '{}'",
        item.ViewInfoGuid, item.DisplayName, item.ItemNumber, item.ViewItemType, item.Guid);
    return zeroOrError(dataAccess_->Update(dbName_, std::move(text)));
}

int ViewItemDao::DeleteViewItemImp(std::string viewInfoGuid) {
    std::string text = "delete from viewitem";
    // Without a key, deliberately, every item goes.
    if (!viewInfoGuid.empty()) append(text, " where ViewInfoGuid ='{}'", viewInfoGuid);
    return dataAccess_->Execute(dbName_, std::move(text));
}

/// Each record stands for all items of its view; its own key is not looked at.
int ViewItemDao::DeleteViewItemImp(const T_ViewItem* items, int count) {
    const Records<T_ViewItem> records(items, count);
    if (records.empty()) return noRecords();
    const std::string condition = anyKey(records, " ViewInfoGuid='{}'", &T_ViewItem::ViewInfoGuid);
    return dataAccess_->Execute(dbName_, compose("delete from viewitem where{}", condition));
}

T_ViewItemList* ViewItemDao::QueryViewItemImp(std::string viewInfoGuid) {
    std::string text = compose("select {} from viewitem", kColumns);
    if (!viewInfoGuid.empty()) append(text, " where ViewInfoGuid='{}'", viewInfoGuid);
    text += " order by Id";
    return listOrEmpty<T_ViewItemList>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

int ViewItemDao::SetValue(dbaccess::ResultSet* row, T_ViewItem* item) {
    const dbaccess::Field fields[] = {
        {"Guid", &item->Guid},
        {"ViewInfoGuid", &item->ViewInfoGuid},
        {"DisplayName", &item->DisplayName},
        {"ItemNumber", &item->ItemNumber},
        {"ViewItemType", &item->ViewItemType},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void ViewItemDao::ReleaseViewItemList(T_ViewItemList* list) {
    release(list);
}

}  // namespace dbservice
