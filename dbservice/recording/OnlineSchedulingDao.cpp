#include "dbservice/recording/OnlineSchedulingDao.h"

#include <utility>

namespace dbservice {

OnlineSchedulingDao::OnlineSchedulingDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int OnlineSchedulingDao::InsertOnlineSchedulingImp(const T_OnlineScheduling&) {
    return 0;
}

int OnlineSchedulingDao::UpdateOnlineSchedulingImp(const T_OnlineScheduling&) {
    return 0;
}

int OnlineSchedulingDao::DeleteOnlineSchedulingImp(std::string) {
    return 0;
}

T_OnlineScheduling OnlineSchedulingDao::QueryOnlineSchedulingImp(std::string) {
    return {};
}

}  // namespace dbservice
