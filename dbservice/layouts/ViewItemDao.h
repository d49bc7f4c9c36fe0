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

/// The table viewitem. What its operations do and answer stands with the operations of DBService
/// that forward to them.
class DBSERVICE_API ViewItemDao {
public:
    ViewItemDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    ViewItemDao(const ViewItemDao&) = default;
    ViewItemDao& operator=(const ViewItemDao&) = default;

    int InsertViewItemImp(const T_ViewItem& item);
    int InsertViewItemImp(const T_ViewItem* items, int count);
    int UpdateViewItemImp(const T_ViewItem& item);
    int DeleteViewItemImp(std::string viewInfoGuid);
    int DeleteViewItemImp(const T_ViewItem* items, int count);
    T_ViewItemList* QueryViewItemImp(std::string viewInfoGuid);
    void ReleaseViewItemList(T_ViewItemList* list);

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_ViewItem* item);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
