#include "dbservice/DBService.h"
#include "dbservice/recording/ArchiveInfoDao.h"
#include "dbservice/recording/CameraScheduleDao.h"
#include "dbservice/recording/OnlineSchedulesDao.h"
#include "dbservice/recording/RecordSchedulesDao.h"
#include "dbservice/recording/SpeedupSchedulesDao.h"
#include "dbservice/recording/StorageDao.h"
#include "dbservice/statement/Result.h"

namespace dbservice {

using statement::noDao;

int DBService::InsertStorage(const T_Storage* storages, int count) {
    return storageDao_ ? storageDao_->InsertStorageImp(storages, count) : noDao();
}

int DBService::UpdateStorage(const T_Storage* storages, int count) {
    return storageDao_ ? storageDao_->UpdateStorageImp(storages, count) : noDao();
}

int DBService::UpdateStorage(const T_Storage& storage) {
    return storageDao_ ? storageDao_->UpdateStorageImp(storage) : noDao();
}

int DBService::DeleteStorage(const T_Storage* storages, int count) {
    return storageDao_ ? storageDao_->DeleteStorageImp(storages, count) : noDao();
}

int DBService::DeleteStorage(std::string channelGuid) {
    return storageDao_ ? storageDao_->DeleteStorageImp(channelGuid) : noDao();
}

T_StorageList* DBService::QueryStorage(std::string channelGuid) {
    return storageDao_ ? storageDao_->QueryStorageImp(channelGuid) : noDao();
}

void DBService::ReleaseStorage(T_StorageList* list) {
    if (storageDao_) storageDao_->ReleaseStorage(list);
}

int DBService::InsertArchiveInfo(const T_ArchiveInfo& archive) {
    return archiveInfoDao_ ? archiveInfoDao_->InsertArchiveInfoImp(archive) : noDao();
}

int DBService::UpdateArchiveInfo(const T_ArchiveInfo& archive) {
    return archiveInfoDao_ ? archiveInfoDao_->UpdateArchiveInfoImp(archive) : noDao();
}

int DBService::DeleteArchiveInfo(std::string guid) {
    return archiveInfoDao_ ? archiveInfoDao_->DeleteArchiveInfoImp(guid) : noDao();
}

T_ArchiveInfoList* DBService::QueryArchiveInfo(std::string guid) {
    return archiveInfoDao_ ? archiveInfoDao_->QueryArchiveInfoImp(guid) : noDao();
}

void DBService::ReleaseArchiveInfoList(T_ArchiveInfoList* list) {
    if (archiveInfoDao_) archiveInfoDao_->ReleaseArchiveInfoList(list);
}

int DBService::InsertCameraSchedule(const T_CameraSchedule& schedule) {
    return cameraScheduleDao_ ? cameraScheduleDao_->InsertCameraScheduleImp(schedule) : noDao();
}

int DBService::UpdateCameraSchedule(const T_CameraSchedule& schedule) {
    return cameraScheduleDao_ ? cameraScheduleDao_->UpdateCameraScheduleImp(schedule) : noDao();
}

int DBService::DeleteCameraSchedule(const std::string& cameraGuid) {
    return cameraScheduleDao_ ? cameraScheduleDao_->DeleteCameraScheduleImp(cameraGuid) : noDao();
}

T_CameraScheduleList* DBService::QueryCameraSchedule(const std::string& cameraGuid) {
    return cameraScheduleDao_ ? cameraScheduleDao_->QueryCameraScheduleImp(cameraGuid) : noDao();
}

void DBService::ReleaseCameraSchedule(T_CameraScheduleList* list) {
    if (cameraScheduleDao_) cameraScheduleDao_->ReleaseCameraSchedule(list);
}

int DBService::InsertOnlineSchedules(const T_Schedules& schedules) {
    return onlineSchedulesDao_ ? onlineSchedulesDao_->InsertOnlineSchedulesImp(schedules) : noDao();
}

int DBService::UpdateOnlineSchedules(const T_Schedules& schedules) {
    return onlineSchedulesDao_ ? onlineSchedulesDao_->UpdateOnlineSchedulesImp(schedules) : noDao();
}

int DBService::DeleteOnlineSchedules(const std::string& guid) {
    return onlineSchedulesDao_ ? onlineSchedulesDao_->DeleteOnlineSchedulesImp(guid) : noDao();
}

T_SchedulesList* DBService::QueryOnlineSchedules(const std::string& guid) {
    return onlineSchedulesDao_ ? onlineSchedulesDao_->QueryOnlineSchedulesImp(guid) : noDao();
}

void DBService::ReleaseOnlineSchedules(T_SchedulesList* list) {
    if (onlineSchedulesDao_) onlineSchedulesDao_->ReleaseOnlineSchedules(list);
}

int DBService::InsertSpeedupSchedules(const T_Schedules& schedules) {
    return speedupSchedulesDao_ ? speedupSchedulesDao_->InsertSpeedupSchedulesImp(schedules)
                                : noDao();
}

int DBService::UpdateSpeedupSchedules(const T_Schedules& schedules) {
    return speedupSchedulesDao_ ? speedupSchedulesDao_->UpdateSpeedupSchedulesImp(schedules)
                                : noDao();
}

int DBService::DeleteSpeedupSchedules(const std::string& guid) {
    return speedupSchedulesDao_ ? speedupSchedulesDao_->DeleteSpeedupSchedulesImp(guid) : noDao();
}

T_SchedulesList* DBService::QuerySpeedupSchedules(const std::string& guid) {
    return speedupSchedulesDao_ ? speedupSchedulesDao_->QuerySpeedupSchedulesImp(guid) : noDao();
}

void DBService::ReleaseSpeedupSchedules(T_SchedulesList* list) {
    if (speedupSchedulesDao_) speedupSchedulesDao_->ReleaseSpeedupSchedules(list);
}

int DBService::InsertRecordSchedules(const T_Schedules& schedules) {
    return recordSchedulesDao_ ? recordSchedulesDao_->InsertRecordSchedulesImp(schedules) : noDao();
}

int DBService::UpdateRecordSchedules(const T_Schedules& schedules) {
    return recordSchedulesDao_ ? recordSchedulesDao_->UpdateRecordSchedulesImp(schedules) : noDao();
}

int DBService::DeleteRecordSchedules(const std::string& guid) {
    return recordSchedulesDao_ ? recordSchedulesDao_->DeleteRecordSchedulesImp(guid) : noDao();
}

T_SchedulesList* DBService::QueryRecordSchedules(const std::string& guid) {
    return recordSchedulesDao_ ? recordSchedulesDao_->QueryRecordSchedulesImp(guid) : noDao();
}

void DBService::ReleaseRecordSchedules(T_SchedulesList* list) {
    if (recordSchedulesDao_) recordSchedulesDao_->ReleaseRecordSchedules(list);
}

}  // namespace dbservice
