#include "dbservice/layouts/ViewGroupInfoDao.h"

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
    "Guid,UserGuid,ReadOnly,Name,ViewGroupType,LastModifiedTime,LastModifiedUser";

void appendRow(std::string& rows, const T_ViewGroupInfo& viewGroup) {
    append(rows, "('{}', '{}','{}','{}','{}', '{}', '{}')", viewGroup.Guid, viewGroup.UserGuid,
           viewGroup.ReadOnly, viewGroup.Name, viewGroup.ViewGroupType, viewGroup.LastModifiedTime,
           viewGroup.LastModifiedUser);
}

std::string keyFilter(const std::string& guid, const std::string& userGuid) {
    std::string condition;
    andGivenKey(condition, " Guid='{}'", guid);
    andGivenKey(condition, " UserGuid='{}'", userGuid);
    return condition;
}

}  // namespace

ViewGroupInfoDao::ViewGroupInfoDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int ViewGroupInfoDao::InsertViewGroupInfoImp(const T_ViewGroupInfo& viewGroup) {
    return InsertViewGroupInfoImp(&viewGroup, 1);
}

int ViewGroupInfoDao::InsertViewGroupInfoImp(const T_ViewGroupInfo* viewGroups, int count) {
    const Records<T_ViewGroupInfo> records(viewGroups, count);
    if (records.empty()) return noRecords();
    std::string text =
        compose("insert into viewgroupinfo({}) values{};", kColumns, rowsOf(records, appendRow));
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

/// No comma before Name, deliberately: the database refuses the statement (-1064).
/// The time is signed here, and unsigned in the insert.
int ViewGroupInfoDao::UpdateViewGroupInfoImp(const T_ViewGroupInfo& viewGroup) {
    std::string text = compose(
        "update viewgroupinfo set UserGuid = '{}',ReadOnly = '{}'Name = '{}',ViewGroupType = '{}',"
        "LastModifiedTime = '{}',LastModifiedUser = '{}' where Guid = '{}'",
        viewGroup.UserGuid, viewGroup.ReadOnly, viewGroup.Name, viewGroup.ViewGroupType,
        static_cast<int>(viewGroup.LastModifiedTime), viewGroup.LastModifiedUser, viewGroup.Guid);
    return zeroOrError(dataAccess_->Update(dbName_, std::move(text)));
}

/// Without a key, deliberately, every view group goes.
int ViewGroupInfoDao::DeleteViewGroupInfoImp(std::string guid, std::string userGuid) {
    const std::string condition = keyFilter(guid, userGuid);
    return dataAccess_->Execute(dbName_, compose("delete from viewgroupinfo{}", where(condition)));
}

T_ViewGroupInfoList* ViewGroupInfoDao::QueryViewGroupInfoImp(std::string guid, std::string userGuid,
                                                             bool includeType1) {
    std::string condition = keyFilter(guid, userGuid);
    // Without parentheses, deliberately: whoever asks for type 1 gets all of that type.
    if (!condition.empty() && includeType1) condition += " or ViewGroupType=1";
    std::string text = compose("select {} from viewgroupinfo{} order by ViewGroupType", kColumns,
                               where(condition));
    return listOrEmpty<T_ViewGroupInfoList>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

int ViewGroupInfoDao::SetValue(dbaccess::ResultSet* row, T_ViewGroupInfo* viewGroup) {
    const dbaccess::Field fields[] = {
        {"Guid", &viewGroup->Guid},
        {"UserGuid", &viewGroup->UserGuid},
        {"ReadOnly", &viewGroup->ReadOnly},
        {"Name", &viewGroup->Name},
        {"ViewGroupType", &viewGroup->ViewGroupType},
        {"LastModifiedTime", &viewGroup->LastModifiedTime},
        {"LastModifiedUser", &viewGroup->LastModifiedUser},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void ViewGroupInfoDao::ReleaseViewGroupInfoList(T_ViewGroupInfoList* list) {
    release(list);
}

}  // namespace dbservice
