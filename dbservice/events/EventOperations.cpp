#include "dbservice/DBService.h"
#include "dbservice/events/CAlarmInfoDao.h"
#include "dbservice/events/CFaceCaptureDao.h"
#include "dbservice/events/CFaceCompareDao.h"
#include "dbservice/statement/Result.h"

namespace dbservice {

using statement::noDao;

int DBService::InsertAlarmInfo(const T_AlarmInfo& alarm) {
    return alarmInfoDao_ ? alarmInfoDao_->InsertAlarmInfoImp(alarm) : noDao();
}

int DBService::UpdateAlarmInfo(const T_AlarmInfo& alarm) {
    return alarmInfoDao_ ? alarmInfoDao_->UpdateAlarmInfoImp(alarm) : noDao();
}

int DBService::DeleteAlarmInfo(const std::string& guid, std::string channelGuid) {
    return alarmInfoDao_ ? alarmInfoDao_->DeleteAlarmInfoImp(guid, channelGuid) : noDao();
}

T_AlarmInfoList* DBService::QueryAlarmInfo(const std::string& guid, std::string channelGuid) {
    return alarmInfoDao_ ? alarmInfoDao_->QueryAlarmInfoImp(guid, channelGuid) : noDao();
}

T_AlarmInfoList* DBService::QueryAlarmInfo(const T_SearchAlarmParam* request, int& total) {
    return alarmInfoDao_ ? alarmInfoDao_->QueryAlarmInfoImp(request, total) : noDao();
}

void DBService::ReleaseAlarmInfoList(T_AlarmInfoList* list) {
    if (alarmInfoDao_) alarmInfoDao_->ReleaseAlarmInfo(list);
}

int DBService::InsertFaceCapture(const T_FaceCapture* faces, int count) {
    return faceCaptureDao_ ? faceCaptureDao_->insertFaceCaptureImp(faces, count) : noDao();
}

T_FaceCaptureList* DBService::QueryFaceCapture(unsigned int beginTime, unsigned int endTime) {
    return faceCaptureDao_ ? faceCaptureDao_->queryFaceCaptureImp(beginTime, endTime) : noDao();
}

void DBService::ReleaseFaceCaptureLsit(T_FaceCaptureList* list) {
    if (faceCaptureDao_) faceCaptureDao_->relesseFaceCaptureList(list);
}

int DBService::InsertFaceCompare(const T_FaceCompare& comparison) {
    return faceCompareDao_ ? faceCompareDao_->insertFaceCompareImp(comparison) : noDao();
}

T_FaceCompareList* DBService::QueryFaceCompare(unsigned int beginTime, unsigned int endTime) {
    return faceCompareDao_ ? faceCompareDao_->queryFaceCompareImp(beginTime, endTime) : noDao();
}

void DBService::ReleaseFaceCompareLsit(T_FaceCompareList* list) {
    if (faceCompareDao_) faceCompareDao_->releaseFaceCompareList(list);
}

}  // namespace dbservice
