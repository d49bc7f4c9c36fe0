#ifndef DBSERVICE_LAYOUTS_VIEWITEMDAO_H
#define DBSERVICE_LAYOUTS_VIEWITEMDAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/layouts/LayoutRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table viewitem.
class DBSERVICE_API ViewItemDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    ViewItemDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    ViewItemDao(const ViewItemDao&) = default;
    ViewItemDao& operator=(const ViewItemDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int InsertViewItemImp(const T_ViewItem& item);
    int InsertViewItemImp(const T_ViewItem* items, int count);
    int UpdateViewItemImp(const T_ViewItem& item);
    int DeleteViewItemImp(std::string viewInfoGuid);
    int DeleteViewItemImp(const T_ViewItem* items, int count);
    T_ViewItemList* QueryViewItemImp(std::string viewInfoGuid);
    void ReleaseViewItemList(T_ViewItemList* list);
    /// @}

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_ViewItem* item);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
