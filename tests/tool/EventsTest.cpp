// What hangs under what, events by local times, test data and what becomes too old.
#include <stdlib.h>

#include "tests/tool/ToolTest.h"

namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class EventsTest : public ToolTest {
protected:
    EventsTest() {
        ::setenv("TZ", "Europe/Berlin", 1);
        createSchema();
    }
    ~EventsTest() override { ::unsetenv("TZ"); }
    EventsTest(const EventsTest&) = delete;
    EventsTest& operator=(const EventsTest&) = delete;

    /// Rows as "channel(Guid) values('c')".
    void add(const std::string& rows) { expectOk(execute("insert into " + rows)); }

    void alarm(const std::string& guid, const std::string& begin, int level = 1) {
        add("alarminfo(Guid,ChannelGuid,AlarmLevel,BeginTime,EndTime,AlarmContent) values('" +
            guid + "','c'," + std::to_string(level) + ",'" + begin + "','later','\x1b[2J')");
    }
};

TEST_P(EventsTest, TreesShowOrphansAndCircles) {
    add("serverinfo(Guid,DisplayName) values('k','Main')");
    add("device(Guid,ServerGuid,DisplayName,IPAddress) values('k','k','Hall','10.0.0.1'),"
        "('d2','','Yard',null),('d3','gone','Lost','')");
    add("channel(Guid,Device_Guid,DisplayName,Num) values('c2','k','Exit',2),('c1','k','\x1b',1),"
        "('c3','','Nowhere',3)");
    EXPECT_EQ(
        "server Main\n  device Hall: at 10.0.0.1\n    channel \\x1b: number 1\n"
        "    channel Exit: number 2\ndevice Yard\n(no parent)\n  device Lost\n"
        "  channel Nowhere: number 3\n",
        tool({"tree", "devices"}).data);

    add("nodeinfo(NodeGuid,ParentNodeGuid,NodeName) values('a','b','A'),('b','a','B'),"
        "('s','s','Self'),('t','','Top')");
    add("nodeelement(Guid,NodeGuid,ChannelGuid) values('e','b','c2')");
    EXPECT_EQ(
        "folder Top\n(in a circle)\n  folder A\n    folder B\n      element e: shows Exit\n"
        "  folder Self\n",
        tool({"tree", "resources"}).data);
    EXPECT_THAT(tool({"tree", "resources", "--format", "csv"}).data,
                HasSubstr("\n1,folder,B,,b,a,in a circle\n"));

    add("viewgroupinfo(Guid,Name,ViewGroupType) values('v','All',1)");
    add("groupinfo(GroupGuid,ViewGroupInfoGuid,DisplayName,ParentGroupGuid) values"
        "('g1','v','Outer',''),('g2','v','Inner','g1')");
    add("viewinfo(ViewGuid,GroupGuid) values('w','g2')");
    add("viewitem(Guid,ViewInfoGuid) values('p','w')");
    add("viewiteminfo(Guid,ViewItemGuid,CameraGuid) values('s','p','c2')");
    add("carousel(Guid,ItemInfoGuid,ShowTime) values('r','s',9)");
    EXPECT_EQ(
        "view group All: shared\n  group Outer\n    group Inner\n      view w\n        pane p\n"
        "          source s: shows Exit\n            carousel entry r: for 9 s\n",
        tool({"tree", "views"}).data);

    add("mapinfo(MapGuid,MapName,ParentMapGuid) values('m1','City',''),('m2','Hall','m1')");
    add("mapitemparam(Guid,MapInfoGuid,MapItemGuid,MapItemPos_X) values('i','m2','c2','4.5')");
    EXPECT_EQ("map City\n  map Hall\n    item i: shows Exit, x 4.5\n", tool({"tree", "maps"}).data);
}

TEST_P(EventsTest, AlarmsOfLocalTimes) {
    alarm("a", "2026-03-01 06:59:59");
    alarm("b", "2026-03-01 07:00:00");
    alarm("c", "2026-07-01 07:00:00");
    alarm("d", "9 o'' clock");
    add("channel(Guid,DisplayName) values('c','Gate')");
    EXPECT_EQ(
        "Begin,End,Camera,Level,Alarm,Source,Method,SN,Guid,ChannelGuid,DeviceGuid\n"
        "2026-03-01 08:00:00+01:00,later,Gate,1,\x1b[2J,,0,2,b,c,\n",
        tool({"alarms", "--from", "2026-03-01T07:00Z", "--to", "2026-07-01 09:00", "--format",
              "csv"})
            .data);
    const ToolRun second = tool({"alarms", "--page", "2", "--page-size", "2", "--channel", "c"});
    EXPECT_THAT(second.data, HasSubstr("2026-07-01 09:00:00+02:00  later  Gate"));
    EXPECT_THAT(second.data, HasSubstr("9 o' clock"));
    EXPECT_THAT(second.data, HasSubstr("\\x1b[2J"));
    EXPECT_EQ("", second.notes);
    EXPECT_EQ("There are more: --page 2\n", tool({"alarms", "--page-size", "3"}).notes);
    EXPECT_EQ("[]\n", tool({"alarms", "--channel", "x' or '1'='1", "--format", "json"}).data);

    const auto refusal = [this](const char* time) {
        return tool({"alarms", "--to", time}, 64).notes;
    };
    EXPECT_THAT(refusal("yesterday"), HasSubstr("is no time"));
    EXPECT_THAT(refusal("2026-02-29"), HasSubstr("is no time"));
    EXPECT_THAT(refusal("2026-03-29 02:30"), HasSubstr("left out"));
    EXPECT_THAT(refusal("2026-10-25 02:30"), HasSubstr("comes twice"));
}

