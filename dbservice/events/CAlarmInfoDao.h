#ifndef DBSERVICE_EVENTS_CALARMINFODAO_H
#define DBSERVICE_EVENTS_CALARMINFODAO_H

#include <string>

#include "base/Export.h"
#include "dbservice/events/EventRecords.h"

namespace dbaccess {
class DataAccess;
class ResultSet;
}  // namespace dbaccess

namespace dbservice {

/// The table alarminfo.
class DBSERVICE_API CAlarmInfoDao {
public:
    /// Keeps `dataAccess`, which is not owned and must outlive it.
    CAlarmInfoDao(dbaccess::DataAccess* dataAccess, std::string dbName);
    CAlarmInfoDao(const CAlarmInfoDao&) = default;
    CAlarmInfoDao& operator=(const CAlarmInfoDao&) = default;

    /// @{
    /// What it does and answers stands with the operation of DBService that goes on to it.
    int InsertAlarmInfoImp(const T_AlarmInfo& alarm);
    int UpdateAlarmInfoImp(const T_AlarmInfo& alarm);
    int DeleteAlarmInfoImp(const std::string& guid, std::string channelGuid);
    T_AlarmInfoList* QueryAlarmInfoImp(const std::string& guid, std::string channelGuid);
    T_AlarmInfoList* QueryAlarmInfoImp(const T_SearchAlarmParam* request, int& total);
    void ReleaseAlarmInfo(T_AlarmInfoList* list);
    /// @}

    /// Copies the current row into the record. Returns 0.
    static int SetValue(dbaccess::ResultSet* row, T_AlarmInfo* alarm);

private:
    dbaccess::DataAccess* dataAccess_;
    std::string dbName_;
};

}  // namespace dbservice

#endif
