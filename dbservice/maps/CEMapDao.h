#ifndef DBSERVICE_MAPS_CEMAPDAO_H
#define DBSERVICE_MAPS_CEMAPDAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/maps/MapRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The tables mapinfo and mapitemparam.
class DBSERVICE_API CEMapDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    CEMapDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    CEMapDao(const CEMapDao&) = default;
    CEMapDao& operator=(const CEMapDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int InsertEMapInfoImp(const T_EMapInfo* maps, int count);
    int UpdateEMapInfoImp(const T_EMapInfo* maps, int count);
    int DeleteEMapInfoImp(const T_EMapInfo* maps, int count);
    T_EMapInfoList* QueryEMapInfoImp(const T_EMapInfo* keys, int count, bool unused);
    void ReleaseEMapInfo(T_EMapInfoList* list);

    int InsertEMapItemInfoImp(const T_EMapItemInfo* items, int count);
    int UpdateEMapItemInfoImp(const T_EMapItemInfo* items, int count);
    int DeleteEMapItemInfoImp(const T_EMapInfo* maps, int count);
    int DeleteEMapItemInfoImp(const T_EMapItemInfo* items, int count);
    T_EMapItemInfoList* QueryEMapItemInfoImp(const T_EMapInfo* maps, int count);
    void ReleaseEMapItemInfoListImp(T_EMapItemInfoList* list);
    /// @}

    /// @{
    /// Copies the current row into the record, but for its `EditFlag`. Returns 0.
    static int SetMapInfoValue(dbaccess::ResultSet* row, T_EMapInfo* map);
    static int SetMapItemValue(dbaccess::ResultSet* row, T_EMapItemInfo* item);
    /// @}

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
