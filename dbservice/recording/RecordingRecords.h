#ifndef DBSERVICE_RECORDING_RECORDINGRECORDS_H
#define DBSERVICE_RECORDING_RECORDINGRECORDS_H

#include <string>

#include "base/Export.h"

namespace dbservice {

/// How one channel is recorded. The last two members have no default, and an insert stores whatever
/// lies there: write `T_Storage storage{};`, with the braces, for 0. A query does not set them
/// either where the column is NULL.
struct DBSERVICE_API T_Storage {
    T_Storage() = default;
    T_Storage(const T_Storage&) = default;

    /// Copies all up to `SaveStopEvent`; the three members behind it stay as they are: callers rely
    /// on it. To copy everything construct a new record.
    T_Storage& operator=(const T_Storage& other);

    std::string Channel_Guid;  ///< the key

    /// @{
    /// Where its recordings and its archive lie, as UNC paths and as others.
    std::string DatabasePath;
    std::string DatabasePathNonUNC;
    std::string ArchivePath;
    std::string ArchivePathNonUNC;
    /// @}

    /// @{
    /// How recordings are repaired, archived, limited and saved: numbers of the callers' own; the
    /// library only stores them.
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
    /// @}

    std::string SaveStartEvent;  ///< the events that start saving, in the callers' form
    std::string SaveStopEvent;   ///< the events that end it, likewise
    std::string SchedulesGuid;   ///< the recording schedule that applies
    int ManualRecordSecs;        ///< length of a manual recording in seconds
    int VideoStreamType;         ///< which stream is recorded: a number of the callers' own
};

/// What `QueryStorage` gives, to be given back to `ReleaseStorage`.
struct T_StorageList {
    int count = 0;               ///< number of records
    T_Storage* items = nullptr;  ///< the records; null when there are none
};

/// One archive run.
struct T_ArchiveInfo {
    std::string Guid;         ///< the key, made by the caller (`getGuid`)
    std::string ArchiveTime;  ///< in the callers' form (`timeText`); compared and ordered as text
};

/// What `QueryArchiveInfo` gives, to be given back to `ReleaseArchiveInfoList`.
struct T_ArchiveInfoList {
    int count = 0;                   ///< number of records
    T_ArchiveInfo* items = nullptr;  ///< the records; null when there are none
};

/// The schedules of one camera.
struct T_CameraSchedule {
    std::string Guid;                   ///< of the assignment, made by the caller (`getGuid`)
    std::string Camera_Guid;            ///< what updates, deletes and queries go by
    int OnlineSchedulingType = 0;       ///< a number of the callers' own; only stored
    std::string OnlineSchedules_Guid;   ///< when it is on line; empty for no schedule
    int SpeedupSchedulingType = 0;      ///< a number of the callers' own; only stored
    std::string SpeedupSchedules_Guid;  ///< when it is sped up; empty for no schedule
};

/// What `QueryCameraSchedule` gives, to be given back to `ReleaseCameraSchedule`.
struct T_CameraScheduleList {
    int count = 0;                      ///< number of records
    T_CameraSchedule* items = nullptr;  ///< the records; null when there are none
};

/// One schedule: of being on line, of recording, or of speeding up. The type has no default, and an
/// insert stores whatever lies there: write `T_Schedules schedules{};`, with the braces, for 0. A
/// query does not set it either where the column is NULL.
struct T_Schedules {
    std::string Guid;       ///< the key, made by the caller (`getGuid`)
    std::string Name;       ///< what users see
    std::string Schedules;  ///< the schedule itself, in the callers' form
    int SchedulesType;      ///< a number of the callers' own; the library only stores it
};

/// What `QueryOnlineSchedules`, `QueryRecordSchedules` and `QuerySpeedupSchedules` give, to be
/// given back to the Release operation of the same kind.
struct T_SchedulesList {
    int count = 0;                 ///< number of records
    T_Schedules* items = nullptr;  ///< the records; null when there are none
};

/// No operation uses it: schedules are `T_Schedules`.
struct T_OnlineSchedules {
    /// @{
    /// Of the callers' own.
    int Id = 0;
    std::string Name;
    int Type = 0;
    int State = 0;
    /// @}
};

/// No operation uses it: schedules are `T_Schedules`.
struct T_SpeedupSchedules {
    /// @{
    /// Of the callers' own.
    int Id = 0;
    std::string Name;
    int Type = 0;
    int State = 0;
    /// @}
};

/// What `OnlineSchedulingDao` takes, and does not store.
struct T_OnlineScheduling {
    /// @{
    /// Of the callers' own.
    std::string Guid;
    std::string Name;
    int Type = 0;
    /// @}
};

/// What `SpeedupSchedulingDao` takes, and does not store.
struct T_SpeedupScheduling {
    /// @{
    /// Of the callers' own.
    std::string Guid;
    std::string Name;
    int Type = 0;
    /// @}
};

/// A kind of scheduling. No operation uses it.
struct T_SchedulingType {
    int TypeId = 0;        ///< as in `T_CameraSchedule`
    std::string TypeName;  ///< what users see
};

}  // namespace dbservice

#endif
