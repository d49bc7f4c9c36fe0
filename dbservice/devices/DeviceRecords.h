#ifndef DBSERVICE_DEVICES_DEVICERECORDS_H
#define DBSERVICE_DEVICES_DEVICERECORDS_H

#include <string>

#include "base/Export.h"

namespace dbservice {

/// One camera, encoder or recorder. Numbers are the callers' own, as kinds and states; the library
/// only stores them, and connects to no device.
struct DBSERVICE_API T_Device {
    T_Device() = default;
    T_Device(const T_Device&) = default;

    /// Copies all but `ServerGuid`, `VenderType`, `DeviceType`, `DriverType` and `ChannelCount`,
    /// which stay as they are: callers rely on it. To copy everything construct a new record.
    T_Device& operator=(const T_Device& other);

    std::string Guid;         ///< the key, made by the caller (`getGuid`)
    std::string ServerGuid;   ///< the recording server that serves it
    std::string Mac;          ///< hardware address, in any form
    std::string DriverKey;    ///< of a driver in the catalogue
    std::string DisplayName;  ///< what users see, and lists are ordered by
    std::string IPAddress;    ///< in any form; `IsExistDevice` compares it as text

    /// @{
    /// Its ports, in use and by default. `IsExistDevice` looks for the first, with the address.
    int HttpPort = 0;
    int FtpPort = 0;
    int DefaultHttpPort = 0;
    int DefaultFtpPort = 0;
    /// @}

    int State = 0;           ///< a number of the callers' own
    std::string UserName;    ///< login at the device
    std::string Password;    ///< login at the device, stored as it is given
    std::string Com1Driver;  ///< of its first serial port
    std::string Com2Driver;  ///< of its second serial port

    /// @{
    /// Numbers of the callers' own; the library only stores them.
    int Browsable = 0;
    int VenderType = 0;
    int DeviceType = 0;
    int DriverType = 0;
    /// @}

    int ChannelCount = 0;  ///< how many it has; nothing compares it with the channels stored
};

/// What `QueryDevice` gives, to be given back to `ReleaseDevice`.
struct T_DeviceList {
    int count = 0;              ///< number of records
    T_Device* items = nullptr;  ///< the records; null when there are none
};

/// A kind of device. No operation uses it.
struct T_DeviceType {
    int TypeId = 0;        ///< as in `T_Device`
    std::string TypeName;  ///< what users see
};

/// One video input of a device.
struct T_Channel {
    std::string Guid;         ///< the key, made by the caller (`getGuid`)
    std::string Device_Guid;  ///< the device that has it
    std::string DisplayName;  ///< what users see
    int Num = 0;   ///< number within the device, as the callers count; lists are ordered by it
    int Type = 0;  ///< a number of the callers' own; the library only stores it
};

/// What `QueryChannel` gives, to be given back to `ReleaseChannelList`.
struct T_CHANNEL_LIST {
    int count = 0;               ///< number of records
    T_Channel* items = nullptr;  ///< the records; null when there are none
};

/// A kind of channel. No operation uses it.
struct T_ChannelType {
    int TypeId = 0;        ///< as in `T_Channel`
    std::string TypeName;  ///< what users see
};

/// How one channel is shown and streamed. `QueryChannelConfig` gives one, to be given back to
/// `ReleaseChannelConfig`.
struct T_ChannelConfig {
    std::string Channel_Guid;  ///< the key; empty in what a query without a match returns

    /// @{
    /// Whether it is hidden, disabled, previewed and shown at half size, its index on the device,
    /// how its recordings are repaired, and which live stream is used with which settings: numbers
    /// of the callers' own; the library only stores them.
    int Hidden = 0;
    int Disabled = 0;
    int Preview = 0;
    int HalfSize = 0;
    int DeviceIndex = 0;
    int DBRepairStrateqy = 0;
    int LiveStreamIndex = 0;
    int LiveStreamSettings = 0;
    /// @}
};

/// One driver of the catalogue.
struct T_DeviceDriverInfo {
    int Id = 0;  ///< the key, given by the caller; 0 in what a query without a match returns
    std::string DriverKey;   ///< what devices name it by; nothing keeps it unique
    std::string DriverName;  ///< what users see
    int DriverType = 0;      ///< a number of the callers' own; the library only stores it
    std::string Source;      ///< goes into an insert without quotes, see DeviceDriverInfoDao
};

}  // namespace dbservice

#endif
