#include "dbservice/accounts/UserRightsDao.h"

#include "dbservice/statement/ReadRows.h"
#include "dbservice/statement/Result.h"
#include "dbservice/statement/Text.h"

namespace dbservice {

using namespace statement;

namespace {

constexpr char kColumns[] =
    "User_Guid,SharedViews,PrivateViews,ViewLive,ViewBrowse,ViewSetup,ManagementAccess";

}  // namespace

UserRightsDao::UserRightsDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int UserRightsDao::InsertUserRightsImp(const T_UserRights& rights) {
    std::string text =
        compose("insert into userrights({}) values('{}', {}, {}, {}, {}, {}, {});", kColumns,
                rights.User_Guid, rights.SharedViews, rights.PrivateViews, rights.ViewLive,
                rights.ViewBrowse, rights.ViewSetup, rights.ManagementAccess);
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

int UserRightsDao::UpdateUserRightsImp(const T_UserRights& rights) {
    std::string text = compose(
        "update userrights set SharedViews = '{}',PrivateViews = '{}',ViewLive = '{}',"
        "ViewBrowse = '{}',ViewSetup = '{}',ManagementAccess = '{}' where User_Guid = '{}'",
        rights.SharedViews, rights.PrivateViews, rights.ViewLive, rights.ViewBrowse,
        rights.ViewSetup, rights.ManagementAccess, rights.User_Guid);
    return zeroOrError(dataAccess_->Update(dbName_, std::move(text)));
}

int UserRightsDao::DeleteUserRightsImp(std::string userGuid) {
    return dataAccess_->Execute(dbName_,
                                compose("delete from userrights where User_Guid ='{}'", userGuid));
}

T_UserRights* UserRightsDao::QueryUserRightsImp(std::string userGuid) {
    std::string text =
        compose("select {} from userrights where User_Guid='{}'", kColumns, userGuid);
    return firstOrDefault<T_UserRights>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

int UserRightsDao::SetValue(dbaccess::ResultSet* row, T_UserRights* rights) {
    const dbaccess::Field fields[] = {
        {"User_Guid", &rights->User_Guid},
        {"SharedViews", &rights->SharedViews},
        {"PrivateViews", &rights->PrivateViews},
        {"ViewLive", &rights->ViewLive},
        {"ViewBrowse", &rights->ViewBrowse},
        {"ViewSetup", &rights->ViewSetup},
        {"ManagementAccess", &rights->ManagementAccess},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void UserRightsDao::ReleaseUserRights(T_UserRights* rights) {
    delete rights;
}

}  // namespace dbservice
