#include <map>

#include "examples/load_site/Loading.h"

namespace demo {
namespace {

constexpr int kPage = 3;
constexpr unsigned int kHour = 3600;

/// The alarms on the camera of this one, in the hour that begins with it.
void showAlarms(DBService& service, const T_AlarmInfo& first) {
    Time begin;
    if (!parseTime(first.BeginTime, begin)) throw std::runtime_error("An alarm has no begin time");
    AlarmPages pages(service, timeText(begin), timeText(begin + std::chrono::hours(1)),
                     first.ChannelGuid, kPage);
    int number = 0;
    for (std::vector<T_AlarmInfo> page; check(pages.next(page), "Reading alarms") > 0;) {
        Table table({"Begin", "End", "Camera", "Level", "Alarm", "From"});
        for (const T_AlarmInfo& alarm : page)
            table.add({alarm.BeginTime, alarm.EndTime, cameraName(service, alarm.ChannelGuid),
                       fmt::to_string(alarm.AlarmLevel), alarm.AlarmContent, alarm.AlarmSource});
        table.print(fmt::format("Alarms of an hour, page {}", ++number));
    }
}

/// The faces captured in the hour that begins at this time.
void showFaces(DBService& service, unsigned int begin) {
    const unsigned int before = begin - 1;  // the ends do not belong to a range
    std::map<std::string, T_FaceCompare> known;
    for (const T_FaceCompare& comparison :
         check(faceComparisons(service, before, begin + kHour), "Looking for comparisons"))
        known[comparison.facePath] = comparison;
    Table table({"Captured", "Picture", "Age", "Like", "Percent"});
    for (const T_FaceCapture& face :
         check(faceCaptures(service, before, begin + kHour), "Looking for captures")) {
        const T_FaceCompare& comparison = known[face.filePath];
        table.add({timeText(timeOf(face.addTime)), face.filePath, fmt::to_string(face.age),
                   comparison.name,
                   comparison.faceID.empty() ? "" : fmt::to_string(comparison.similarity)});
    }
    table.print("Faces captured in an hour");
}

}  // namespace

void loadEvents(DBService& service, const Site& site, Table& summary) {
    load(
        summary, "Alarms", site.alarms,
        [&service](const T_AlarmInfo* alarms, int count) {
            return storeAlarms(service, alarms, count);
        },
        each(service, &DBService::UpdateAlarmInfo),
        [&service](const T_AlarmInfo& alarm) { return service.DeleteAlarmInfo(alarm.Guid, ""); });
    // The service keeps faces for good: deleting them takes statements of one's own.
    load(summary, "Face captures", site.faceCaptures, all(service, &DBService::InsertFaceCapture),
         NoUpdate(), [&service](const T_FaceCapture& face) {
             return service.Execute(
                 fmt::format("delete from facecapture where filePath='{}'", face.filePath));
         });
    load(summary, "Face comparisons", site.faceComparisons,
         each(service, &DBService::InsertFaceCompare), NoUpdate(),
         [&service](const T_FaceCompare& comparison) {
             return service.Execute(
                 fmt::format("delete from facecompare where facePath='{}'", comparison.facePath));
         });
    if (!site.alarms.stored.empty()) showAlarms(service, site.alarms.stored.front());
    if (!site.faceCaptures.stored.empty())
        showFaces(service, site.faceCaptures.stored.front().addTime);
}

}  // namespace demo
