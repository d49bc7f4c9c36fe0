#include "dbservice/devices/ChannelTypeDao.h"

#include <utility>

#include "dbservice/statement/Result.h"

namespace dbservice {

ChannelTypeDao::ChannelTypeDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int ChannelTypeDao::Load() {
    return statement::nothingToDo();
}

T_ChannelType* ChannelTypeDao::QueryChannelTypeImp(const std::string&) {
    statement::nothingToDo();
    return nullptr;
}

}  // namespace dbservice
