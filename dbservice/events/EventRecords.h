#ifndef DBSERVICE_EVENTS_EVENTRECORDS_H
#define DBSERVICE_EVENTS_EVENTRECORDS_H

#include <string>

#include "dbservice/devices/DeviceRecords.h"

namespace dbservice {

/// One alarm. Members that are not stored keep their defaults in what queries return.
///
/// Times are texts in any form, as the library only compares them as texts. Where the order
/// matters, as in `AlarmPages`, write them as "2026-11-21 03:00:00" in UTC, which `timeText` makes.
struct T_AlarmInfo {
    std::string Guid;          ///< the key, made by the caller (`getGuid`)
    unsigned int SN = 0;       ///< serial number, given by the database
    std::string ChannelGuid;   ///< the channel that raised it
    std::string DeviceGuid;    ///< the device that raised it
    int AlarmType = 0;         ///< not stored
    int AlarmState = 0;        ///< not stored
    int AlarmMethod = 0;       ///< how it was raised: a number of the callers' own
    int AlarmLevel = 0;        ///< how grave it is: a number of the callers' own
    std::string AlarmName;     ///< not stored
    int AlarmCount = 0;        ///< not stored
    std::string BeginTime;     ///< see above
    std::string EndTime;       ///< see above; empty where the callers have none
    std::string AlarmContent;  ///< free text
    std::string AlarmSource;   ///< free text, 255 characters at most
    std::string ChannelName;   ///< not stored
    std::string DeviceName;    ///< not stored
    std::string UserName;      ///< not stored
};

/// What `QueryAlarmInfo` gives, to be given back to `ReleaseAlarmInfoList`.
struct T_AlarmInfoList {
    int count = 0;                 ///< number of records
    T_AlarmInfo* items = nullptr;  ///< the records; null when there are none
};

/// What `QueryAlarmInfo` searches for. All filters are sent, whatever their values; how they go
/// together with the channels stands there.
struct T_SearchAlarmParam {
    int AlarmType = 0;                    ///< not looked at
    int AlarmMethod = 0;                  ///< the method itself; 0 is one like any other
    int AlarmLevel = 0;                   ///< the level itself; 0 is one like any other
    int AlarmState = 0;                   ///< not looked at
    std::string BeginTime;                ///< the begin time itself, not a bound
    std::string EndTime;                  ///< the end time itself, not a bound
    int BeginIndex = 0;                   ///< first row to return, counted from 0
    int EndIndex = 0;                     ///< last row to return, itself included
    int ChannelCount = 0;                 ///< entries of `Channels`; below 1 there is no search
    const T_Channel* Channels = nullptr;  ///< their `Guid`s are looked at; not owned
};

/// One face that a camera captured. Numbers from 2^31 on are stored negative, and read back as they
/// were.
struct T_FaceCapture {
    std::string filePath;  ///< of the picture

    /// @{
    /// What the analysis found, in its own codes; the library only stores them. OCC: occluded.
    unsigned int age = 0;
    unsigned int beard = 0;
    unsigned int eyeOCC = 0;
    unsigned int eyeClose = 0;
    unsigned int headWear = 0;
    unsigned int minority = 0;    ///< likewise; in what a query returns: the capture time
    unsigned int mouthClose = 0;  ///< likewise; in what a query returns: the minority
    unsigned int mouthOCC = 0;
    unsigned int noseOCC = 0;
    unsigned int sex = 0;
    /// @}

    unsigned int addTime = 0;  ///< capture time, seconds since 1970 (`timeNumber`)
};

/// What `QueryFaceCapture` gives, to be given back to `ReleaseFaceCaptureLsit`.
/// Unlike most lists it has its pointer first: callers are compiled against it.
struct T_FaceCaptureList {
    T_FaceCapture* items = nullptr;  ///< the records; null when there are none
    int count = 0;                   ///< number of records
};

/// What comparing a captured face with a stored one gave.
struct T_FaceCompare {
    std::string basePath;  ///< of the stored picture
    std::string facePath;  ///< of the captured picture
    std::string name;      ///< of the person
    std::string faceID;    ///< of the person
    int similarity = 0;    ///< a whole score, on a scale of the callers' own
    int addTime = 0;       ///< seconds since 1970 (`timeNumber`)
};

/// What `QueryFaceCompare` gives, to be given back to `ReleaseFaceCompareLsit`.
/// Unlike most lists it has its pointer first: callers are compiled against it.
struct T_FaceCompareList {
    T_FaceCompare* items = nullptr;  ///< the records; null when there are none
    int count = 0;                   ///< number of records
};

}  // namespace dbservice

#endif
