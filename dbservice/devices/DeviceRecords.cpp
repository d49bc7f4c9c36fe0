#include "dbservice/devices/DeviceRecords.h"

namespace dbservice {

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): each string handles it
T_Device& T_Device::operator=(const T_Device& other) {
    Guid = other.Guid;
    Mac = other.Mac;
    DriverKey = other.DriverKey;
    DisplayName = other.DisplayName;
    IPAddress = other.IPAddress;
    HttpPort = other.HttpPort;
    FtpPort = other.FtpPort;
    DefaultHttpPort = other.DefaultHttpPort;
    DefaultFtpPort = other.DefaultFtpPort;
    State = other.State;
    UserName = other.UserName;
    Password = other.Password;
    Com1Driver = other.Com1Driver;
    Com2Driver = other.Com2Driver;
    Browsable = other.Browsable;
    return *this;
}

}  // namespace dbservice
