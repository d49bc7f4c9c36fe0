#ifndef DBSERVICE_LAYOUTS_CAROUSELDAO_H
#define DBSERVICE_LAYOUTS_CAROUSELDAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/layouts/LayoutRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table carousel.
class DBSERVICE_API CarouselDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    CarouselDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    CarouselDao(const CarouselDao&) = default;
    CarouselDao& operator=(const CarouselDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int InsertCarouselImp(const T_CarouselInfo& entry);
    int InsertCarouselImp(const T_CarouselInfo* entries, int count);
    int UpdateCarouselImp(const T_CarouselInfo& entry);
    int DeleteCarouselImp(const std::string& itemInfoGuid);
    int DeleteCarouselImp(const T_CarouselInfo* entries, int count);
    T_CarouselInfoList* QueryCarouselImp(std::string itemInfoGuid);
    T_CarouselInfoList* QueryCarouselImp(const T_ViewItemInfo* sources, int count);
    void ReleaseCarouselList(T_CarouselInfoList* list);
    /// @}

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_CarouselInfo* entry);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
