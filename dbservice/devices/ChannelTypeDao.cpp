#include "dbservice/devices/ChannelTypeDao.h"

#include <utility>

namespace dbservice {

ChannelTypeDao::ChannelTypeDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int ChannelTypeDao::Load() {
    return 0;
}

T_ChannelType* ChannelTypeDao::QueryChannelTypeImp(const std::string&) {
    return nullptr;
}

}  // namespace dbservice
