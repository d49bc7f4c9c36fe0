#include "dbservice/layouts/GroupInfoDao.h"

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

constexpr char kColumns[] = "GroupGuid,ViewGroupInfoGuid,DisplayName,ParentGroupGuid,Id";

}  // namespace

GroupInfoDao::GroupInfoDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int GroupInfoDao::InsertGroupInfoImp(const T_GroupInfo& group) {
    IdSequence ids(*dataAccess_, dbName_, "groupinfo");
    std::string text = compose("insert into groupinfo({}) values('{}', '{}', '{}', '{}', {});",
                               kColumns, group.GroupGuid, group.ViewGroupInfoGuid,
                               group.DisplayName, group.ParentGroupGuid, ids.next());
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

/// The Id stands in quotes here, and bare in the single insert.
int GroupInfoDao::InsertGroupInfoImp(const T_GroupInfo* groups, int count) {
    const Records<T_GroupInfo> records(groups, count);
    if (records.empty()) return noRecords();
    IdSequence ids(*dataAccess_, dbName_, "groupinfo");
    const auto appendRow = [&ids](std::string& rows, const T_GroupInfo& group) {
        append(rows, "('{}', '{}', '{}', '{}', '{}')", group.GroupGuid, group.ViewGroupInfoGuid,
               group.DisplayName, group.ParentGroupGuid, ids.next());
    };
    std::string text =
        compose("insert into groupinfo({}) values{};", kColumns, rowsOf(records, appendRow));
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

/// No comma before ParentGroupGuid, deliberately: the database refuses the statement (-1064).
int GroupInfoDao::UpdateGroupInfoImp(const T_GroupInfo& group) {
    std::string text = compose(
        "update groupinfo set ViewGroupInfoGuid = '{}',DisplayName = '{}'ParentGroupGuid = '{}'"
        " where GroupGuid = '{}'",
        group.ViewGroupInfoGuid, group.DisplayName, group.ParentGroupGuid, group.GroupGuid);
    return zeroOrError(dataAccess_->Update(dbName_, std::move(text)));
}

int GroupInfoDao::DeleteGroupInfoImp(std::string viewGroupGuid) {
    std::string text = "delete from groupinfo";
    // Without a key, deliberately, every group goes.
    if (!viewGroupGuid.empty()) append(text, " where ViewGroupInfoGuid ='{}'", viewGroupGuid);
    return dataAccess_->Execute(dbName_, std::move(text));
}

/// Each record stands for all groups of its view group; its own key is not looked at.
int GroupInfoDao::DeleteGroupInfoImp(const T_GroupInfo* groups, int count) {
    const Records<T_GroupInfo> records(groups, count);
    if (records.empty()) return noRecords();
    const std::string condition =
        anyKey(records, " ViewGroupInfoGuid='{}'", &T_GroupInfo::ViewGroupInfoGuid);
    return dataAccess_->Execute(dbName_, compose("delete from groupinfo where{}", condition));
}

T_GroupInfoList* GroupInfoDao::QueryGroupInfoImp(std::string viewGroupGuid) {
    std::string text = compose("select {} from groupinfo", kColumns);
    if (!viewGroupGuid.empty()) append(text, " where ViewGroupInfoGuid='{}'", viewGroupGuid);
    text += " order by Id";
    return listOrEmpty<T_GroupInfoList>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

int GroupInfoDao::SetValue(dbaccess::ResultSet* row, T_GroupInfo* group) {
    const dbaccess::Field fields[] = {
        {"GroupGuid", &group->GroupGuid},
        {"ViewGroupInfoGuid", &group->ViewGroupInfoGuid},
        {"DisplayName", &group->DisplayName},
        {"ParentGroupGuid", &group->ParentGroupGuid},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void GroupInfoDao::ReleaseGroupInfoList(T_GroupInfoList* list) {
    release(list);
}

}  // namespace dbservice
