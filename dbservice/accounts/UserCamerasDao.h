#ifndef DBSERVICE_ACCOUNTS_USERCAMERASDAO_H
#define DBSERVICE_ACCOUNTS_USERCAMERASDAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/accounts/AccountRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table usercameras.
class DBSERVICE_API UserCamerasDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    UserCamerasDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    UserCamerasDao(const UserCamerasDao&) = default;
    UserCamerasDao& operator=(const UserCamerasDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int InsertUserCamerasImp(const T_UserCameras* cameras, int count);
    int UpdateUserCamerasImp(const T_UserCameras* cameras, int count);
    int UpdateUserCamerasImp(const T_UserCameras& camera);
    int DeleteUserCamerasImp(const T_UserCameras* cameras, int count);
    int DeleteUserCamerasImp(std::string guid, std::string userGuid, std::string cameraGuid);
    T_UserCamerasList* QueryUserCamerasImp(const T_UserCameras* cameras, int count);
    T_UserCamerasList* QueryUserCamerasImp(std::string guid, std::string userGuid,
                                           std::string cameraGuid);
    void ReleaseUserCameras(T_UserCamerasList* list);
    /// @}

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_UserCameras* camera);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
