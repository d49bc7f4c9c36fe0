#include "dbservice/layouts/ViewInfoDao.h"

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
    "ViewGuid,GroupGuid,DisplayName,ViewLayoutType,ViewScaleType,ShowTime,EnableCarousel,Id";

}  // namespace

ViewInfoDao::ViewInfoDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int ViewInfoDao::InsertViewInfoImp(const T_ViewInfo& view) {
    IdSequence ids(*dataAccess_, dbName_, "viewinfo");
    std::string text =
        compose("insert into viewinfo({}) values('{}', '{}', '{}', {},{},{},{},{});", kColumns,
                view.ViewGuid, view.GroupGuid, view.DisplayName, view.ViewLayoutType,
                view.ViewScaleType, view.ShowTime, view.EnableCarousel, ids.next());
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

/// The numbers are spaced here, and not in the single insert.
int ViewInfoDao::InsertViewInfoImp(const T_ViewInfo* views, int count) {
    const Records<T_ViewInfo> records(views, count);
    if (records.empty()) return noRecords();
    IdSequence ids(*dataAccess_, dbName_, "viewinfo");
    const auto appendRow = [&ids](std::string& rows, const T_ViewInfo& view) {
        append(rows, "('{}', '{}', '{}', {}, {}, {}, {},{})", view.ViewGuid, view.GroupGuid,
               view.DisplayName, view.ViewLayoutType, view.ViewScaleType, view.ShowTime,
               view.EnableCarousel, ids.next());
    };
    std::string text =
        compose("insert into viewinfo({}) values{};", kColumns, rowsOf(records, appendRow));
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

int ViewInfoDao::UpdateViewInfoImp(const T_ViewInfo& view) {
    std::string text = compose(
        "update viewinfo set GroupGuid = '{}',DisplayName = '{}',ViewLayoutType = '{}',"
        "ViewScaleType = '{}',ShowTime = '{}',EnableCarousel = '{}' where ViewGuid = '{}'",
        view.GroupGuid, view.DisplayName, view.ViewLayoutType, view.ViewScaleType, view.ShowTime,
        view.EnableCarousel, view.ViewGuid);
    return zeroOrError(dataAccess_->Update(dbName_, std::move(text)));
}

int ViewInfoDao::DeleteViewInfoImp(std::string groupGuid) {
    std::string text = "delete from viewinfo";
    // Without a key, deliberately, every view goes.
    if (!groupGuid.empty()) append(text, " where GroupGuid ='{}'", groupGuid);
    return dataAccess_->Execute(dbName_, std::move(text));
}

/// Each record stands for all views of its group; its own key is not looked at.
int ViewInfoDao::DeleteViewInfoImp(const T_ViewInfo* views, int count) {
    const Records<T_ViewInfo> records(views, count);
    if (records.empty()) return noRecords();
    const std::string condition = anyKey(records, " GroupGuid='{}'", &T_ViewInfo::GroupGuid);
    return dataAccess_->Execute(dbName_, compose("delete from viewinfo where{}", condition));
}

T_ViewInfoList* ViewInfoDao::QueryViewInfoImp(std::string groupGuid) {
    std::string text = compose("select {} from viewinfo", kColumns);
    if (!groupGuid.empty()) append(text, " where GroupGuid='{}'", groupGuid);
    text += " order by Id";
    return listOrEmpty<T_ViewInfoList>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

int ViewInfoDao::SetValue(dbaccess::ResultSet* row, T_ViewInfo* view) {
    const dbaccess::Field fields[] = {
        {"ViewGuid", &view->ViewGuid},
        {"GroupGuid", &view->GroupGuid},
        {"DisplayName", &view->DisplayName},
        {"ViewLayoutType", &view->ViewLayoutType},
        {"ViewScaleType", &view->ViewScaleType},
        {"ShowTime", &view->ShowTime},
        {"EnableCarousel", &view->EnableCarousel},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void ViewInfoDao::ReleaseViewInfoList(T_ViewInfoList* list) {
    release(list);
}

}  // namespace dbservice
