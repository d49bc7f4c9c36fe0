#include "dbservice/accounts/UserInfoDao.h"

#include "dbservice/statement/Condition.h"
#include "dbservice/statement/NextId.h"
#include "dbservice/statement/ReadRows.h"
#include "dbservice/statement/Result.h"
#include "dbservice/statement/Text.h"

namespace dbservice {

using namespace statement;

namespace {

constexpr char kColumns[] = "Guid,UserId,AdsPath,UserName,Password,Type,SId,SamacCountName";

}  // namespace

UserInfoDao::UserInfoDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int UserInfoDao::LoginImp(const std::string& userName, const std::string& password) {
    const RowsPtr rows(dataAccess_->Query(
        dbName_, compose("select Guid from userinfo where UserName='{}' and Password='{}'",
                         userName, password)));
    return rows && rows->rowsCount() != 0 ? 0 : -1;
}

int UserInfoDao::InsertUserInfoImp(const T_UserInfo& user) {
    IdSequence ids(*dataAccess_, dbName_, "userinfo");
    std::string text = compose(
        "insert into userinfo({},Id) values('{}', '{}', '{}', '{}', '{}', {}, '{}', '{}', {});",
        kColumns, user.Guid, user.UserId, user.AdsPath, user.UserName, user.Password, user.Type,
        user.SId, user.SamacCountName, ids.next());
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

int UserInfoDao::UpdateUserInfoImp(const T_UserInfo& user) {
    std::string text = compose(
        "update userinfo set UserId = '{}',AdsPath = '{}',UserName = '{}',Password = '{}',"
        "Type = '{}',SId = '{}',SamacCountName = '{}' where Guid = '{}'",
        user.UserId, user.AdsPath, user.UserName, user.Password, user.Type, user.SId,
        user.SamacCountName, user.Guid);
    return zeroOrError(dataAccess_->Update(dbName_, std::move(text)));
}

int UserInfoDao::DeleteUserInfoImp(std::string guid) {
    return dataAccess_->Execute(dbName_, compose("delete from userinfo where Guid ='{}'", guid));
}

T_UserInfoList* UserInfoDao::QueryUserInfoImp(std::string guid, std::string userName,
                                              std::string password) {
    std::string condition;
    andGivenKey(condition, " Guid='{}'", guid);
    andGivenKey(condition, " UserName='{}'", userName);
    andGivenKey(condition, " Password='{}'", password);
    std::string text = compose("select {} from userinfo{} order by Id", kColumns, where(condition));
    return listOrNull<T_UserInfoList>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

int UserInfoDao::IsExistUserImp(const T_UserInfo&) {
    return nothingToDo();
}

int UserInfoDao::SetValue(dbaccess::ResultSet* row, T_UserInfo* user) {
    const dbaccess::Field fields[] = {
        {"Guid", &user->Guid},         {"UserId", &user->UserId},
        {"AdsPath", &user->AdsPath},   {"UserName", &user->UserName},
        {"Password", &user->Password}, {"Type", &user->Type},
        {"SId", &user->SId},           {"SamacCountName", &user->SamacCountName},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void UserInfoDao::ReleaseUserInfo(T_UserInfoList* list) {
    release(list);
}

}  // namespace dbservice
