// The tables that the schema library makes, on both engines.
#include "schema/Schema.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <thread>

#include "schema/Tables.h"
#include "tests/support/engines/EngineTest.h"
#include "tests/support/engines/TemporaryDirectory.h"

namespace schema {
namespace {

using dbaccess::DataAccess;
using dbaccess::Engine;
using dbaccess::ResultSet;
using ::testing::IsEmpty;

std::string repeated(const std::string& text, int times) {
    std::string result;
    while (times-- > 0)
        result += text;
    return result;
}

bool has(const Table& table, Type type) {
    return std::any_of(table.columns.begin(), table.columns.end(),
                       [type](const Columns& run) { return run.type == type; });
}

class SchemaTest : public EngineTest {
protected:
    SchemaTest() { createSchema(); }

    bool isServer() const { return GetParam() == Engine::Server; }

    int execute(const std::string& text) { return access().Execute(dbName(), text); }

    int add(const std::string& verb, const std::string& table, const std::string& columns,
            const std::string& rows) {
        return execute(verb + " into " + table + "(" + columns + ") values" + rows);
    }

    /// One column of all rows, joined by "|".
    std::string column(const std::string& expression, const std::string& table,
                       const std::string& order = "") {
        ResultSet* rows = access().Query(dbName(), "select " + expression + " as v from " + table +
                                                       (order.empty() ? "" : " order by " + order));
        if (rows == nullptr) return "error " + std::to_string(dbaccess::LastError().number);
        std::string result;
        while (rows->next()) {
            std::string value = "NULL";
            rows->getString("v", value);
            result += (result.empty() ? "" : "|") + value;
        }
        DataAccess::ReleaseResulitSet(rows);
        return result;
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
    const std::string shared = dbName() + "_shared";
    std::vector<std::thread> programs(4);
    for (std::thread& program : programs) {
        program = std::thread([&] {
            auto own = newAccess();
            EXPECT_TRUE(own->Initialize(1, 1, true, true));
            expectOk(Create(*own, shared));
        });
    }
    for (std::thread& program : programs)
        program.join();
    std::vector<std::string> lines;
    EXPECT_EQ(0, Check(access(), shared, lines));
}

TEST_P(SchemaTest, WhatCannotBeCreatedOrChecked) {
    for (const std::string name : {"", "a`b", "a` character set latin1 -- "}) {
        EXPECT_EQ(-1102, Create(access(), name)) << name;
        EXPECT_EQ(1102, dbaccess::LastError().number);
    }
    std::vector<std::string> lines{"of an earlier check"};
    EXPECT_EQ(-1049, Check(access(), "nosuch", lines));
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

// In the order of the tables.
const std::vector<Damage> kServerDamages = {
    {{"alter table userinfo modify Password varchar(255) collate utf8mb4_general_ci"},
     {"userinfo.Password: is varchar(255) collate utf8mb4_general_ci, expected varchar(255) coll"}},
    {{"alter table device drop column Mac"}, {"device.Mac: column is missing"}},
    {{"alter table channel modify DisplayName varchar(100)"},
     {"channel.DisplayName: is varchar(100) collate utf8mb4_nopad_bin, expected varchar(255) coll"}},
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
    for (std::size_t i = 0; i < found.size(); ++i)
        EXPECT_EQ(expected[i], found[i].substr(0, expected[i].size()));

    EXPECT_EQ(0, Create(access(), dbName()));
    for (const std::string& line : differences()) {
        EXPECT_EQ(std::string::npos, line.find("index on")) << line;
        EXPECT_EQ(std::string::npos, line.find("table is missing")) << line;
        EXPECT_EQ(std::string::npos, line.find("trigger")) << line;
    }
    EXPECT_EQ("error 1054", column("Mac", "device"));
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

TEST_P(SchemaTest, ReplaceMeetsItsRow) {
    struct Form {
        std::string table;
        std::string key;
        std::string number;
    };
    const Form forms[] = {
        {"usercameras", "Guid", "Access"},
        {"device", "Guid", "State"},
        {"channel", "Guid", "Num"},
        {"channelproperty", "Channel_Guid", "Hidden"},
        {"storage", "Channel_Guid", "ArchiveDb"},
        {"mapinfo", "MapGuid", "Gis_Zoom"},
        {"mapitemparam", "Guid", "MapItemType"},
        {"nodeinfo", "NodeGuid", "NodeType"},
        {"nodeelement", "Guid", "StreamType"},
    };
    const auto replace = [this](const Form& form, const std::string& rows) {
        return add("replace", form.table, form.key + "," + form.number, rows);
    };
    for (const Form& form : forms) {
        SCOPED_TRACE(form.table);
        EXPECT_EQ(2, replace(form, "('a',1),('A',2)"));
        EXPECT_EQ(2, replace(form, "('a',3),('b',4)"));
        EXPECT_EQ("2|3|4", column(form.number, form.table, form.key));
    }
}

TEST_P(SchemaTest, RowsWithoutAnIdGetTheNext) {
    for (const Table& table : tables()) {
        if (!has(table, Type::NextId)) continue;
        const std::string key = table.primaryKey;
        SCOPED_TRACE(table.name);
        EXPECT_EQ("NULL", column("max(Id)", table.name));
        EXPECT_EQ(1, add("insert", table.name, key, "('a')"));
        EXPECT_EQ("1", column("max(Id)", table.name));
        EXPECT_EQ(
            4, add("insert", table.name, key + ",Id", "('b',7),('c',7),('d',-5),('e',2147483647)"));
        EXPECT_EQ(2, add("replace", table.name, key, "('a'),('f')"));
        EXPECT_EQ("-5|7|7|2147483647|2147483648|2147483649", column("Id", table.name, "Id"));
        EXPECT_EQ(1, add("insert", table.name, key + ",Id", "('g',0)"));
        EXPECT_EQ("2147483650", column("max(Id)", table.name));
    }
}

TEST_P(SchemaTest, OtherNumbersOfRows) {
    for (const char* table : {"onlineschedules", "recordschedules"}) {
        EXPECT_EQ("NULL", column("max(Id)", table));
        EXPECT_EQ(2, add("insert", table, "Guid,Id", "('a',0),('b',0)"));
        EXPECT_EQ(1, add("insert", table, "Guid", "('c')"));
        EXPECT_EQ("0|0|0", column("Id", table, "Id"));
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
    const std::string euro = "\xE2\x82\xAC";
    const auto text = [](const std::string& value) { return "'" + value + "'"; };
    const Case cases[] = {
        {1, "device", "Guid", text(repeated(euro, 255))},
        {-1406, "device", "Guid", text(repeated(euro, 256))},
        {1, "device", "Guid,DisplayName", "'g'," + text(repeated("x", 254) + "\\0")},
        {-1406, "device", "Guid,DisplayName", "'h'," + text("\\0" + repeated("x", 255))},
        {1, "storage", "Channel_Guid,ArchivePath", "'g'," + text(repeated(euro, 21845))},
        {-1406, "storage", "Channel_Guid,ArchivePath", "'h'," + text(repeated(euro, 21846))},
        {-1406, "storage", "Channel_Guid,ArchivePath", "'h'," + text(repeated("\\0", 65536))},
        {1, "channel", "Guid,Num,Type", "'g',-2147483648,'2147483647'"},
        {-1264, "channel", "Guid,Num", "'h',2147483648"},
        {-1264, "channel", "Guid,Num", "'h','-2147483649'"},
        {-1366, "channel", "Guid,Num", "'h','one'"},
        {-1264, "devicedriverinfo", "Id", "2147483648"},
        {1, "viewgroupinfo", "Guid,LastModifiedTime", "'g','4294967295'"},
        {1, "mapinfo", "MapGuid,LastTime", "'g',4294967295"},
        {1, "facecapture", "age,addTime", "3000000000,-1294967296"},
        {-1264, "facecompare", "addTime", "3000000000"},
        {-1264, "alarminfo", "Guid,SN", "'h',-1"},
        {-1048, "alarminfo", "Guid", "null"},
        {-1364, "alarminfo", "DeviceGuid", "'d'"},
        {-1364, "devicedriverinfo", "DriverKey", "'d'"},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.table + "(" + one.columns + "): " + one.values.substr(0, 40));
        EXPECT_EQ(one.result, add("insert", one.table, one.columns, "(" + one.values + ")"));
    }
    EXPECT_EQ("1", column("count(*)", "storage where ArchivePath=" + text(repeated(euro, 21845))));
}

TEST_P(SchemaTest, LoginsCompareExactly) {
    expectOk(execute("insert into userinfo(Guid,UserName,Password) values('g','Admin','Secret')"));
    const auto login = [&](const std::string& name, const std::string& password) {
        return column("Guid",
                      "userinfo where UserName='" + name + "' and Password='" + password + "'");
    };
    EXPECT_EQ("g", login("Admin", "Secret"));
    EXPECT_EQ("", login("admin", "Secret"));
    EXPECT_EQ("", login("Admin", "secret"));
    EXPECT_EQ("", login("Admin", "Secret "));
    EXPECT_EQ("", login("Admin",
                        "S\xC3\xA9"
                        "cret"));
}

INSTANTIATE_TEST_SUITE_P(Engines, SchemaTest, kEngines, engineName);

/// Columns of every table in order, as "Guid not null key 1", as the engine itself describes them.
std::map<std::string, std::vector<std::string>> describe(DataAccess& access,
                                                         const std::string& dbName) {
    const char* statement =
        access.engine() == Engine::Server
            ? "select c.TABLE_NAME as t, c.COLUMN_NAME as c, c.IS_NULLABLE='NO' as n, "
              "coalesce(k.ORDINAL_POSITION,0) as k from information_schema.COLUMNS c left join "
              "information_schema.KEY_COLUMN_USAGE k on k.TABLE_SCHEMA=c.TABLE_SCHEMA and "
              "k.TABLE_NAME=c.TABLE_NAME and k.COLUMN_NAME=c.COLUMN_NAME and "
              "k.CONSTRAINT_NAME='PRIMARY' where c.TABLE_SCHEMA=database() order by "
              "c.ORDINAL_POSITION"
            : "select t.name as t, c.name as c, c.`notnull` as n, c.pk as k from sqlite_master t, "
              "pragma_table_info(t.name) c where t.type='table' and t.name<>'sqlite_sequence' "
              "order by c.cid";
    std::map<std::string, std::vector<std::string>> tables;
    ResultSet* rows = access.Query(dbName, statement);
    if (rows == nullptr) return {};
    while (rows->next()) {
        std::string table;
        std::string column;
        EXPECT_TRUE(rows->getString("t", table) && rows->getString("c", column));
        if (rows->getUInt("n") != 0) column += " not null";
        if (rows->getUInt("k") != 0) column += " key " + std::to_string(rows->getUInt("k"));
        tables[table].push_back(column);
    }
    DataAccess::ReleaseResulitSet(rows);
    return tables;
}

using BothEngines = EngineTest;

TEST_P(BothEngines, HaveTheSameTables) {
    const TemporaryDirectory directory;
    DataAccess embedded("sqlite:" + directory.path(), 0, "", "");
    createSchema();
    expectOk(Create(embedded, "vms"));
    auto onServer = describe(access(), dbName());
    const auto inFile = describe(embedded, "vms");
    ASSERT_EQ(27U, onServer.size());
    // A server numbers a row that has no Id before it looks for NULL, a file afterwards.
    for (auto& table : onServer)
        std::replace(table.second.begin(), table.second.end(), std::string("Id not null"),
                     std::string("Id"));
    EXPECT_EQ(onServer, inFile);
}

INSTANTIATE_TEST_SUITE_P(Server, BothEngines, ::testing::Values(Engine::Server), engineName);

}  // namespace
}  // namespace schema
