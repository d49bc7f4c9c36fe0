#ifndef DBSERVICE_RECORDING_ARCHIVEINFODAO_H
#define DBSERVICE_RECORDING_ARCHIVEINFODAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/recording/RecordingRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table archiveInfo.
class DBSERVICE_API ArchiveInfoDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    ArchiveInfoDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    ArchiveInfoDao(const ArchiveInfoDao&) = default;
    ArchiveInfoDao& operator=(const ArchiveInfoDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int InsertArchiveInfoImp(const T_ArchiveInfo& archive);
    int UpdateArchiveInfoImp(const T_ArchiveInfo& archive);
    int DeleteArchiveInfoImp(std::string guid);
    T_ArchiveInfoList* QueryArchiveInfoImp(std::string guid);
    void ReleaseArchiveInfoList(T_ArchiveInfoList* list);
    /// @}

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_ArchiveInfo* archive);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
