#include "tests/unit/StatementCases.h"

namespace dbservice {
namespace {

using scripted::Rows;
using scripted::script;

using Alarms = ScriptedService;
using AlarmSearch = ScriptedService;
using Faces = ScriptedService;

constexpr char kAlarmSelect[] =
    "Query select Guid,DeviceGuid,ChannelGuid,AlarmLevel,AlarmMethod,BeginTime,EndTime,AlarmContent,AlarmSource,SN from alarminfo";

TEST_F(Alarms, Statements) {
    const std::string select = kAlarmSelect;
    const auto query = [](const char* guid, const char* channel) {
        return [=] { service().ReleaseAlarmInfoList(service().QueryAlarmInfo(guid, channel)); };
    };
    check({
        {"insert stores nothing", [] { EXPECT_EQ(0, service().InsertAlarmInfo({})); }, {}},
        {"delete",
         [] { service().DeleteAlarmInfo("g", "c"); },
         {"Execute delete from alarminfo where Guid='g' and ChannelGuid='c'"}},
        {"delete by channel",
         [] { service().DeleteAlarmInfo("", "c"); },
         {"Execute delete from alarminfo where ChannelGuid='c'"}},
        {"delete by nothing",
         [] { service().DeleteAlarmInfo("", ""); },
         {"Execute delete from alarminfo"}},
        {"query", query("g", "c"), {select + " where Guid='g' and ChannelGuid='c' order by SN"}},
        {"query all", query("", ""), {select + " order by SN"}},
    });
    EXPECT_EQ(folded(), resultsOf([] { return service().UpdateAlarmInfo({}); }));
    EXPECT_EQ(passedThrough(), resultsOf([] { return service().DeleteAlarmInfo("g", ""); }));
    EXPECT_EQ(nullptr, service().QueryAlarmInfo("g", ""));
}

TEST_F(Alarms, Reads) {
    checkReads(
        {"string Guid", "string DeviceGuid", "string ChannelGuid", "int AlarmLevel",
         "int AlarmMethod", "string BeginTime", "string EndTime", "string AlarmContent",
         "string AlarmSource", "uint SN"},
        [] {
            T_AlarmInfoList* list = service().QueryAlarmInfo("", "");
            EXPECT_EQ(10U, list->items[0].SN);
            service().UpdateAlarmInfo(list->items[0]);
            service().ReleaseAlarmInfoList(list);
        },
        "Update vms: update alarminfo set DeviceGuid = 'DeviceGuid',ChannelGuid = 'ChannelGuid',AlarmLevel = '4',AlarmMethod = '5',BeginTime = 'BeginTime',EndTime = 'EndTime',AlarmContent = 'AlarmContent',AlarmSource = 'AlarmSource' where Guid = 'Guid'");
}

TEST_F(AlarmSearch, Statement) {
    T_Channel channels[2];
    channels[0].Guid = "a";
    channels[1].Guid = "b";
    T_SearchAlarmParam request;
    request.AlarmMethod = -1;
    request.AlarmLevel = 2;
    request.BeginTime = "t1";
    request.ChannelCount = 2;
    request.Channels = channels;
    int total = -7;
    check(
        {{"two channels",
          [&] { service().ReleaseAlarmInfoList(service().QueryAlarmInfo(&request, total)); },
          {std::string(kAlarmSelect) +
           " where ChannelGuid='a' or ChannelGuid='b' and AlarmLevel=2 and AlarmMethod='-1' and BeginTime='t1' and EndTime='';"}},
         {"no request or channels",
          [&] {
              EXPECT_EQ(nullptr, service().QueryAlarmInfo(nullptr, total));
              request.ChannelCount = 0;
              EXPECT_EQ(nullptr, service().QueryAlarmInfo(&request, total));
              request.ChannelCount = 2;
              request.Channels = nullptr;
              EXPECT_EQ(nullptr, service().QueryAlarmInfo(&request, total));
          },
          {}}});
}

TEST_F(AlarmSearch, PagesAndTotals) {
    struct Case {
        int rows;
        int begin;
        int end;
        const char* expected;  ///< the Guids of the page; "-" for a default record
        int total;             ///< -7: left as it was
    };
    const Case cases[] = {
        {25, 0, 9, "0 1 2 3 4 5 6 7 8 9 ", 25},
        {25, 10, 12, "10 11 12 ", 25},
        {25, 24, 24, "24 ", 25},
        {4, 0, 9, "0 1 2 3 ", 4},
        {4, 2, 9, "2 3 - - ", 4},  // sized by the rows, filled from the range
        {4, 3, 5, "3 - - ", 4},
        {4, 9, 9, "- ", 4},
        {4, -2, 1, "0 1 - - ", 4},
        {0, 0, 9, "", -7},
        {4, 3, 2, "", -7},
        {3, -2147483647 - 1, 2147483647, "0 1 2 ", 3},
    };
    T_Channel channel;
    T_SearchAlarmParam request;
    request.ChannelCount = 1;
    request.Channels = &channel;
    for (const Case& oneCase : cases) {
        SCOPED_TRACE(testing::Message()
                     << oneCase.rows << " rows, " << oneCase.begin << " to " << oneCase.end);
        Rows answer{{"Guid"}, {}};
        for (int row = 0; row < oneCase.rows; ++row)
            answer.rows.push_back({std::to_string(row)});
        script() = {};
        script().queries.push_back(answer);
        request.BeginIndex = oneCase.begin;
        request.EndIndex = oneCase.end;
        int total = -7;
        T_AlarmInfoList* list = service().QueryAlarmInfo(&request, total);
        ASSERT_NE(nullptr, list);
        std::string page;
        for (int i = 0; i < list->count; ++i)
            page += (list->items[i].Guid.empty() ? "-" : list->items[i].Guid) + " ";
        EXPECT_EQ(oneCase.expected, page);
        EXPECT_EQ(oneCase.total, total);
        service().ReleaseAlarmInfoList(list);
    }
    script().queries.push_back(std::nullopt);
    int total = -7;
    EXPECT_EQ(nullptr, service().QueryAlarmInfo(&request, total));
    EXPECT_EQ(-7, total);
}

TEST_F(Faces, Captures) {
    T_FaceCapture face;
    face.filePath = "p";
    face.age = 1;
    face.beard = 2;
    face.eyeOCC = 3;
    face.eyeClose = 4;
    face.headWear = 5;
    face.minority = 6;
    face.mouthClose = 7;
    face.mouthOCC = 8;
    face.noseOCC = 9;
    face.sex = 10;
    face.addTime = 3000000000U;
    const T_FaceCapture two[] = {face, {}};
    const std::string insert =
        "Insert insert into facecapture(filePath,age,beard,eyeOCC,eyeClose,headWear,minority,mouthClose,mouthOCC,noseOCC,sex,addTime) values";
    const auto query = [](unsigned int begin, unsigned int end) {
        return [=] { service().ReleaseFaceCaptureLsit(service().QueryFaceCapture(begin, end)); };
    };
    const std::string select = "Query select * from facecapture";
    check({
        {"insert",
         [&] { service().InsertFaceCapture(two, 2); },
         {insert +
          "('p', 1, 2, 3, 4, 5, 6,7,8,9,10,-1294967296),('', 0, 0, 0, 0, 0, 0,0,0,0,0,0);"}},
        {"insert without records is sent all the same",
         [&] { service().InsertFaceCapture(nullptr, 2); },
         {insert + ";"}},
        {"query all", query(0, 0), {select + " order by addTime"}},
        {"query from", query(100, 0), {select + " where addTime>100 order by addTime"}},
        {"query to", query(0, 500), {select + " where addTime<500 order by addTime"}},
        {"query between",
         query(100, 500),
         {select + " where addTime>100 and addTime<500 order by addTime"}},
        {"query from a time that is written negative",
         query(3000000000U, 0),
         {select + " where addTime>-1294967296 order by addTime"}},
    });
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertFaceCapture(two, 2); }));
    EXPECT_EQ(nullptr, service().QueryFaceCapture(0, 0));
    // The columns cross over: the time is read into minority, and minority into mouthClose.
    checkReads(
        {"string filePath", "uint addTime", "uint age", "uint beard", "uint eyeOCC",
         "uint eyeClose", "uint headWear", "uint addTime", "uint minority", "uint mouthOCC",
         "uint noseOCC", "uint sex"},
        [] {
            T_FaceCaptureList* list = service().QueryFaceCapture(0, 0);
            service().InsertFaceCapture(list->items, list->count);
            service().ReleaseFaceCaptureLsit(list);
        },
        insert.substr(0, 6) + " vms: " + insert.substr(7) +
            "('filePath', 3, 4, 5, 6, 7, 2,9,10,11,12,2);");
}

