#ifndef DBSERVICE_LAYOUTS_VIEWGROUPINFODAO_H
#define DBSERVICE_LAYOUTS_VIEWGROUPINFODAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/layouts/LayoutRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table viewgroupinfo.
class DBSERVICE_API ViewGroupInfoDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    ViewGroupInfoDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    ViewGroupInfoDao(const ViewGroupInfoDao&) = default;
    ViewGroupInfoDao& operator=(const ViewGroupInfoDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int InsertViewGroupInfoImp(const T_ViewGroupInfo& viewGroup);
    int InsertViewGroupInfoImp(const T_ViewGroupInfo* viewGroups, int count);
    int UpdateViewGroupInfoImp(const T_ViewGroupInfo& viewGroup);
    int DeleteViewGroupInfoImp(std::string guid, std::string userGuid);
    T_ViewGroupInfoList* QueryViewGroupInfoImp(std::string guid, std::string userGuid,
                                               bool includeType1);
    void ReleaseViewGroupInfoList(T_ViewGroupInfoList* list);
    /// @}

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_ViewGroupInfo* viewGroup);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
