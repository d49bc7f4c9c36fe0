#ifndef DBSERVICE_EVENTS_EVENTRECORDS_H
#define DBSERVICE_EVENTS_EVENTRECORDS_H

#include <string>

#include "dbservice/devices/DeviceRecords.h"

namespace dbservice {

/// One alarm. Members that are not stored keep their defaults in what queries return.
struct T_AlarmInfo {
    std::string Guid;     ///< the key, made by the caller (`getGuid`)
    unsigned int SN = 0;  ///< serial number, given by the database
    std::string ChannelGuid;
    std::string DeviceGuid;
    int AlarmType = 0;   ///< not stored
    int AlarmState = 0;  ///< not stored
    int AlarmMethod = 0;
    int AlarmLevel = 0;
    std::string AlarmName;  ///< not stored
    int AlarmCount = 0;     ///< not stored
    std::string BeginTime;  ///< in the callers' format, compared as text
    std::string EndTime;
    std::string AlarmContent;
    std::string AlarmSource;
    std::string ChannelName;  ///< not stored
    std::string DeviceName;   ///< not stored
    std::string UserName;     ///< not stored
};

struct T_AlarmInfoList {
    int count = 0;
    T_AlarmInfo* items = nullptr;
};

/// What `QueryAlarmInfo` searches for. All filters are sent, whatever their values; how they go
/// together with the channels stands there.
struct T_SearchAlarmParam {
    int AlarmType = 0;  ///< not looked at
    int AlarmMethod = 0;
    int AlarmLevel = 0;
    int AlarmState = 0;                   ///< not looked at
    std::string BeginTime;                ///< the begin time itself, not a bound
    std::string EndTime;                  ///< the end time itself, not a bound
    int BeginIndex = 0;                   ///< first row to return, counted from 0
    int EndIndex = 0;                     ///< last row to return, itself included
    int ChannelCount = 0;                 ///< entries of `Channels`; below 1 there is no search
    const T_Channel* Channels = nullptr;  ///< their `Guid`s are looked at; not owned
};

/// One face that a camera captured; the attributes are the analysis' own codes. Numbers from 2^31
/// on are stored negative, and read back as they were.
struct T_FaceCapture {
    std::string filePath;  ///< of the picture
    unsigned int age = 0;
    unsigned int beard = 0;
    unsigned int eyeOCC = 0;
    unsigned int eyeClose = 0;
    unsigned int headWear = 0;
    unsigned int minority = 0;    ///< of what a query returns: the capture time
    unsigned int mouthClose = 0;  ///< of what a query returns: the minority
    unsigned int mouthOCC = 0;
    unsigned int noseOCC = 0;
    unsigned int sex = 0;
    unsigned int addTime = 0;  ///< capture time, seconds since 1970
};

/// Unlike most lists this one has its pointer first: callers are compiled against it.
struct T_FaceCaptureList {
    T_FaceCapture* items = nullptr;
    int count = 0;
};

/// What comparing a captured face with a stored one gave.
struct T_FaceCompare {
    std::string basePath;  ///< of the stored picture
    std::string facePath;  ///< of the captured picture
    std::string name;      ///< of the person
    std::string faceID;    ///< of the person
    int similarity = 0;    ///< a whole score
    int addTime = 0;       ///< seconds since 1970
};

/// Unlike most lists this one has its pointer first: callers are compiled against it.
struct T_FaceCompareList {
    T_FaceCompare* items = nullptr;
    int count = 0;
};

}  // namespace dbservice

#endif
