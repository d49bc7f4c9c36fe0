#ifndef DBSERVICE_LAYOUTS_GROUPINFODAO_H
#define DBSERVICE_LAYOUTS_GROUPINFODAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/layouts/LayoutRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table groupinfo.
class DBSERVICE_API GroupInfoDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    GroupInfoDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    GroupInfoDao(const GroupInfoDao&) = default;
    GroupInfoDao& operator=(const GroupInfoDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int InsertGroupInfoImp(const T_GroupInfo& group);
    int InsertGroupInfoImp(const T_GroupInfo* groups, int count);
    int UpdateGroupInfoImp(const T_GroupInfo& group);
    int DeleteGroupInfoImp(std::string viewGroupGuid);
    int DeleteGroupInfoImp(const T_GroupInfo* groups, int count);
    T_GroupInfoList* QueryGroupInfoImp(std::string viewGroupGuid);
    void ReleaseGroupInfoList(T_GroupInfoList* list);
    /// @}

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_GroupInfo* group);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
