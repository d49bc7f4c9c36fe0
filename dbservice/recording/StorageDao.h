#ifndef DBSERVICE_RECORDING_STORAGEDAO_H
#define DBSERVICE_RECORDING_STORAGEDAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/recording/RecordingRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table storage.
class DBSERVICE_API StorageDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    StorageDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    StorageDao(const StorageDao&) = default;
    StorageDao& operator=(const StorageDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int InsertStorageImp(const T_Storage* storages, int count);
    int UpdateStorageImp(const T_Storage* storages, int count);
    int UpdateStorageImp(const T_Storage& storage);
    int DeleteStorageImp(const T_Storage* storages, int count);
    int DeleteStorageImp(std::string channelGuid);
    T_StorageList* QueryStorageImp(std::string channelGuid);
    void ReleaseStorage(T_StorageList* list);
    /// @}

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_Storage* storage);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
