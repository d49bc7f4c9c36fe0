#include "dbservice/recording/StorageDao.h"

#include "dbservice/statement/Condition.h"
#include "dbservice/statement/NextId.h"
#include "dbservice/statement/ReadRows.h"
#include "dbservice/statement/Records.h"
#include "dbservice/statement/Result.h"
#include "dbservice/statement/Rows.h"
#include "dbservice/statement/Text.h"

namespace dbservice {

using namespace statement;

namespace {

constexpr char kColumns[] =
    "Channel_Guid,DatabasePath,DatabasePathNonUNC,ArchivePath,ArchivePathNonUNC,DBRepairStrateqy,"
    "ArchiveDb,ArchiveWhenDBFull,ArchiveMaxAge,DbSaveMode,EnableDbPreSecs,EnableDbPostSecs,"
    "DbPreSecs,DbPostSecs,AdminDbPreSecs,AdminDbPostSecs,DbLimitType,DbLimitCount,SaveOnEvent,"
    "SaveOnMotion,SaveStartEvent,SaveStopEvent,SchedulesGuid,ManualRecordSecs,VideoStreamType";

/// A row up to its stream type, still open.
void appendRow(std::string& rows, const T_Storage& storage) {
    append(rows,
           "('{}', '{}', '{}', '{}', '{}', {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, "
           "{}, '{}', '{}', '{}', {}, {}",
           storage.Channel_Guid, storage.DatabasePath, storage.DatabasePathNonUNC,
           storage.ArchivePath, storage.ArchivePathNonUNC, storage.DBRepairStrateqy,
           storage.ArchiveDb, storage.ArchiveWhenDBFull, storage.ArchiveMaxAge, storage.DbSaveMode,
           storage.EnableDbPreSecs, storage.EnableDbPostSecs, storage.DbPreSecs, storage.DbPostSecs,
           storage.AdminDbPreSecs, storage.AdminDbPostSecs, storage.DbLimitType,
           storage.DbLimitCount, storage.SaveOnEvent, storage.SaveOnMotion, storage.SaveStartEvent,
           storage.SaveStopEvent, storage.SchedulesGuid, storage.ManualRecordSecs,
           storage.VideoStreamType);
}

}  // namespace

StorageDao::StorageDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int StorageDao::InsertStorageImp(const T_Storage* storages, int count) {
    // Before the look at the records, deliberately.
    IdSequence ids(*dataAccess_, dbName_, "storage");
    const Records<T_Storage> records(storages, count);
    if (records.empty()) return noRecords();
    std::string text = compose("insert into storage({},Id) values{};", kColumns,
                               rowsOf(records, appendRow, ", {})", ids));
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

int StorageDao::UpdateStorageImp(const T_Storage* storages, int count) {
    const Records<T_Storage> records(storages, count);
    if (records.empty()) return noRecords();
    std::string text =
        compose("replace into storage({}) values{};", kColumns, rowsOf(records, appendRow, ")"));
    return zeroOrError(dataAccess_->Execute(dbName_, std::move(text)));
}

int StorageDao::UpdateStorageImp(const T_Storage& storage) {
    std::string text = compose(
        "update storage set DatabasePath = '{}',DatabasePathNonUNC = '{}',ArchivePath = '{}',"
        "ArchivePathNonUNC = '{}',DBRepairStrateqy = '{}',ArchiveDb = '{}',"
        "ArchiveWhenDBFull = '{}',ArchiveMaxAge = '{}',DbSaveMode = '{}',EnableDbPreSecs = '{}',"
        "EnableDbPostSecs = '{}',DbPreSecs = '{}',DbPostSecs = '{}',AdminDbPreSecs = '{}',"
        "AdminDbPostSecs = '{}',DbLimitType = '{}',DbLimitCount = '{}',SaveOnEvent = '{}',"
        "SaveOnMotion = '{}',SaveStartEvent = '{}',SaveStopEvent = '{}',SchedulesGuid = '{}',"
        "ManualRecordSecs = '{}',VideoStreamType = '{}' where Channel_Guid = '{}'",
        storage.DatabasePath, storage.DatabasePathNonUNC, storage.ArchivePath,
        storage.ArchivePathNonUNC, storage.DBRepairStrateqy, storage.ArchiveDb,
        storage.ArchiveWhenDBFull, storage.ArchiveMaxAge, storage.DbSaveMode,
        storage.EnableDbPreSecs, storage.EnableDbPostSecs, storage.DbPreSecs, storage.DbPostSecs,
        storage.AdminDbPreSecs, storage.AdminDbPostSecs, storage.DbLimitType, storage.DbLimitCount,
        storage.SaveOnEvent, storage.SaveOnMotion, storage.SaveStartEvent, storage.SaveStopEvent,
        storage.SchedulesGuid, storage.ManualRecordSecs, storage.VideoStreamType,
        storage.Channel_Guid);
    return zeroOrError(dataAccess_->Update(dbName_, std::move(text)));
}

int StorageDao::DeleteStorageImp(const T_Storage* storages, int count) {
    const Records<T_Storage> records(storages, count);
    if (records.empty()) return noRecords();
    const std::string condition = anyKey(records, " Channel_Guid='{}'", &T_Storage::Channel_Guid);
    return dataAccess_->Execute(dbName_, compose("delete from storage where{}", condition));
}

int StorageDao::DeleteStorageImp(std::string channelGuid) {
    return dataAccess_->Execute(
        dbName_, compose("delete from storage where Channel_Guid ='{}'", channelGuid));
}

T_StorageList* StorageDao::QueryStorageImp(std::string channelGuid) {
    std::string text = compose("select {} from storage", kColumns);
    if (!channelGuid.empty()) append(text, " where Channel_Guid='{}'", channelGuid);
    text += " order by Id";
    return listOrNull<T_StorageList>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

int StorageDao::SetValue(dbaccess::ResultSet* row, T_Storage* storage) {
    const dbaccess::Field fields[] = {
        {"Channel_Guid", &storage->Channel_Guid},
        {"DatabasePath", &storage->DatabasePath},
        {"DatabasePathNonUNC", &storage->DatabasePathNonUNC},
        {"ArchivePath", &storage->ArchivePath},
        {"ArchivePathNonUNC", &storage->ArchivePathNonUNC},
        {"DBRepairStrateqy", &storage->DBRepairStrateqy},
        {"ArchiveDb", &storage->ArchiveDb},
        {"ArchiveWhenDBFull", &storage->ArchiveWhenDBFull},
        {"ArchiveMaxAge", &storage->ArchiveMaxAge},
        {"DbSaveMode", &storage->DbSaveMode},
        {"EnableDbPreSecs", &storage->EnableDbPreSecs},
        {"EnableDbPostSecs", &storage->EnableDbPostSecs},
        {"DbPreSecs", &storage->DbPreSecs},
        {"DbPostSecs", &storage->DbPostSecs},
        {"AdminDbPreSecs", &storage->AdminDbPreSecs},
        {"AdminDbPostSecs", &storage->AdminDbPostSecs},
        {"DbLimitType", &storage->DbLimitType},
        {"DbLimitCount", &storage->DbLimitCount},
        {"SaveOnEvent", &storage->SaveOnEvent},
        {"SaveOnMotion", &storage->SaveOnMotion},
        {"SaveStartEvent", &storage->SaveStartEvent},
        {"SaveStopEvent", &storage->SaveStopEvent},
        {"SchedulesGuid", &storage->SchedulesGuid},
        {"ManualRecordSecs", &storage->ManualRecordSecs},
        {"VideoStreamType", &storage->VideoStreamType},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void StorageDao::ReleaseStorage(T_StorageList* list) {
    release(list);
}

}  // namespace dbservice
