#ifndef DBSERVICE_RECORDING_CAMERASCHEDULEDAO_H
#define DBSERVICE_RECORDING_CAMERASCHEDULEDAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/recording/RecordingRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table cameraschedule.
class DBSERVICE_API CameraScheduleDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    CameraScheduleDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    CameraScheduleDao(const CameraScheduleDao&) = default;
    CameraScheduleDao& operator=(const CameraScheduleDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int InsertCameraScheduleImp(const T_CameraSchedule& schedule);
    int UpdateCameraScheduleImp(const T_CameraSchedule& schedule);
    int DeleteCameraScheduleImp(const std::string& cameraGuid);
    T_CameraScheduleList* QueryCameraScheduleImp(const std::string& cameraGuid);
    void ReleaseCameraSchedule(T_CameraScheduleList* list);
    /// @}

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_CameraSchedule* schedule);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
