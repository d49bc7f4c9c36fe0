#include "tests/unit/Operations.h"

namespace dbservice {
namespace {

using scripted::Rows;
using scripted::script;
using AlarmSearch = ScriptedService;

TEST_F(Operations, Alarms) {
    const auto release = &DBService::ReleaseAlarmInfoList;
    const auto alarms = recordsOf(db().QueryAlarmInfo("", ""), release);
    EXPECT_EQ(10U, alarms[0].SN);  // read, but never written
    const auto query = [&](const char* guid, const char* channel) {
        return [=] { return Answer(db().QueryAlarmInfo(guid, channel), release); };
    };
    const auto remove = [](const char* guid, const char* channel) {
        return [=] { return db().DeleteAlarmInfo(guid, channel); };
    };
    const auto channels = recordsOf(db().QueryChannel(""), &DBService::ReleaseChannelList);
    T_SearchAlarmParam request;
    request.AlarmLevel = 4;
    request.AlarmMethod = -5;
    request.BeginTime = "BeginTime";
    request.EndTime = "EndTime";
    request.EndIndex = 1;
    int total = -7;
    const Answers kStoresNothing = {{"0", "0", "0", "0", "0"}, {}, "-1"};
    check("InsertAlarmInfo", kStoresNothing, [&] { return db().InsertAlarmInfo(alarms[0]); });
    single("UpdateAlarmInfo", alarms[0], &DBService::UpdateAlarmInfo);
    check("QueryAlarmInfo", kListOrNull, query("Guid", "ChannelGuid"));
    check("QueryAlarmInfo (channel)", kListOrNull, query("", "ChannelGuid"));
    check("QueryAlarmInfo (no keys)", kListOrNull, query("", ""));
    batch("QueryAlarmInfo (search)", kListOrEmpty, channels,
          [&](const T_Channel* array, int count) {
              request.Channels = array;
              request.ChannelCount = count;
              return Answer(db().QueryAlarmInfo(&request, total), release);
          });
    checkNothingSent("null", [&] { return Answer(db().QueryAlarmInfo(nullptr, total), release); });
    check("DeleteAlarmInfo", kCount, remove("Guid", "ChannelGuid"));
    check("DeleteAlarmInfo (channel)", kCount, remove("", "ChannelGuid"));
    check("DeleteAlarmInfo (no keys)", kCount, remove("", ""));
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
        T_AlarmInfoList* list = db().QueryAlarmInfo(&request, total);
        ASSERT_NE(nullptr, list);
        std::string page;
        for (int i = 0; i < list->count; ++i)
            page += (list->items[i].Guid.empty() ? "-" : list->items[i].Guid) + " ";
        EXPECT_EQ(oneCase.expected, page);
        EXPECT_EQ(oneCase.total, total);
        db().ReleaseAlarmInfoList(list);
    }
    script().queries.push_back(std::nullopt);
    int total = -7;
    EXPECT_EQ(nullptr, db().QueryAlarmInfo(&request, total));
    EXPECT_EQ(-7, total);
}

TEST_F(Operations, FaceCaptures) {
    const auto release = &DBService::ReleaseFaceCaptureLsit;
    const auto faces = recordsOf(db().QueryFaceCapture(0, 0), release);
    T_FaceCapture late = faces[0];
    late.addTime = 3000000000U;
    const auto insert = [](const T_FaceCapture* array, int count) {
        return [=] { return db().InsertFaceCapture(array, count); };
    };
    const auto query = [&](unsigned int begin, unsigned int end) {
        return [=] { return Answer(db().QueryFaceCapture(begin, end), release); };
    };
    check("InsertFaceCapture", kZero, insert(faces.data(), 2));
    check("InsertFaceCapture (late)", kZero, insert(&late, 1));
    check("InsertFaceCapture (null array)", kZero, insert(nullptr, 2));
    check("InsertFaceCapture (count of 0)", kZero, insert(faces.data(), 0));
    check("QueryFaceCapture", kListOrNull, query(100, 500));
    check("QueryFaceCapture (from a time)", kListOrNull, query(100, 0));
    check("QueryFaceCapture (between late times)", kListOrNull, query(3000000000U, 4294967295U));
    check("QueryFaceCapture (to a time)", kListOrNull, query(0, 500));
    check("QueryFaceCapture (all)", kListOrNull, query(0, 0));
}

TEST_F(Operations, FaceCompares) {
    const auto release = &DBService::ReleaseFaceCompareLsit;
    const auto comparisons = recordsOf(db().QueryFaceCompare(0, 0), release);
    const auto query = [&](unsigned int begin, unsigned int end) {
        return [=] { return Answer(db().QueryFaceCompare(begin, end), release); };
    };
    single("InsertFaceCompare", comparisons[0], &DBService::InsertFaceCompare);
    check("QueryFaceCompare", kListOrNull, query(100, 500));
    check("QueryFaceCompare (all)", kListOrNull, query(0, 0));
}

}  // namespace
}  // namespace dbservice
