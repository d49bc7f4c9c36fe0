#ifndef DBSERVICE_EVENTS_CFACECOMPAREDAO_H
#define DBSERVICE_EVENTS_CFACECOMPAREDAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/events/EventRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table facecompare.
class DBSERVICE_API CFaceCompareDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    CFaceCompareDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    CFaceCompareDao(const CFaceCompareDao&) = default;
    CFaceCompareDao& operator=(const CFaceCompareDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int insertFaceCompareImp(const T_FaceCompare& comparison);
    T_FaceCompareList* queryFaceCompareImp(unsigned int beginTime, unsigned int endTime);
    void releaseFaceCompareList(T_FaceCompareList* list);
    /// @}

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_FaceCompare* comparison);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
