#ifndef DBSERVICE_DEVICES_CHANNELDAO_H
#define DBSERVICE_DEVICES_CHANNELDAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/devices/DeviceRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table channel.
class DBSERVICE_API ChannelDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    ChannelDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    ChannelDao(const ChannelDao&) = default;
    ChannelDao& operator=(const ChannelDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int InsertChannelImp(const T_Channel* channels, int count);
    int UpdateChannelImp(const T_Channel* channels, int count);
    int UpdateChannelImp(const T_Channel& channel);
    int DeleteChannelImp(const T_Channel* channels, int count);
    int DeleteChannelImp(const std::string& deviceGuid, std::string guid);
    T_CHANNEL_LIST* QueryChannelImp(const std::string& deviceGuid, std::string guid);
    T_CHANNEL_LIST* QueryChannelImp(std::string userGuid);
    bool IsExistChannelImp(const T_Channel& channel);
    void ReleaseChannelList(T_CHANNEL_LIST* list);
    /// @}

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_Channel* channel);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
