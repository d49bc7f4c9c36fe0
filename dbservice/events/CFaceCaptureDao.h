#ifndef DBSERVICE_EVENTS_CFACECAPTUREDAO_H
#define DBSERVICE_EVENTS_CFACECAPTUREDAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/events/EventRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table facecapture.
class DBSERVICE_API CFaceCaptureDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    CFaceCaptureDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    CFaceCaptureDao(const CFaceCaptureDao&) = default;
    CFaceCaptureDao& operator=(const CFaceCaptureDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int insertFaceCaptureImp(const T_FaceCapture* faces, int count);
    T_FaceCaptureList* queryFaceCaptureImp(unsigned int beginTime, unsigned int endTime);
    void relesseFaceCaptureList(T_FaceCaptureList* list);
    /// @}

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_FaceCapture* face);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
