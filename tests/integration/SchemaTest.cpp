// The tables that the schema library makes, on both engines.
#include "schema/Schema.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "schema/Tables.h"
#include "tests/support/Threads.h"
#include "tests/support/engines/EngineTest.h"
#include "tests/support/engines/TestServer.h"

namespace schema {
namespace {

using dbaccess::DataAccess;
using dbaccess::Engine;
using ::testing::IsEmpty;

class SchemaTest : public EngineTest {
protected:
    SchemaTest() { createSchema(); }

    bool isServer() const { return GetParam() == Engine::Server; }

    int add(const std::string& verb, const std::string& table, const std::string& columns,
            const std::string& rows) {
        return execute(verb + " into " + table + "(" + columns + ") values" + rows);
    }

    /// The expression's values of all rows, in this order; `table` may go on with a condition.
    std::string column(const std::string& expression, const std::string& table,
                       const std::string& order = "1") {
        return query("select " + expression + " as v from " + table + " order by " + order);
    }

    std::vector<std::string> differences() {
        std::vector<std::string> lines{"of an earlier check"};
        const int count = Check(access(), dbName(), lines);
        EXPECT_EQ(static_cast<int>(lines.size()), count);
        return lines;
    }
};

TEST_P(SchemaTest, CreateMayBeRepeated) {
    EXPECT_THAT(differences(), IsEmpty());
    expectOk(execute("insert into device(Guid) values('kept')"));
    EXPECT_EQ(0, Create(access(), dbName()));
    EXPECT_THAT(differences(), IsEmpty());
    EXPECT_EQ("kept", column("Guid", "device"));
}

TEST_P(SchemaTest, SeveralProgramsMayCreateAtOnce) {
    const std::string shared = secondDbName();
    inThreads(4, [&](int) {
        auto own = newAccess();
        EXPECT_TRUE(own->Initialize(1, 1, true, true));
        expectOk(Create(*own, shared));
    });
    std::vector<std::string> lines;
    EXPECT_EQ(0, Check(access(), shared, lines));
}

TEST_P(SchemaTest, WhatCannotBeCreatedOrChecked) {
    for (const std::string name : {"", "a`b", "a` character set latin1 -- "}) {
        EXPECT_EQ(-1102, Create(access(), name)) << name;
        EXPECT_EQ(1102, dbaccess::LastError().number);
    }
    std::vector<std::string> lines{"of an earlier check"};
    EXPECT_EQ(-1049, Check(access(), secondDbName(), lines));
    EXPECT_EQ(-1046, Check(access(), "", lines));
    EXPECT_THAT(lines, IsEmpty());
    DataAccess nowhere("127.0.0.1", 1, "", "");
    EXPECT_EQ(-2002, Create(nowhere, "vms"));
    EXPECT_EQ(-2002, Check(nowhere, "vms", lines));
}

struct Damage {
    std::vector<std::string> statements;
    std::vector<std::string> lines;  ///< as they begin
};

// In the order of the tables. # stands for the collation of a server.
const std::vector<Damage> kServerDamages = {
    {{"alter table userinfo modify Password varchar(255) collate utf8mb4_general_ci"},
     {"userinfo.Password: is varchar(255) collate utf8mb4_general_ci, expected varchar(255) coll"}},
    {{"alter table device drop column Mac"}, {"device.Mac: column is missing"}},
    {{"alter table channel modify DisplayName varchar(100)"},
     {"channel.DisplayName: is varchar(100) collate #, expected varchar(255) coll"}},
    {{"alter table channel modify Num bigint unsigned not null default 7"},
     {"channel.Num: is bigint unsigned not null default 7, expected int"}},
    {{"drop index devicedriverinfo_DriverKey on devicedriverinfo",
      "create index of_a_part on devicedriverinfo(DriverKey(20))"},
     {"devicedriverinfo: index on (DriverKey) is missing"}},
    {{"drop table archiveInfo"}, {"archiveInfo: table is missing"}},
    {{"drop index carousel_ItemInfoGuid_nIndex on carousel"},
     {"carousel: index on (ItemInfoGuid, nIndex) is missing"}},
    {{"alter table nodeinfo drop primary key"},
     {"nodeinfo: primary key is nothing, expected NodeGuid"}},
    {{"drop index alarminfo_Guid on alarminfo", "create index another on alarminfo(Guid)"},
     {"alarminfo: unique index on (Guid) is missing"}},
    {{"alter table facecapture engine=MyISAM"}, {"facecapture: stored as MyISAM, expected InnoDB"}},
};

const std::vector<Damage> kEmbeddedDamages = {
    {{"alter table device drop column Mac"}, {"device.Mac: column is missing"}},
    {{"drop trigger device_NextId"}, {"device: the trigger that numbers Id is missing"}},
    {{"drop trigger channel_NextId",
      "create trigger channel_NextId after insert on channel begin select 1; end"},
     {"channel: the trigger that numbers Id is missing or another one"}},
    {{"alter table channelproperty drop column Hidden",
      "alter table channelproperty add column Hidden text collate nocase not null default ','"},
     {"channelproperty.Hidden: is text collate nocase not null default ',', expected integer"}},
    {{"drop index devicedriverinfo_DriverKey",
      "create index of_some on devicedriverinfo(DriverKey) where DriverKey is not null"},
     {"devicedriverinfo: index on (DriverKey) is missing"}},
    {{"drop table archiveInfo",
      "create table archiveInfo(Guid text not null,\n ArchiveTime text check(length(ArchiveTime)<9))"},
     {"archiveInfo: stored as nothing, expected strict, without rowid",
      "archiveInfo.Guid: is text not null, expected text not null constraint too_long",
      "archiveInfo.ArchiveTime: is text check(length(ArchiveTime)<9), expected text constraint",
      "archiveInfo: primary key is nothing, expected Guid",
      "archiveInfo: index on (ArchiveTime) is missing"}},
    {{"drop index carousel_ItemInfoGuid_nIndex"},
     {"carousel: index on (ItemInfoGuid, nIndex) is missing"}},
    {{"drop index alarminfo_Guid", "create index another on alarminfo(Guid)"},
     {"alarminfo: unique index on (Guid) is missing"}},
    {{"drop table facecapture"}, {"facecapture: table is missing"}},
};

TEST_P(SchemaTest, ChecksNameWhatIsOther) {
    std::vector<std::string> expected;
    for (const Damage& damage : isServer() ? kServerDamages : kEmbeddedDamages) {
        for (const std::string& statement : damage.statements)
            expectOk(execute(statement));
        expected.insert(expected.end(), damage.lines.begin(), damage.lines.end());
    }
    const std::vector<std::string> found = differences();
    ASSERT_EQ(expected.size(), found.size()) << ::testing::PrintToString(found);
    for (std::size_t i = 0; i < found.size(); ++i) {
        const std::size_t place = expected[i].find('#');
        if (place != std::string::npos) expected[i].replace(place, 1, testServer().collation());
        EXPECT_EQ(expected[i], found[i].substr(0, expected[i].size()));
    }

    EXPECT_EQ(0, Create(access(), dbName()));
    for (const std::string& line : differences()) {
        EXPECT_EQ(std::string::npos, line.find("index on")) << line;
        EXPECT_EQ(std::string::npos, line.find("table is missing")) << line;
        EXPECT_EQ(std::string::npos, line.find("device: the trigger")) << line;
    }
    EXPECT_EQ("-1054", column("Mac", "device"));
}

TEST_P(SchemaTest, WhatIsMoreIsNoDifference) {
    for (const char* statement :
         {"alter table device add column Note int", "create table other(n int)",
          "create unique index more on channel(Guid, Num)",
          "create index longer on device(IPAddress, HttpPort, Mac)"})
        expectOk(execute(statement));
    expectOk(execute(std::string("drop index device_IPAddress_HttpPort") +
                     (isServer() ? " on device" : "")));
    EXPECT_THAT(differences(), IsEmpty());
}

TEST_P(SchemaTest, KeysAreExactAndAllElseMayBeNull) {
    for (const Table& table : tables()) {
        SCOPED_TRACE(table.name);
        const std::vector<Column> columns = columnsOf(table);
        const bool isKey = columns[0].type == Type::Key || columns[0].type == Type::NumberKey;
        EXPECT_EQ(isKey ? -1048 : 1, add("insert", table.name, columns[0].name, "(null)"));
        EXPECT_EQ(isKey ? -1364 : 1, add("insert", table.name, columns[1].name, "(null)"));
        EXPECT_EQ(1, add("insert", table.name, columns[0].name, "('7')"));
    }
    EXPECT_EQ(4, add("insert", "device", "Guid", "('k'),('K'),('k '),('\xC3\xA9')"));
    EXPECT_EQ("1", column("count(*)", "device where Guid='k '"));
    EXPECT_EQ("0", column("count(*)", "device where Guid='e'"));
}

TEST_P(SchemaTest, RowsWithoutAnIdGetTheNext) {
    for (const Table& table : tables()) {
        if (columnsOf(table).back().type != Type::NextId) continue;
        const std::string key = table.primaryKey;
        SCOPED_TRACE(table.name);
        EXPECT_EQ("NULL", column("max(Id)", table.name));
        EXPECT_EQ(1, add("insert", table.name, key, "('a')"));
        EXPECT_EQ("1", column("max(Id)", table.name));
        EXPECT_EQ(
            4, add("insert", table.name, key + ",Id", "('b',7),('c',7),('d',-5),('e',2147483647)"));
        EXPECT_EQ(2, add("replace", table.name, key, "('a'),('f')"));
        EXPECT_EQ("-5|7|7|2147483647|2147483648|2147483649", column("Id", table.name));
        EXPECT_EQ(1, add("insert", table.name, key + ",Id", "('g',0)"));
        EXPECT_EQ("2147483650", column("max(Id)", table.name));
    }
}

TEST_P(SchemaTest, OtherNumbersOfRows) {
    for (const char* table : {"onlineschedules", "recordschedules"}) {
        EXPECT_EQ("NULL", column("max(Id)", table));
        EXPECT_EQ(2, add("insert", table, "Guid,Id", "('a',0),('b',0)"));
        EXPECT_EQ(1, add("insert", table, "Guid", "('c')"));
        EXPECT_EQ("0|0|0", column("Id", table));
    }
    EXPECT_EQ(2, add("insert", "alarminfo", "Guid", "('a'),('b')"));
    EXPECT_EQ(-1062, add("insert", "alarminfo", "Guid", "('a')"));
    EXPECT_EQ(1, execute("delete from alarminfo where Guid='b'"));
    EXPECT_EQ(1, add("insert", "alarminfo", "Guid", "('c')"));
    EXPECT_EQ("a|c", column("Guid", "alarminfo", "SN"));
    EXPECT_EQ("0", column("count(*)", "alarminfo where SN=2"));  // not given again
    EXPECT_EQ(2, add("insert", "userrights", "User_Guid", "('u'),('u')"));
    EXPECT_EQ(1, execute("update userrights set ViewLive='1' where RowNo=2"));
}

TEST_P(SchemaTest, ValuesThatFitAndThatDoNot) {
    struct Case {
        int result;
        std::string table;
        std::string columns;
        std::string values;
    };
    const auto text = [](const std::string& piece, int times, const std::string& end = "") {
        std::string result = "'";
        while (times-- > 0)
            result += piece;
        return result + end + "'";
    };
    const std::string euro = "\xE2\x82\xAC";
    const Case cases[] = {
        {1, "device", "Guid", text(euro, 255)},
        {-1406, "device", "Guid", text(euro, 256)},
        {1, "device", "Guid,DisplayName", "'g'," + text("x", 254, "\\0")},
        {-1406, "device", "Guid,DisplayName", "'h'," + text("\\0", 1, std::string(255, 'x'))},
        {1, "storage", "Channel_Guid,ArchivePath", "'g'," + text(euro, 21845)},
        {-1406, "storage", "Channel_Guid,ArchivePath", "'h'," + text(euro, 21846)},
        {-1406, "storage", "Channel_Guid,ArchivePath", "'h'," + text("\\0", 65536)},
        {1, "channel", "Guid,Num,Type", "'g',-2147483648,'2147483647'"},
        {-1264, "channel", "Guid,Num", "'h',2147483648"},
        {1, "viewgroupinfo", "Guid,LastModifiedTime", "'g','4294967295'"},
        {1, "facecapture", "age,addTime", "3000000000,-1294967296"},
        {-1264, "facecompare", "addTime", "3000000000"},
        {-1264, "alarminfo", "Guid,SN", "'h',-1"},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.table + "(" + one.columns + "): " + one.values.substr(0, 40));
        EXPECT_EQ(one.result, add("insert", one.table, one.columns, "(" + one.values + ")"));
    }
    EXPECT_EQ("1", column("count(*)", "storage where ArchivePath=" + text(euro, 21845)));
}

INSTANTIATE_TEST_SUITE_P(Engines, SchemaTest, kEngines, engineName);

}  // namespace
}  // namespace schema
