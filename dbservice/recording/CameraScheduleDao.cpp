#include "dbservice/recording/CameraScheduleDao.h"

#include "dbservice/statement/ReadRows.h"
#include "dbservice/statement/Result.h"
#include "dbservice/statement/Text.h"

namespace dbservice {

using namespace statement;

namespace {

constexpr char kColumns[] =
    "Guid,Camera_Guid,OnlineSchedulingType,OnlineSchedules_Guid,SpeedupSchedulingType,"
    "SpeedupSchedules_Guid";

}  // namespace

CameraScheduleDao::CameraScheduleDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int CameraScheduleDao::InsertCameraScheduleImp(const T_CameraSchedule& schedule) {
    std::string text = compose("insert into cameraschedule({}) values('{}','{}',{},'{}',{},'{}');",
                               kColumns, schedule.Guid, schedule.Camera_Guid,
                               schedule.OnlineSchedulingType, schedule.OnlineSchedules_Guid,
                               schedule.SpeedupSchedulingType, schedule.SpeedupSchedules_Guid);
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

int CameraScheduleDao::UpdateCameraScheduleImp(const T_CameraSchedule& schedule) {
    std::string text = compose(
        "update cameraschedule set Camera_Guid = '{}',OnlineSchedulingType = '{}',"
        "OnlineSchedules_Guid = '{}',SpeedupSchedulingType = '{}',SpeedupSchedules_Guid = '{}'"
        " where Camera_Guid = '{}'",
        schedule.Camera_Guid, schedule.OnlineSchedulingType, schedule.OnlineSchedules_Guid,
        schedule.SpeedupSchedulingType, schedule.SpeedupSchedules_Guid, schedule.Camera_Guid);
    return zeroOrError(dataAccess_->Update(dbName_, std::move(text)));
}

int CameraScheduleDao::DeleteCameraScheduleImp(const std::string& cameraGuid) {
    return dataAccess_->Execute(
        dbName_, compose("delete from cameraschedule where Camera_Guid='{}'", cameraGuid));
}

T_CameraScheduleList* CameraScheduleDao::QueryCameraScheduleImp(const std::string& cameraGuid) {
    std::string text = compose("select {} from cameraschedule", kColumns);
    if (!cameraGuid.empty()) append(text, " where Camera_Guid='{}'", cameraGuid);
    return listOrNull<T_CameraScheduleList>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

int CameraScheduleDao::SetValue(dbaccess::ResultSet* row, T_CameraSchedule* schedule) {
    const dbaccess::Field fields[] = {
        {"Guid", &schedule->Guid},
        {"Camera_Guid", &schedule->Camera_Guid},
        {"OnlineSchedulingType", &schedule->OnlineSchedulingType},
        {"OnlineSchedules_Guid", &schedule->OnlineSchedules_Guid},
        {"SpeedupSchedulingType", &schedule->SpeedupSchedulingType},
        {"SpeedupSchedules_Guid", &schedule->SpeedupSchedules_Guid},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void CameraScheduleDao::ReleaseCameraSchedule(T_CameraScheduleList* list) {
    release(list);
}

}  // namespace dbservice
