#ifndef DBSERVICE_RECORDING_RECORDINGRECORDS_H
#define DBSERVICE_RECORDING_RECORDINGRECORDS_H

#include <string>

#include "base/Export.h"

namespace dbservice {

/// How one channel is recorded; the numbers are the callers' own codes. The last two members have
/// no default, and an insert stores whatever lies there: write `T_Storage storage{};`, with the
/// braces, for 0. A query does not set them either where the column is NULL.
struct DBSERVICE_API T_Storage {
    T_Storage() = default;
    T_Storage(const T_Storage&) = default;

    /// Copies all up to `SaveStopEvent`; the three members behind it stay as they are: callers rely
    /// on it. To copy everything construct a new record.
    T_Storage& operator=(const T_Storage& other);

    std::string Channel_Guid;  ///< the key
    std::string DatabasePath;
    std::string DatabasePathNonUNC;
    std::string ArchivePath;
    std::string ArchivePathNonUNC;
    int DBRepairStrateqy = 0;
    int ArchiveDb = 0;
    int ArchiveWhenDBFull = 0;
    int ArchiveMaxAge = 0;
    int DbSaveMode = 0;
    int EnableDbPreSecs = 0;
    int EnableDbPostSecs = 0;
    int DbPreSecs = 0;   ///< seconds kept before an event
    int DbPostSecs = 0;  ///< seconds kept after an event
    int AdminDbPreSecs = 0;
    int AdminDbPostSecs = 0;
    int DbLimitType = 0;
    int DbLimitCount = 0;
    int SaveOnEvent = 0;
    int SaveOnMotion = 0;
    std::string SaveStartEvent;
    std::string SaveStopEvent;
    std::string SchedulesGuid;  ///< the schedule that applies
    int ManualRecordSecs;       ///< length of a manual recording in seconds
    int VideoStreamType;
};

struct T_StorageList {
    int count = 0;
    T_Storage* items = nullptr;
};

/// One archive run.
struct T_ArchiveInfo {
    std::string Guid;         ///< the key, made by the caller (`getGuid`)
    std::string ArchiveTime;  ///< in the callers' format; compared and ordered as text
};

struct T_ArchiveInfoList {
    int count = 0;
    T_ArchiveInfo* items = nullptr;
};

/// The schedules of one camera.
struct T_CameraSchedule {
    std::string Guid;         ///< of the assignment, made by the caller (`getGuid`)
    std::string Camera_Guid;  ///< what updates, deletes and queries go by
    int OnlineSchedulingType = 0;
    std::string OnlineSchedules_Guid;
    int SpeedupSchedulingType = 0;
    std::string SpeedupSchedules_Guid;
};

struct T_CameraScheduleList {
    int count = 0;
    T_CameraSchedule* items = nullptr;
};

/// One schedule: of being on line, of recording, or of speeding up. The type has no default, and an
/// insert stores whatever lies there: write `T_Schedules schedules{};`, with the braces, for 0. A
/// query does not set it either where the column is NULL.
struct T_Schedules {
    std::string Guid;  ///< the key, made by the caller (`getGuid`)
    std::string Name;
    std::string Schedules;  ///< in the callers' format
    int SchedulesType;      ///< the callers' own code
};

struct T_SchedulesList {
    int count = 0;
    T_Schedules* items = nullptr;
};

// Records that no statement uses.

struct T_OnlineSchedules {
    int Id = 0;
    std::string Name;
    int Type = 0;
    int State = 0;
};

struct T_SpeedupSchedules {
    int Id = 0;
    std::string Name;
    int Type = 0;
    int State = 0;
};

struct T_OnlineScheduling {
    std::string Guid;
    std::string Name;
    int Type = 0;
};

struct T_SpeedupScheduling {
    std::string Guid;
    std::string Name;
    int Type = 0;
};

struct T_SchedulingType {
    int TypeId = 0;
    std::string TypeName;
};

}  // namespace dbservice

#endif
