#ifndef DBSERVICE_DEVICES_CHANNELCONFIGDAO_H
#define DBSERVICE_DEVICES_CHANNELCONFIGDAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/devices/DeviceRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table channelproperty.
class DBSERVICE_API ChannelConfigDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    ChannelConfigDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    ChannelConfigDao(const ChannelConfigDao&) = default;
    ChannelConfigDao& operator=(const ChannelConfigDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int InsertChannelConfigImp(const T_ChannelConfig* configs, int count);
    int UpdateChannelConfigImp(const T_ChannelConfig* configs, int count);
    int UpdateChannelConfigImp(const T_ChannelConfig& config);
    int DeleteChannelConfigImp(const T_ChannelConfig* configs, int count);
    int DeleteChannelConfigImp(const std::string& channelGuid);
    T_ChannelConfig* QueryChannelConfigImp(const std::string& channelGuid);
    void ReleaseChannelConfig(T_ChannelConfig* config);
    /// @}

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_ChannelConfig* config);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
