#ifndef DBSERVICE_LAYOUTS_VIEWINFODAO_H
#define DBSERVICE_LAYOUTS_VIEWINFODAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/layouts/LayoutRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table viewinfo.
class DBSERVICE_API ViewInfoDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    ViewInfoDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    ViewInfoDao(const ViewInfoDao&) = default;
    ViewInfoDao& operator=(const ViewInfoDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int InsertViewInfoImp(const T_ViewInfo& view);
    int InsertViewInfoImp(const T_ViewInfo* views, int count);
    int UpdateViewInfoImp(const T_ViewInfo& view);
    int DeleteViewInfoImp(std::string groupGuid);
    int DeleteViewInfoImp(const T_ViewInfo* views, int count);
    T_ViewInfoList* QueryViewInfoImp(std::string groupGuid);
    void ReleaseViewInfoList(T_ViewInfoList* list);
    /// @}

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_ViewInfo* view);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
