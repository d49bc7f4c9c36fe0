#include "dbservice/DBService.h"
#include "dbservice/devices/ChannelConfigDao.h"
#include "dbservice/devices/ChannelDao.h"
#include "dbservice/devices/DeviceDao.h"
#include "dbservice/statement/Result.h"

namespace dbservice {

using statement::noDao;

int DBService::InsertDevice(const T_Device* devices, int count) {
    return deviceDao_ ? deviceDao_->InsertDeviceImp(devices, count) : noDao();
}

int DBService::UpdateDevice(const T_Device* devices, int count) {
    return deviceDao_ ? deviceDao_->UpdateDeviceImp(devices, count) : noDao();
}

int DBService::UpdateDevice(const T_Device& device) {
    return deviceDao_ ? deviceDao_->UpdateDeviceImp(device) : noDao();
}

int DBService::DeleteDevice(const T_Device* devices, int count) {
    return deviceDao_ ? deviceDao_->DeleteDeviceImp(devices, count) : noDao();
}

int DBService::DeleteDevice(const std::string& guid) {
    return deviceDao_ ? deviceDao_->DeleteDeviceImp(guid) : noDao();
}

T_DeviceList* DBService::QueryDevice(const std::string& guid) {
    return deviceDao_ ? deviceDao_->QueryDeviceImp(guid) : noDao();
}

bool DBService::IsExistDevice(const T_Device& device) {
    return deviceDao_ ? deviceDao_->IsExistDeviceImp(device) : noDao();
}

void DBService::ReleaseDevice(T_DeviceList* list) {
    if (deviceDao_) deviceDao_->ReleaseDevice(list);
}

int DBService::InsertChannel(const T_Channel* channels, int count) {
    return channelDao_ ? channelDao_->InsertChannelImp(channels, count) : noDao();
}

int DBService::UpdateChannel(const T_Channel* channels, int count) {
    return channelDao_ ? channelDao_->UpdateChannelImp(channels, count) : noDao();
}

int DBService::UpdateChannel(const T_Channel& channel) {
    return channelDao_ ? channelDao_->UpdateChannelImp(channel) : noDao();
}

int DBService::DeleteChannel(const T_Channel* channels, int count) {
    return channelDao_ ? channelDao_->DeleteChannelImp(channels, count) : noDao();
}

int DBService::DeleteChannel(const std::string& deviceGuid, std::string guid) {
    return channelDao_ ? channelDao_->DeleteChannelImp(deviceGuid, guid) : noDao();
}

T_CHANNEL_LIST* DBService::QueryChannel(const std::string& deviceGuid, std::string guid) {
    return channelDao_ ? channelDao_->QueryChannelImp(deviceGuid, guid) : noDao();
}

T_CHANNEL_LIST* DBService::QueryChannel(std::string userGuid) {
    return channelDao_ ? channelDao_->QueryChannelImp(userGuid) : noDao();
}

bool DBService::IsExistChannel(const T_Channel& channel) {
    return channelDao_ ? channelDao_->IsExistChannelImp(channel) : noDao();
}

void DBService::ReleaseChannelList(T_CHANNEL_LIST* list) {
    if (channelDao_) channelDao_->ReleaseChannelList(list);
}

int DBService::InsertChannelConfig(const T_ChannelConfig* configs, int count) {
    return channelConfigDao_ ? channelConfigDao_->InsertChannelConfigImp(configs, count) : noDao();
}

int DBService::UpdateChannelConfig(const T_ChannelConfig* configs, int count) {
    return channelConfigDao_ ? channelConfigDao_->UpdateChannelConfigImp(configs, count) : noDao();
}

int DBService::UpdateChannelConfig(const T_ChannelConfig& config) {
    return channelConfigDao_ ? channelConfigDao_->UpdateChannelConfigImp(config) : noDao();
}

int DBService::DeleteChannelConfig(const T_ChannelConfig* configs, int count) {
    return channelConfigDao_ ? channelConfigDao_->DeleteChannelConfigImp(configs, count) : noDao();
}

int DBService::DeleteChannelConfig(const std::string& channelGuid) {
    return channelConfigDao_ ? channelConfigDao_->DeleteChannelConfigImp(channelGuid) : noDao();
}

T_ChannelConfig* DBService::QueryChannelConfig(const std::string& channelGuid) {
    return channelConfigDao_ ? channelConfigDao_->QueryChannelConfigImp(channelGuid) : noDao();
}

void DBService::ReleaseChannelConfig(T_ChannelConfig* config) {
    if (channelConfigDao_) channelConfigDao_->ReleaseChannelConfig(config);
}

}  // namespace dbservice
