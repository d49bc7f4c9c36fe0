#ifndef DBSERVICE_DEVICES_CHANNELTYPEDAO_H
#define DBSERVICE_DEVICES_CHANNELTYPEDAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/devices/DeviceRecords.h"

namespace dbaccess {
class DataAccess;
}  // namespace dbaccess

namespace dbservice {

/// Kinds of channels. There is no table behind it, and the service makes none.
class DBSERVICE_API ChannelTypeDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    ChannelTypeDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    ChannelTypeDao(const ChannelTypeDao&) = default;
    ChannelTypeDao& operator=(const ChannelTypeDao&) = default;

    /// Always 0.
    int Load();
    /// Always null.
    T_ChannelType* QueryChannelTypeImp(const std::string& type);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