TEST_P(EventsTest, FacesOfBothKindsByTime) {
    add("facecapture(filePath,addTime,age) values('p1',1772348400,31),('p2',1772348402,32)");
    add("facecompare(facePath,addTime,name,similarity) values('p1',1772348401,'Ann',93)");
    EXPECT_EQ(
        "Time,Kind,Picture,Age,Sex,Person,FaceID,Similarity,KnownPicture\n"
        "2026-03-01 08:00:00+01:00,capture,p1,31,0,,,,\n"
        "2026-03-01 08:00:01+01:00,comparison,p1,,,Ann,,93,\n"
        "2026-03-01 08:00:02+01:00,capture,p2,32,0,,,,\n",
        tool({"faces", "--format", "csv"}).data);
    EXPECT_THAT(tool({"faces", "captures", "--from", "2026-03-01 08:00:01"}).data,
                Not(HasSubstr("p1")));
    EXPECT_THAT(tool({"faces", "--to", "1970-01-01T00:00:00Z"}, 64).notes, HasSubstr("2038"));
}

TEST_P(EventsTest, PruneKeepsWhatIsNotSurelyTooOld) {
    alarm("a", "2020-01-01 00:00:00");
    alarm("b", "2020-01-01 00:00:00", 5);
    alarm("c", "2020-01-01 00:00:01");
    alarm("d", "01.01.2020 00:00");
    alarm("e", "");
    add("facecapture(addTime) values(0),(-5),(1577836800),(1577836801)");
    const std::string guids = "select Guid as v from alarminfo order by Guid";
    const auto prune = [&](std::vector<std::string> more, int exit = 0) {
        more.insert(more.begin(), {"prune", "--before", "2020-01-01 01:00:01", "--format", "csv"});
        return tool(more, exit);
    };
    const ToolRun run = prune({"--dry-run"});
    EXPECT_EQ("Table,TooOld,Deleted\nalarminfo,2,0\nfacecapture,1,0\nfacecompare,0,0\n", run.data);
    EXPECT_THAT(run.notes, HasSubstr("2 alarms have no time that can be compared, and stay"));
    EXPECT_THAT(prune({}, 1).notes, HasSubstr("Delete 2 alarms, 1 face captures"));
    EXPECT_EQ("a|b|c|d|e", query(guids));
    prune({"--yes", "--chunk", "1", "--pause", "0", "--keep-alarm-level", "5"});
    EXPECT_EQ("b|c|d|e", query(guids));
    EXPECT_EQ("-5|0|1577836801", query("select addTime as v from facecapture order by addTime"));
    EXPECT_THAT(tool({"prune", "--before", "2100-01-01"}, 64).notes, HasSubstr("not over yet"));
}

TEST_P(EventsTest, SeedIsRepeatable) {
    const auto seed = [this](const std::string& answer, int exit) {
        return tool({answer, "seed", "--devices", "3", "--channels", "7", "--alarms", "1500",
                     "--faces", "40", "--until", "2026-03-01"},
                    exit);
    };
    seed("--format=table", 0);
    EXPECT_EQ("1500",
              query("select count(*) as v from alarminfo a,channel c,device d where "
                    "c.Guid=a.ChannelGuid and d.Guid=c.Device_Guid and d.Guid=a.DeviceGuid"));
    EXPECT_EQ("7", query("select sum(ChannelCount) as v from device"));
    EXPECT_EQ("2026-01-29 23:00:00", query("select min(BeginTime) as v from alarminfo"));
    EXPECT_THAT(seed("--format=table", 1).notes, HasSubstr("Nobody is there to be asked"));
    EXPECT_THAT(seed("--yes", 1).notes, HasSubstr("there already"));
}

INSTANTIATE_TEST_SUITE_P(Engines, EventsTest, kEngines, engineName);

}  // namespace
