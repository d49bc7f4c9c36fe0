#include "dbservice/DBService.h"
#include "dbservice/devices/ChannelConfigDao.h"
#include "dbservice/devices/ChannelDao.h"
#include "dbservice/devices/DeviceDao.h"
#include "dbservice/statement/Result.h"

namespace dbservice {

using statement::kNoDao;

int DBService::InsertDevice(const T_Device* devices, int count) {
    return deviceDao_ ? deviceDao_->InsertDeviceImp(devices, count) : kNoDao;
}

int DBService::UpdateDevice(const T_Device* devices, int count) {
    return deviceDao_ ? deviceDao_->UpdateDeviceImp(devices, count) : kNoDao;
}

int DBService::UpdateDevice(const T_Device& device) {
    return deviceDao_ ? deviceDao_->UpdateDeviceImp(device) : kNoDao;
}

int DBService::DeleteDevice(const T_Device* devices, int count) {
    return deviceDao_ ? deviceDao_->DeleteDeviceImp(devices, count) : kNoDao;
}

int DBService::DeleteDevice(const std::string& guid) {
    return deviceDao_ ? deviceDao_->DeleteDeviceImp(guid) : kNoDao;
}

T_DeviceList* DBService::QueryDevice(const std::string& guid) {
    return deviceDao_ ? deviceDao_->QueryDeviceImp(guid) : nullptr;
}

bool DBService::IsExistDevice(const T_Device& device) {
    return deviceDao_ && deviceDao_->IsExistDeviceImp(device);
}

void DBService::ReleaseDevice(T_DeviceList* list) {
    if (deviceDao_) deviceDao_->ReleaseDevice(list);
}

int DBService::InsertChannel(const T_Channel* channels, int count) {
    return channelDao_ ? channelDao_->InsertChannelImp(channels, count) : kNoDao;
}

int DBService::UpdateChannel(const T_Channel* channels, int count) {
    return channelDao_ ? channelDao_->UpdateChannelImp(channels, count) : kNoDao;
}

int DBService::UpdateChannel(const T_Channel& channel) {
    return channelDao_ ? channelDao_->UpdateChannelImp(channel) : kNoDao;
}

int DBService::DeleteChannel(const T_Channel* channels, int count) {
    return channelDao_ ? channelDao_->DeleteChannelImp(channels, count) : kNoDao;
}

int DBService::DeleteChannel(const std::string& deviceGuid, std::string guid) {
    return channelDao_ ? channelDao_->DeleteChannelImp(deviceGuid, guid) : kNoDao;
}

T_CHANNEL_LIST* DBService::QueryChannel(const std::string& deviceGuid, std::string guid) {
    return channelDao_ ? channelDao_->QueryChannelImp(deviceGuid, guid) : nullptr;
}

T_CHANNEL_LIST* DBService::QueryChannel(std::string userGuid) {
    return channelDao_ ? channelDao_->QueryChannelImp(userGuid) : nullptr;
}

bool DBService::IsExistChannel(const T_Channel& channel) {
    return channelDao_ && channelDao_->IsExistChannelImp(channel);
}

void DBService::ReleaseChannelList(T_CHANNEL_LIST* list) {
    if (channelDao_) channelDao_->ReleaseChannelList(list);
}

int DBService::InsertChannelConfig(const T_ChannelConfig* configs, int count) {
    return channelConfigDao_ ? channelConfigDao_->InsertChannelConfigImp(configs, count) : kNoDao;
}

int DBService::UpdateChannelConfig(const T_ChannelConfig* configs, int count) {
    return channelConfigDao_ ? channelConfigDao_->UpdateChannelConfigImp(configs, count) : kNoDao;
}

int DBService::UpdateChannelConfig(const T_ChannelConfig& config) {
    return channelConfigDao_ ? channelConfigDao_->UpdateChannelConfigImp(config) : kNoDao;
}

int DBService::DeleteChannelConfig(const T_ChannelConfig* configs, int count) {
    return channelConfigDao_ ? channelConfigDao_->DeleteChannelConfigImp(configs, count) : kNoDao;
}

int DBService::DeleteChannelConfig(const std::string& channelGuid) {
    return channelConfigDao_ ? channelConfigDao_->DeleteChannelConfigImp(channelGuid) : kNoDao;
}

T_ChannelConfig* DBService::QueryChannelConfig(const std::string& channelGuid) {
    return channelConfigDao_ ? channelConfigDao_->QueryChannelConfigImp(channelGuid) : nullptr;
}

void DBService::ReleaseChannelConfig(T_ChannelConfig* config) {
    if (channelConfigDao_) channelConfigDao_->ReleaseChannelConfig(config);
}

}  // namespace dbservice
