#ifndef DBSERVICE_LAYOUTS_VIEWITEMINFODAO_H
#define DBSERVICE_LAYOUTS_VIEWITEMINFODAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/layouts/LayoutRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table viewiteminfo.
class DBSERVICE_API ViewItemInfoDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    ViewItemInfoDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    ViewItemInfoDao(const ViewItemInfoDao&) = default;
    ViewItemInfoDao& operator=(const ViewItemInfoDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int InsertViewItemInfoImp(const T_ViewItemInfo& source);
    int InsertViewItemInfoImp(const T_ViewItemInfo* sources, int count);
    int UpdateViewItemInfoImp(const T_ViewItemInfo& source);
    int DeleteViewItemInfoImp(std::string viewItemGuid);
    int DeleteViewItemInfoImp(const T_ViewItemInfo* sources, int count);
    T_ViewItemInfo* QueryViewItemInfoImp(std::string viewItemGuid);
    T_ViewItemInfoList* QueryViewItemInfoImp(const T_ViewItem* items, int count);
    void ReleaseViewItemInfo(T_ViewItemInfo* source);
    void ReleaseViewItemInfoList(T_ViewItemInfoList* list);
    /// @}

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_ViewItemInfo* source);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
