#ifndef BENCH_RECORDS_H
#define BENCH_RECORDS_H

#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "dbservice/devices/DeviceRecords.h"
#include "dbservice/events/EventRecords.h"

// The records that are written and read, their columns and the statements on them. A record's
// fields are a tuple of references in the order of its columns, so that each library's reading and
// binding is written once for all records, and costs no more than by hand.

namespace bench {

using dbservice::T_AlarmInfo;
using dbservice::T_Device;
using dbservice::T_FaceCapture;
using dbservice::T_SearchAlarmParam;

struct Number {
    int value = 0;
};

template <class Record>
auto fieldsOf(Record& record) {
    if constexpr (std::is_base_of_v<T_Device, Record>) {
        return std::tie(record.Guid, record.ServerGuid, record.Mac, record.DriverKey,
                        record.DisplayName, record.IPAddress, record.HttpPort, record.FtpPort,
                        record.DefaultHttpPort, record.DefaultFtpPort, record.State,
                        record.UserName, record.Password, record.Com1Driver, record.Com2Driver,
                        record.Browsable, record.VenderType, record.DeviceType, record.DriverType,
                        record.ChannelCount);
    } else if constexpr (std::is_base_of_v<T_AlarmInfo, Record>) {
        return std::tie(record.Guid, record.DeviceGuid, record.ChannelGuid, record.AlarmLevel,
                        record.AlarmMethod, record.BeginTime, record.EndTime, record.AlarmContent,
                        record.AlarmSource, record.SN);
    } else if constexpr (std::is_base_of_v<T_FaceCapture, Record>) {
        return std::tie(record.filePath, record.age, record.beard, record.eyeOCC, record.eyeClose,
                        record.headWear, record.minority, record.mouthClose, record.mouthOCC,
                        record.noseOCC, record.sex, record.addTime);
    } else {
        return std::tie(record.value);
    }
}

/// A device that a growing list moves, as one would write it. Assigning a T_Device leaves fields
/// out.
struct Device : T_Device {
    Device() = default;
    Device(const Device&) = default;
    Device(Device&& other) noexcept {
        auto fields = fieldsOf(*this);
        auto others = fieldsOf(other);
        fields.swap(others);
    }
    Device& operator=(const Device&) = delete;
    Device& operator=(Device&&) = delete;
    ~Device() = default;
};

/// The values that a tuple refers to, as a tuple of its own.
template <class... Fields>
std::tuple<std::decay_t<Fields>...> valuesOf(const std::tuple<Fields&...>& fields) {
    return fields;
}

using FaceRow = decltype(valuesOf(fieldsOf(std::declval<T_FaceCapture&>())));
using DeviceRow = decltype(valuesOf(
    std::tuple_cat(fieldsOf(std::declval<T_Device&>()), std::tie(std::declval<int&>()))));

#define DEVICE_COLUMNS                                                                      \
    "Guid,ServerGuid,Mac,DriverKey,DisplayName,IPAddress,HttpPort,FtpPort,DefaultHttpPort," \
    "DefaultFtpPort,State,UserName,Password,Com1Driver,Com2Driver,Browsable,VenderType,"    \
    "DeviceType,DriverType,ChannelCount"
#define FACE_COLUMNS \
    "filePath,age,beard,eyeOCC,eyeClose,headWear,minority,mouthClose,mouthOCC,noseOCC,sex,addTime"

constexpr char kListDevices[] = "select " DEVICE_COLUMNS " from device order by DisplayName";
constexpr char kDeviceByKey[] =
    "select " DEVICE_COLUMNS " from device where Guid=? order by DisplayName";
constexpr char kLargestId[] = "select max(Id) as Id from device";
constexpr char kInsertDevice[] = "insert into device(" DEVICE_COLUMNS ",Id) values";
constexpr char kSearchAlarms[] =
    "select Guid,DeviceGuid,ChannelGuid,AlarmLevel,AlarmMethod,BeginTime,EndTime,AlarmContent,"
    "AlarmSource,SN from alarminfo where ChannelGuid=? and AlarmLevel=? and AlarmMethod=? and "
    "BeginTime=? and EndTime=?";
constexpr char kFacesBetween[] =
    "select " FACE_COLUMNS " from facecapture where addTime>? and addTime<? order by addTime";
constexpr char kInsertFace[] = "insert into facecapture(" FACE_COLUMNS ") values";

#undef DEVICE_COLUMNS
#undef FACE_COLUMNS

/// A checksum of all fields of the records that it was shown, in their order.
class Digest {
public:
    template <class Record>
    void add(const Record& record) {
        ++records_;
        std::apply([this](const auto&... fields) { (this->addValue(fields), ...); },
                   fieldsOf(record));
    }

    int records() const { return records_; }
    bool operator==(const Digest& other) const { return hash_ == other.hash_; }

private:
    void addValue(const std::string& text) {
        for (const char character : text)
            addByte(static_cast<unsigned char>(character));
        addByte(0xFF);  // is in no UTF-8
    }
    template <class Integer>
    void addValue(Integer number) {
        addValue(std::to_string(number));
    }
    void addByte(unsigned char byte) { hash_ = (hash_ ^ byte) * 1099511628211U; }  // FNV-1a

    std::uint64_t hash_ = 14695981039346656037U;
    int records_ = 0;
};

}  // namespace bench

#endif
