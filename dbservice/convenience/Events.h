#ifndef DBSERVICE_CONVENIENCE_EVENTS_H
#define DBSERVICE_CONVENIENCE_EVENTS_H

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "dbaccess/EscapeText.h"
#include "dbservice/DBService.h"
#include "dbservice/convenience/Held.h"
#include "dbservice/convenience/Results.h"
#include "dbservice/events/CAlarmInfoDao.h"
#include "dbservice/events/CFaceCaptureDao.h"
#include "dbservice/events/CFaceCompareDao.h"

// Storing alarms, which the service's own insert does not, and reading the events of a time range
// page by page. Texts go into the statements as they are, see Escaped.h.

namespace dbservice {

/// Adds alarms, all or none; the database gives their `SN`. -1 without records, 0, or the negated
/// error number, as -1062 when a Guid is there already.
inline int storeAlarms(DBService& service, const T_AlarmInfo* alarms, int count) {
    if (alarms == nullptr || count < 1) return -1;
    std::string rows;
    for (int i = 0; i < count; ++i) {
        const T_AlarmInfo& a = alarms[i];
        rows += (i == 0 ? "('" : ",('") + a.Guid + "','" + a.DeviceGuid + "','" + a.ChannelGuid +
                "'," + std::to_string(a.AlarmLevel) + "," + std::to_string(a.AlarmMethod) + ",'" +
                a.BeginTime + "','" + a.EndTime + "','" + a.AlarmContent + "','" + a.AlarmSource +
                "')";
    }
    const std::int64_t answer = service.Insert(
        "insert into alarminfo(Guid,DeviceGuid,ChannelGuid,AlarmLevel,AlarmMethod,BeginTime,"
        "EndTime,AlarmContent,AlarmSource) values" +
        rows);
    return answer < 0 ? static_cast<int>(answer) : 0;
}

/// Adds an alarm, as above.
inline int storeAlarm(DBService& service, const T_AlarmInfo& alarm) {
    return storeAlarms(service, &alarm, 1);
}

/// The alarms that begin in a time range, by begin time and in the order of adding at the same one
/// (by SN), page by page:
///
///     AlarmPages pages(service, timeText(begin), timeText(end));
///     for (std::vector<T_AlarmInfo> page; check(pages.next(page)) > 0;) ...
///
/// What is added or deleted meanwhile moves no other alarm from one page to another. Another page
/// is another statement, however far it is. Threads: one at a time.
class AlarmPages {
public:
    /// @param beginTime  the first begin time that belongs to the range, compared as text.
    /// @param endTime    the first one behind it; empty leaves the end open.
    /// @param channelGuid  only alarms of this channel; empty: of all.
    /// @param pageSize   most alarms on a page; below 1 means 1.
    AlarmPages(DBService& service, const std::string& beginTime, const std::string& endTime,
               const std::string& channelGuid = "", int pageSize = 100)
        : service_(service),
          condition_((endTime.empty() ? "" : " and BeginTime<'" + endTime + "'") +
                     (channelGuid.empty() ? "" : " and ChannelGuid='" + channelGuid + "'")),
          pageSize_(pageSize < 1 ? 1 : pageSize),
          lastTime_(beginTime) {}

    /// Reads the next page, in place of what stands in `page`. Its count is that of the page, 0
    /// behind the last one. After a failure the page is empty, and the same one comes next.
    /// @param page  of T_AlarmInfo; a template so that it costs nothing where it is not used.
    template <class Alarm>
    Result next(std::vector<Alarm>& page) {
        page.clear();
        const Rows found =
            rows(service_,
                 "select Guid,DeviceGuid,ChannelGuid,AlarmLevel,AlarmMethod,BeginTime,EndTime,"
                 "AlarmContent,AlarmSource,SN from alarminfo where BeginTime>='" +
                     lastTime_ + "'" + condition_ + " and (BeginTime>'" + lastTime_ + "' or SN>" +
                     std::to_string(last_) + ") order by BeginTime,SN limit " +
                     std::to_string(pageSize_));
        if (!found) return Result::lastFailure();
        while (found->next()) {
            page.emplace_back();
            CAlarmInfoDao::SetValue(found.get(), &page.back());
            last_ = found->getUInt64("SN");
        }
        if (!page.empty()) lastTime_ = dbaccess::EscapeText(page.back().BeginTime);
        return Result(static_cast<std::int64_t>(page.size()));
    }

private:
    std::reference_wrapper<DBService> service_;
    std::string condition_;
    int pageSize_;
    std::string lastTime_;  // escaped
    std::uint64_t last_ = 0;
};

/// The faces of a time range, captured or compared, by time and in the order of adding at the same
/// time, page by page, as alarms are. Use `FaceCapturePages` and `FaceComparisonPages`.
template <class Face>
class FacePages {
public:
    /// @param beginTime  the first second that belongs to the range, see `timeNumber`.
    /// @param endTime    the first one behind it; 0 leaves the end open.
    /// @param pageSize   most faces on a page; below 1 means 1.
    FacePages(DBService& service, std::uint32_t beginTime, std::uint32_t endTime,
              int pageSize = 100)
        : service_(service),
          end_(endTime == 0 ? "" : " and addTime<" + std::to_string(endTime)),
          pageSize_(pageSize < 1 ? 1 : pageSize),
          lastTime_(beginTime) {}

    /// As `AlarmPages::next`. Of captures all members are those that were stored, unlike in what
    /// `QueryFaceCapture` gives.
    Result next(std::vector<Face>& page) {
        page.clear();
        const std::string time = std::to_string(lastTime_);
        const Rows found =
            rows(service_, std::string(select(page)) + " where addTime>=" + time + end_ +
                               " and (addTime>" + time + " or RowNo>" + std::to_string(lastRow_) +
                               ") order by addTime,RowNo limit " + std::to_string(pageSize_));
        if (!found) return Result::lastFailure();
        while (found->next()) {
            page.emplace_back();
            setValue(*found, page.back());
            lastTime_ = found->getUInt("addTime");
            lastRow_ = found->getUInt64("RowNo");
        }
        return Result(static_cast<std::int64_t>(page.size()));
    }

private:
    static const char* select(const std::vector<T_FaceCapture>&) {
        return "select filePath,addTime,age,beard,eyeOCC,eyeClose,headWear,minority,mouthOCC,"
               "noseOCC,sex,mouthClose,RowNo from facecapture";
    }
    static const char* select(const std::vector<T_FaceCompare>&) {
        return "select basePath,facePath,similarity,addTime,faceID,name,RowNo from facecompare";
    }

    static void setValue(dbaccess::ResultSet& row, T_FaceCapture& face) {
        CFaceCaptureDao::SetValue(&row, &face);
        face.minority = row.getUInt("minority");
        face.mouthClose = row.getUInt("mouthClose");
    }
    static void setValue(dbaccess::ResultSet& row, T_FaceCompare& face) {
        CFaceCompareDao::SetValue(&row, &face);
    }

    std::reference_wrapper<DBService> service_;
    std::string end_;
    int pageSize_;
    std::uint32_t lastTime_;
    std::uint64_t lastRow_ = 0;
};

using FaceCapturePages = FacePages<T_FaceCapture>;     ///< of what was captured
using FaceComparisonPages = FacePages<T_FaceCompare>;  ///< of what was compared

}  // namespace dbservice

#endif
