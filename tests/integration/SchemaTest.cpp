// The tables that the schema library makes, on both engines.
#include "schema/Schema.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sqlite3.h>

#include <algorithm>
#include <cerrno>

#include "base/Version.h"
#include "schema/Steps.h"
#include "schema/Tables.h"
#include "tests/support/Threads.h"
#include "tests/support/engines/EngineTest.h"
#include "tests/support/engines/ServiceTest.h"
#include "tests/support/engines/TestServer.h"

namespace schema {
namespace {

using dbaccess::DataAccess;
using dbaccess::Engine;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
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

    std::vector<std::string> differences() { return differences(access()); }
    std::vector<std::string> differences(DataAccess& as) {
        std::vector<std::string> lines{"of an earlier check"};
        const int count = Check(as, dbName(), lines);
        EXPECT_EQ(static_cast<int>(lines.size()), count);
        return lines;
    }

    RecordedVersion recorded() {
        RecordedVersion version;
        expectOk(ReadVersion(access(), dbName(), version));
        return version;
    }

    void dropTimeIndex() {
        expectOk(execute(std::string("drop index alarminfo_BeginTime") +
                         (isServer() ? " on alarminfo" : "")));
    }

    void expectFailure(int result, DataAccess& as, const std::string& message) {
        EXPECT_EQ(result, Create(as, dbName()));
        EXPECT_EQ(-result, dbaccess::LastError().number);
        EXPECT_THAT(dbaccess::LastError().message, HasSubstr(message));
    }

