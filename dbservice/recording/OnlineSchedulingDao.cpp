#include "dbservice/recording/OnlineSchedulingDao.h"

#include <utility>

#include "dbservice/statement/Result.h"

namespace dbservice {

OnlineSchedulingDao::OnlineSchedulingDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int OnlineSchedulingDao::InsertOnlineSchedulingImp(const T_OnlineScheduling&) {
    return statement::nothingToDo();
}

int OnlineSchedulingDao::UpdateOnlineSchedulingImp(const T_OnlineScheduling&) {
    return statement::nothingToDo();
}

int OnlineSchedulingDao::DeleteOnlineSchedulingImp(std::string) {
    return statement::nothingToDo();
}

T_OnlineScheduling OnlineSchedulingDao::QueryOnlineSchedulingImp(std::string) {
    statement::nothingToDo();
    return {};
}

}  // namespace dbservice
