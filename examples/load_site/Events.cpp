#include <fmt/chrono.h>

#include <map>

#include "examples/load_site/Loading.h"

namespace demo {
namespace {

constexpr int kPage = 3;
constexpr unsigned int kHour = 3600;

/// Stores alarms as the library expects them to come: past `InsertAlarmInfo`, which stores nothing.
int insertAlarms(DBService& service, const T_AlarmInfo* alarms, int count) {
    std::string text =
        "insert into alarminfo(Guid,DeviceGuid,ChannelGuid,AlarmLevel,AlarmMethod,BeginTime,"
        "EndTime,AlarmContent,AlarmSource) values";
    for (int i = 0; i < count; ++i) {
        const T_AlarmInfo& alarm = alarms[i];
        text += fmt::format("{}('{}','{}','{}',{},{},'{}','{}','{}','{}')", i == 0 ? "" : ",",
                            alarm.Guid, alarm.DeviceGuid, alarm.ChannelGuid, alarm.AlarmLevel,
                            alarm.AlarmMethod, alarm.BeginTime, alarm.EndTime, alarm.AlarmContent,
                            alarm.AlarmSource);
    }
    return static_cast<int>(service.Insert(text));
}

/// The first page of the alarms that have the channel, level, method and times of this one.
void showAlarms(DBService& service, const T_AlarmInfo& like) {
    T_Channel channel;
    channel.Guid = like.ChannelGuid;
    T_SearchAlarmParam search;
    search.AlarmMethod = like.AlarmMethod;
    search.AlarmLevel = like.AlarmLevel;
    search.BeginTime = like.BeginTime;
    search.EndTime = like.EndTime;
    search.EndIndex = kPage - 1;
    search.ChannelCount = 1;
    search.Channels = &channel;
    int total = 0;
    Table table({"Begin", "End", "Camera", "Level", "Alarm", "From"});
    const auto page = records(service, service.QueryAlarmInfo(&search, total),
                              &DBService::ReleaseAlarmInfoList, "Searching for alarms");
    for (const T_AlarmInfo& alarm : page)
        table.add({alarm.BeginTime, alarm.EndTime, cameraName(service, alarm.ChannelGuid),
                   fmt::to_string(alarm.AlarmLevel), alarm.AlarmContent, alarm.AlarmSource});
    table.print(fmt::format("Alarms, the first {} of {} alike", page.size(), total));
}

/// The faces captured in the hour that begins at this time.
void showFaces(DBService& service, unsigned int begin) {
    const unsigned int before = begin - 1;  // the ends do not belong to a range
    std::map<std::string, T_FaceCompare> known;
    for (const T_FaceCompare& comparison :
         records(service, service.QueryFaceCompare(before, begin + kHour),
                 &DBService::ReleaseFaceCompareLsit, "Looking for comparisons"))
        known[comparison.facePath] = comparison;
    Table table({"Captured", "Picture", "Age", "Like", "Percent"});
    for (const T_FaceCapture& face :
         records(service, service.QueryFaceCapture(before, begin + kHour),
                 &DBService::ReleaseFaceCaptureLsit, "Looking for captures")) {
        const T_FaceCompare& comparison = known[face.filePath];
        table.add({fmt::format("{:%Y-%m-%d %H:%M:%S}", fmt::gmtime(face.addTime)), face.filePath,
                   fmt::to_string(face.age), comparison.name,
                   comparison.faceID.empty() ? "" : fmt::to_string(comparison.similarity)});
    }
    table.print("Faces captured in an hour");
}

}  // namespace

void loadEvents(DBService& service, const Site& site, Table& summary) {
    load(
        summary, "Alarms", site.alarms,
        [&service](const T_AlarmInfo* alarms, int count) {
            return insertAlarms(service, alarms, count);
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
