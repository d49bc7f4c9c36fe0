#include "dbservice/recording/RecordingRecords.h"

namespace dbservice {

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): each string handles it
T_Storage& T_Storage::operator=(const T_Storage& other) {
    Channel_Guid = other.Channel_Guid;
    DatabasePath = other.DatabasePath;
    DatabasePathNonUNC = other.DatabasePathNonUNC;
    ArchivePath = other.ArchivePath;
    ArchivePathNonUNC = other.ArchivePathNonUNC;
    DBRepairStrateqy = other.DBRepairStrateqy;
    ArchiveDb = other.ArchiveDb;
    ArchiveWhenDBFull = other.ArchiveWhenDBFull;
    ArchiveMaxAge = other.ArchiveMaxAge;
    DbSaveMode = other.DbSaveMode;
    EnableDbPreSecs = other.EnableDbPreSecs;
    EnableDbPostSecs = other.EnableDbPostSecs;
    DbPreSecs = other.DbPreSecs;
    DbPostSecs = other.DbPostSecs;
    AdminDbPreSecs = other.AdminDbPreSecs;
    AdminDbPostSecs = other.AdminDbPostSecs;
    DbLimitType = other.DbLimitType;
    DbLimitCount = other.DbLimitCount;
    SaveOnEvent = other.SaveOnEvent;
    SaveOnMotion = other.SaveOnMotion;
    SaveStartEvent = other.SaveStartEvent;
    SaveStopEvent = other.SaveStopEvent;
    return *this;
}

}  // namespace dbservice
