#include "dbaccess/EscapeText.h"
#include "tests/support/engines/ServiceTest.h"

namespace dbservice {
namespace {

class AlarmLife : public ServiceTest {};
class FaceLife : public ServiceTest {};

constexpr int kMany = 100'000;
constexpr int kBatch = 10'000;

/// Raises alarms the way a caller does: by a raw insert, with the columns that the library reads.
std::int64_t raise(const std::string& rows) {
    return service().Insert(
        "insert into alarminfo(Guid,DeviceGuid,ChannelGuid,AlarmLevel,AlarmMethod,BeginTime,EndTime,"
        "AlarmContent,AlarmSource) values" +
        rows);
}

std::string guids(T_AlarmInfoList* list) {
    return joined(list, &T_AlarmInfo::Guid, &DBService::ReleaseAlarmInfoList);
}

TEST_P(AlarmLife, FromInsertToDelete) {
    EXPECT_EQ(0, service().InsertAlarmInfo({}));
    EXPECT_EQ("null", guids(service().QueryAlarmInfo("", "")));  // stored nothing
    EXPECT_EQ(2, raise("('b','d','c1',1,2,'t1','t2','" + dbaccess::EscapeText("door's open") +
                       "','s'),('a','d','c2',1,2,'t1','t2','','s')"));
    EXPECT_EQ(-1062, raise("('a','d','c2',1,2,'t1','t2','','s')"));
    EXPECT_EQ("b|a", guids(service().QueryAlarmInfo("", "")));  // by serial number
    EXPECT_EQ("a", guids(service().QueryAlarmInfo("", "c2")));
    EXPECT_EQ("null", guids(service().QueryAlarmInfo("b", "c2")));
    T_AlarmInfoList* list = service().QueryAlarmInfo("b", "");
    ASSERT_NE(nullptr, list);
    T_AlarmInfo alarm = list->items[0];
    EXPECT_EQ("door's open", alarm.AlarmContent);
    EXPECT_EQ(1U, alarm.SN);
    service().ReleaseAlarmInfoList(list);

    alarm.AlarmContent = "closed";
    alarm.AlarmLevel = -5;
    EXPECT_EQ(0, service().UpdateAlarmInfo(alarm));
    list = service().QueryAlarmInfo("b", "");
    ASSERT_NE(nullptr, list);
    EXPECT_EQ("closed", list->items[0].AlarmContent);
    EXPECT_EQ(-5, list->items[0].AlarmLevel);
    service().ReleaseAlarmInfoList(list);
    EXPECT_EQ(1, service().DeleteAlarmInfo("b", "c1"));
    EXPECT_EQ(1, service().DeleteAlarmInfo("", ""));  // everything
}

TEST_P(AlarmLife, PagesOfAHundredThousand) {
    for (int first = 0; first < kMany; first += kBatch) {
        std::string rows;
        for (int i = first; i < first + kBatch; ++i) {
            rows += std::string(i == first ? "" : ",") + "('" + std::to_string(i) + "','d','c" +
                    std::to_string(i % 2) + "',1,2,'t1','" + (i % 4 == 0 ? "t2" : "t3") +
                    "','','s')";
        }
        ASSERT_EQ(kBatch, raise(rows));
    }
    T_Channel channel;
    channel.Guid = "c0";
    T_SearchAlarmParam request;
    request.AlarmLevel = 1;
    request.AlarmMethod = 2;
    request.BeginTime = "t1";
    request.EndTime = "t2";
    request.BeginIndex = 20'000;
    request.EndIndex = 20'009;
    request.ChannelCount = 1;
    request.Channels = &channel;
    int total = 0;
    T_AlarmInfoList* page = service().QueryAlarmInfo(&request, total);
    ASSERT_NE(nullptr, page);
    EXPECT_EQ(kMany / 4, total);
    ASSERT_EQ(10, page->count);
    for (int i = 0; i < page->count; ++i)
        EXPECT_EQ("t2", page->items[i].EndTime);
    service().ReleaseAlarmInfoList(page);

    // Of two channels the filters bind to the last one: all of the first one match.
    T_Channel both[2];
    both[0].Guid = "c1";
    both[1].Guid = "c0";
    request.Channels = both;
    request.ChannelCount = 2;
    service().ReleaseAlarmInfoList(service().QueryAlarmInfo(&request, total));
    EXPECT_EQ(kMany / 2 + kMany / 4, total);

    request.EndTime = "never";
    request.ChannelCount = 1;
    request.Channels = &channel;
    page = service().QueryAlarmInfo(&request, total);
    ASSERT_NE(nullptr, page);
    EXPECT_EQ(0, page->count);
    EXPECT_EQ(kMany / 2 + kMany / 4, total);  // left as it was
    service().ReleaseAlarmInfoList(page);
}

TEST_P(FaceLife, ATimeRangeOfAHundredThousandCaptures) {
    std::vector<T_FaceCapture> faces(kBatch);
    for (int first = 0; first < kMany; first += kBatch) {
        for (int i = 0; i < kBatch; ++i) {
            T_FaceCapture& face = faces[static_cast<std::size_t>(i)];
            face.addTime = static_cast<unsigned int>(first + i + 1);
            face.minority = 1;
            face.mouthClose = 2;
        }
        ASSERT_EQ(0, service().InsertFaceCapture(faces.data(), kBatch));
    }
    T_FaceCaptureList* list = service().QueryFaceCapture(50'000, 51'001);
    ASSERT_NE(nullptr, list);
    ASSERT_EQ(1000, list->count);  // the bounds themselves excluded
    EXPECT_EQ(50'001U, list->items[0].addTime);
    EXPECT_EQ(51'000U, list->items[999].addTime);
    EXPECT_EQ(50'001U, list->items[0].minority);  // by contract
    EXPECT_EQ(1U, list->items[0].mouthClose);
    service().ReleaseFaceCaptureLsit(list);
    EXPECT_EQ(nullptr, service().QueryFaceCapture(kMany, 0));
    list = service().QueryFaceCapture(3000000000U, 2);  // a negative lower bound
    ASSERT_NE(nullptr, list);
    EXPECT_EQ(1, list->count);
    service().ReleaseFaceCaptureLsit(list);
    EXPECT_EQ(-1064, service().InsertFaceCapture(nullptr, 0));
}

TEST_P(FaceLife, Comparisons) {
    T_FaceCompare comparison;
    comparison.name = "n";
    comparison.faceID = "i";
    comparison.similarity = 87;
    for (const int time : {300, 100, 200}) {
        comparison.addTime = time;
        EXPECT_EQ(0, service().InsertFaceCompare(comparison));
    }
    T_FaceCompareList* list = service().QueryFaceCompare(100, 0);
    ASSERT_NE(nullptr, list);
    ASSERT_EQ(2, list->count);
    EXPECT_EQ(200, list->items[0].addTime);
    EXPECT_EQ(87, list->items[0].similarity);
    EXPECT_EQ("n/i", list->items[0].name + "/" + list->items[0].faceID);
    service().ReleaseFaceCompareLsit(list);
    EXPECT_EQ(nullptr, service().QueryFaceCompare(0, 100));
}

INSTANTIATE_TEST_SUITE_P(Engines, AlarmLife, kEngines, engineName);
INSTANTIATE_TEST_SUITE_P(Engines, FaceLife, kEngines, engineName);

}  // namespace
}  // namespace dbservice
