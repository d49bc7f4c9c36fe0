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

/// The table groupinfo. What its operations do and answer stands with the operations of DBService
/// that forward to them.
class DBSERVICE_API GroupInfoDao {
public:
    GroupInfoDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    GroupInfoDao(const GroupInfoDao&) = default;
    GroupInfoDao& operator=(const GroupInfoDao&) = default;

    int InsertGroupInfoImp(const T_GroupInfo& group);
    int InsertGroupInfoImp(const T_GroupInfo* groups, int count);
    int UpdateGroupInfoImp(const T_GroupInfo& group);
    int DeleteGroupInfoImp(std::string viewGroupGuid);
    int DeleteGroupInfoImp(const T_GroupInfo* groups, int count);
    T_GroupInfoList* QueryGroupInfoImp(std::string viewGroupGuid);
    void ReleaseGroupInfoList(T_GroupInfoList* list);

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_GroupInfo* group);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
