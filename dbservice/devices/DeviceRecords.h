#ifndef DBSERVICE_DEVICES_DEVICERECORDS_H
#define DBSERVICE_DEVICES_DEVICERECORDS_H

#include <string>

#include "base/Export.h"

namespace dbservice {

/// One camera, encoder or recorder.
struct DBSERVICE_API T_Device {
    T_Device() = default;
    T_Device(const T_Device&) = default;

    /// Copies all but `ServerGuid`, `VenderType`, `DeviceType`, `DriverType` and `ChannelCount`,
    /// which stay as they are: callers rely on it. To copy everything construct a new record.
    T_Device& operator=(const T_Device& other);

    std::string Guid;        ///< the key, made by the caller (`getGuid`)
    std::string ServerGuid;  ///< the recording server that serves it
    std::string Mac;
    std::string DriverKey;  ///< of a driver in the catalogue
    std::string DisplayName;
    std::string IPAddress;
    int HttpPort = 0;
    int FtpPort = 0;
    int DefaultHttpPort = 0;
    int DefaultFtpPort = 0;
    int State = 0;
    std::string UserName;
    std::string Password;  ///< stored as it is given
    std::string Com1Driver;
    std::string Com2Driver;
    int Browsable = 0;
    int VenderType = 0;
    int DeviceType = 0;
    int DriverType = 0;
    int ChannelCount = 0;
};

struct T_DeviceList {
    int count = 0;
    T_Device* items = nullptr;
};

/// A kind of device. No operation uses it.
struct T_DeviceType {
    int TypeId = 0;
    std::string TypeName;
};

/// One video input of a device.
struct T_Channel {
    std::string Guid;  ///< the key, made by the caller (`getGuid`)
    std::string Device_Guid;
    std::string DisplayName;
    int Num = 0;  ///< number within the device
    int Type = 0;
};

struct T_CHANNEL_LIST {
    int count = 0;
    T_Channel* items = nullptr;
};

/// A kind of channel. No operation uses it.
struct T_ChannelType {
    int TypeId = 0;
    std::string TypeName;
};

/// How one channel is shown and streamed; the numbers are the callers' own codes.
struct T_ChannelConfig {
    std::string Channel_Guid;  ///< the key; empty in what a query without a match returns
    int Hidden = 0;
    int Disabled = 0;
    int Preview = 0;
    int HalfSize = 0;
    int DeviceIndex = 0;
    int DBRepairStrateqy = 0;
    int LiveStreamIndex = 0;
    int LiveStreamSettings = 0;
};

/// One driver of the catalogue.
struct T_DeviceDriverInfo {
    int Id = 0;  ///< the key, given by the caller; 0 in what a query without a match returns
    std::string DriverKey;
    std::string DriverName;
    int DriverType = 0;
    std::string Source;  ///< goes into an insert without quotes, see DeviceDriverInfoDao
};

}  // namespace dbservice

#endif