    /// With no other rights than these. The account is named as the database.
    std::unique_ptr<DataAccess> accessWith(const std::vector<std::string>& rights) {
        expectOk(execute("drop user if exists " + dbName()));
        expectOk(execute("create user " + dbName() + " identified by 'right'"));
        for (const std::string& right : rights)
            expectOk(execute("grant " + right + " to " + dbName()));
        return std::make_unique<DataAccess>(host(), port(), dbName(), "right");
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
    dropTimeIndex();
    expectOk(execute("drop table dbservice_schema"));
    for (const std::string& shared : {secondDbName(), dbName()}) {
        inThreads(4, [&](int) {
            auto own = newAccess();
            EXPECT_TRUE(own->Initialize(1, 1, true, true));
            expectOk(Create(*own, shared));
        });
        std::vector<std::string> lines;
        EXPECT_EQ(0, Check(access(), shared, lines)) << lines[0];
    }
    EXPECT_EQ(Version(), recorded().version);
}

TEST_P(SchemaTest, CreateGoesOnWhereACrashEndedIt) {
    for (const std::size_t kept : {27U, 26U, 13U, 0U}) {
        expectOk(execute("drop table dbservice_schema"));
        for (std::size_t i = kept; i < tables().size(); ++i)
            expectOk(execute(std::string("drop table ") + tables()[i].name));
        if (kept == 27) dropTimeIndex();
        expectOk(Create(access(), dbName()));
        EXPECT_THAT(differences(), IsEmpty());
        EXPECT_EQ(Version(), recorded().version);
    }
}

TEST_P(SchemaTest, TheStatementsByThemselvesMakeTheSame) {
    expectOk(access().Execute("", "create database " + secondDbName()));
    for (const std::string& statement :
         statementsFor(GetParam(), isServer() ? testServer().collation() : "", ""))
        expectOk(access().Execute(secondDbName(), statement));
    std::vector<std::string> lines;
    EXPECT_EQ(0, Check(access(), secondDbName(), lines)) << lines[0];
    EXPECT_EQ("2", ::query(access(), secondDbName(), "select Version as v from dbservice_schema"));
}

TEST_P(SchemaTest, AVersionIsRecordedAndMinded) {
    const RecordedVersion own = recorded();
    EXPECT_EQ(2, own.version);
    // Another one: the tables have changed, and so must their version.
    EXPECT_EQ(isServer() ? "bca7ada5-8e2c-5bba-b67d-e4eb5f30a677"
                         : "66f2caa1-8cb2-5aed-a5c2-3fdb084ffdc3",
              own.checksum);
    EXPECT_EQ(dbservice::Version(), own.library);
    EXPECT_THAT(own.time, testing::MatchesRegex("20..-..-.. ..:..:.."));

    for (const std::string other : {"Checksum='other'", "Version=1"}) {
        expectOk(execute("update dbservice_schema set " + other));
        EXPECT_THAT(differences(), ElementsAre(HasSubstr("dbservice_schema: is version ")));
        expectOk(Create(access(), dbName()));
        EXPECT_EQ(own.checksum, recorded().checksum);
    }
    EXPECT_EQ("1|2", column("Version", "dbservice_schema"));

    dropTimeIndex();
    expectOk(execute("insert into dbservice_schema values(3,'of the next','9.9.9','')"));
    expectFailure(-1235, access(), "version 3 of library 9.9.9");
    EXPECT_THAT(differences(), ElementsAre("alarminfo: index on (BeginTime) is missing",
                                           HasSubstr("is newer than this library: version 3 of")));

    expectOk(execute("drop table dbservice_schema"));
    EXPECT_EQ(0, recorded().version);
    EXPECT_EQ(1U, differences().size());  // the index: to record no version is none
}

class EmbeddedSchemaTest : public SchemaTest {};
class ServerSchemaTest : public SchemaTest {};

TEST_P(EmbeddedSchemaTest, ACompleteFileMayBeReadOnly) {
    sqlite3_vfs* const vfs = sqlite3_vfs_find(nullptr);
    int (*const readOnlyOpen)(const char*, int, int) = [](const char* path, int flags, int mode) {
        errno = EROFS;
        return (flags & O_ACCMODE) == O_RDONLY ? ::open(path, flags, mode) : -1;
    };
    const auto reader = newAccess();
    vfs->xSetSystemCall(vfs, "open", reinterpret_cast<sqlite3_syscall_ptr>(readOnlyOpen));
    expectOk(Create(*reader, dbName()));
    EXPECT_EQ(-1036, reader->Execute(dbName(), "delete from device"));
    vfs->xSetSystemCall(vfs, "open", nullptr);
}

TEST_P(ServerSchemaTest, RightsThatSufficeAndThatDoNot) {
    const std::string all = " on " + dbName() + ".*";
    const auto running = accessWith({"select, insert, update, delete" + all});
    expectOk(Create(*running, dbName()));
    EXPECT_THAT(differences(*running), IsEmpty());
    EXPECT_EQ(-1044, Create(*running, secondDbName()));
    EXPECT_THAT(dbaccess::LastError().message, HasSubstr("create database needs the right CREATE"));
    dropTimeIndex();
    expectFailure(-1142, *running, "create index on alarminfo needs the right INDEX on");
    expectOk(execute("drop table nodeinfo"));
    expectFailure(-1142, *running, "create table nodeinfo needs the right CREATE on '");
    EXPECT_THAT(differences(*running),
                ElementsAre("nodeinfo: table is missing", HasSubstr("(BeginTime) is missing")));
    expectOk(Create(*accessWith({"select, insert, delete, create, index" + all}), dbName()));

    const auto unseen = HasSubstr(": cannot be seen with this account, which lacks the right SEL");
    const auto blind = accessWith({"create, index" + all});
    EXPECT_EQ(28U, differences(*blind).size());  // with the table of versions
    EXPECT_THAT(differences(*blind), Each(unseen));
    expectFailure(-1142, *blind, "needs the right SELECT on '");
    const auto narrow = accessWith(
        {"select on " + dbName() + ".device", "select(Guid) on " + dbName() + ".channel"});
    EXPECT_EQ(26U, differences(*narrow).size());
    EXPECT_THAT(differences(*narrow), Each(AllOf(unseen, Not(HasSubstr("device:")))));
    expectOk(execute("drop user " + dbName()));
}

TEST_P(SchemaTest, TheLogSaysOnceWhatToDoAboutADatabaseThatWasNotSetUp) {
    const std::string advice = "; run `dbservicectl schema create` or call schema::Create";
    for (const char* missing : {"1049 (42000) on '", "1146 (42S02) on '"}) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(1,
                  dbservice::DBService::Initialize({host(), static_cast<int>(port()), user(),
                                                    password(), secondDbName(), 1, 4, true, true}));
        EXPECT_EQ(nullptr, service().QueryDevice(""));
        EXPECT_EQ(nullptr, service().QueryServerInfo(""));
        dbservice::DBService::Cleanup();
        const std::string log = testing::internal::GetCapturedStderr();
        EXPECT_THAT(log, HasSubstr(missing + secondDbName()));
        EXPECT_THAT(log, HasSubstr(advice));
        EXPECT_EQ(log.find(advice), log.rfind(advice)) << log;
        expectOk(access().Execute("", "create database if not exists " + secondDbName()));
    }
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
INSTANTIATE_TEST_SUITE_P(Engines, EmbeddedSchemaTest, ::testing::Values(Engine::Embedded),
                         engineName);
INSTANTIATE_TEST_SUITE_P(Engines, ServerSchemaTest, ::testing::Values(Engine::Server), engineName);

}  // namespace
}  // namespace schema