TEST_F(Faces, Comparisons) {
    T_FaceCompare comparison;
    comparison.basePath = "b";
    comparison.facePath = "f";
    comparison.name = "n";
    comparison.faceID = "i";
    comparison.similarity = 87;
    comparison.addTime = -1;
    const std::string columns = "basePath,facePath,similarity,addTime,faceID,name";
    check({
        {"insert",
         [&] { service().InsertFaceCompare(comparison); },
         {"Insert insert into facecompare(" + columns + ") values('b', 'f', 87,-1,'i', 'n');"}},
        {"query between",
         [] { service().ReleaseFaceCompareLsit(service().QueryFaceCompare(100, 500)); },
         {"Query select " + columns +
          " from facecompare where addTime>100 and addTime<500 order by addTime"}},
        {"query all",
         [] { service().ReleaseFaceCompareLsit(service().QueryFaceCompare(0, 0)); },
         {"Query select " + columns + " from facecompare order by addTime"}},
    });
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertFaceCompare(comparison); }));
    EXPECT_EQ(nullptr, service().QueryFaceCompare(0, 0));
    checkReads(
        {"string basePath", "string facePath", "int similarity", "int addTime", "string faceID",
         "string name"},
        [] {
            T_FaceCompareList* list = service().QueryFaceCompare(0, 0);
            service().InsertFaceCompare(list->items[0]);
            service().ReleaseFaceCompareLsit(list);
        },
        "Insert vms: insert into facecompare(" + columns +
            ") values('basePath', 'facePath', 3,4,'faceID', 'name');");
}

}  // namespace
}  // namespace dbservice
