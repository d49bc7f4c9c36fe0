// What leaves a database and comes back, by import, export, copy, backup and restore.
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#include "tests/support/engines/ServerSessions.h"
#include "tests/tool/ToolTest.h"
#include "tools/dbservicectl/Entities.h"
#include "tools/dbservicectl/Inserts.h"

namespace {

using namespace std::string_literals;
using dbservicectl::Cell;
using schema::Type;
using ::testing::HasSubstr;
using Words = std::vector<std::string>;

std::string repeated(const std::string& text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i)
        result += text;
    return result;
}

/// The texts of a row, none for the last one, which is of NULLs.
Cell textOf(std::size_t row) {
    static const Words texts{"",
                             "a ",
                             "NULL",
                             R"(\\nas1\faces\)",
                             R"('); delete from device; -- %_"`;#/* \')",
                             "Tür 陈 \u202e line\r\n\tnext nul\0\x1a\x1b[2J\x7f"s,
                             R"({"hex":"00"})",
                             repeated("\xf0\x9f\x98\x80", 255),
                             repeated("\\'", 127)};
    return row < texts.size() ? Cell(texts[row]) : Cell();
}
constexpr std::size_t kRows = 10;

/// Those texts, the limits of numbers, and as many bytes as there may be.
Cell cellOf(const schema::Column& column, std::size_t row) {
    const Cell text = textOf(row);
    const std::string key = std::to_string(row + 1);
    if (column.type == Type::Key) return key + (text && text->size() < 200 ? *text : "");
    if (column.type == Type::LongText && row == 5) return repeated("\\", 65535);
    if (column.type == Type::NextId && row == 5) return "0";
    if (column.type == Type::SerialNumber && row == 5) return "4294967295";
    if (!text || !dbservicectl::isNumber(column.type))
        return column.type <= Type::LongText || column.type == Type::Number ? text : key;
    if (column.type == Type::Number) return row % 2 == 0 ? "-2147483648" : "2147483647";
    if (column.type != Type::BigNumber) return key;
    return row % 2 == 0 ? "-9223372036854775808" : "9223372036854775807";
}

Words operator+(Words words, const Words& more) {
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

class DataTest : public ToolTest {
protected:
    DataTest() {
        createSchema();
        std::ofstream(account_.back()) << server_.password << '\n';
    }
    ~DataTest() override {
        if (!fromServer_) there_.Execute("", "drop database if exists " + secondDbName());
    }

    ToolRun run(const Words& words, int exit = 0) const {
        ToolRun run = runTool(words + account_);
        EXPECT_EQ(exit, run.exit) << ::testing::PrintToString(words) << run.notes << run.data;
        return run;
    }
    ToolRun at(const Words& place, const Words& words, int exit = 0) const {
        return run(words + place, exit);
    }
    static Words copying(const Words& from, const Words& to) {
        return {"copy", "--from",        from[1], "--from-database", from[3], "--to",
                to[1],  "--to-database", to[3]};
    }
    std::string write(const std::string& text) const {
        std::ofstream(inScratch("written"), std::ios::binary) << text;
        return inScratch("written");
    }
    static std::string content(const std::string& file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    std::string exported(const Words& place) const {
        at(place, {"export", file_, "--yes"});
        return content(file_);
    }
    std::string queryOther(const std::string& text) {
        return ::query(there_, secondDbName(), text);
    }
    void addAlarms(int doublings) {
        expectOk(execute("insert into alarminfo(Guid,AlarmContent) values('1','text')"));
        for (int i = 0; i < doublings; ++i)
            expectOk(
                execute("insert into alarminfo(Guid,AlarmContent) select "
                        "SN+(select max(SN) from alarminfo),'text' from alarminfo"));
    }

    const TestServer& server_ = testServer();
    const Words account_{"--user",          server_.user,
                         "--port",          std::to_string(server_.port),
                         "--password-file", inScratch("password")};
    const std::string file_ = inScratch("file");
    const Words here_{"--host", host(), "--database", dbName()};
    /// On the other engine; not made yet.
    const bool fromServer_ = GetParam() == dbaccess::Engine::Server;
    const Words other_{"--host", fromServer_ ? "sqlite:" + inScratch("") : server_.host,
                       "--database", secondDbName()};
    dbaccess::DataAccess there_{other_[1], server_.port, server_.user, server_.password};
};

TEST_P(DataTest, EveryTextArrivesOnTheOtherEngineAndBack) {
    for (const schema::Table& table : schema::tables()) {
        dbservicectl::Inserts inserts(
            table, [&](const std::string& text, std::size_t) { expectOk(execute(text)); });
        for (std::size_t row = 0; row < kRows; ++row) {
            std::vector<Cell> cells;
            for (const schema::Column& column : schema::columnsOf(table))
                cells.push_back(cellOf(column, row));
            inserts.add(cells);
        }
        inserts.finish();
    }
    const Words back{"--host", host(), "--database", secondDbName()};
    run(copying(here_, other_));
    run(copying(other_, back));
    for (const schema::Table& table : schema::tables()) {
        for (const schema::Column& column : schema::columnsOf(table)) {
            const std::string text = "select hex(" + column.name + ") as v from " + table.name +
                                     " order by " + table.primaryKey;
            EXPECT_EQ(query(text), ::query(access(), secondDbName(), text)) << text;
        }
    }
    const std::string site = exported(here_);
    EXPECT_EQ(site, exported(other_));

    const std::string backup = inScratch("backup");
    at(other_, {"backup", backup});
    EXPECT_EQ(std::filesystem::perms(0600), std::filesystem::status(backup).permissions());
    expectOk(access().Execute(secondDbName(), "delete from device"));
    at(back, {"restore", backup, "--replace", "--yes"});
    EXPECT_THAT(at(back, {"import", write(site)}, 1).notes, HasSubstr("it has 10 servers"));
    EXPECT_THAT(at(back, {"import", write(site), "--replace", "--yes"}).notes,
                HasSubstr("channels[3].Device_Guid: points to nothing in devices\n"));
    EXPECT_EQ(site, exported(back));
}

TEST_P(DataTest, NamesEveryBadEntryAndImportsNothing) {
    write(R"({ "format": "dbservice site", "version": 2, "cars": [{"Guid": "a"}],
  "devices": [
    { "Guid": "a", "HttpPort": 99999999999,
      "DisplayName": 7, "Colour": "x", "Guid": "b" },
    17
    ,
    { "HttpPort": 1.5, "Password": ["x"] },
    { "Guid": "" }, { "Guid": "a", "Mac": ")" +
          repeated("é", 256) + R"(" }, { "Guid": "c" }
  ], "servers": {"Guid": "x"},
  "users": [{"Guid": "u", "Password": "my\secret"}] })");
    EXPECT_EQ(R"(dbservicectl: nothing was imported; bad entries: 15
written:1: version: is newer than 1, which this program reads
written:1: cars: is no kind of record
written:3: devices[0].HttpPort: is not a whole number from -2147483648 to 2147483647
written:4: devices[0].DisplayName: is not a text
written:4: devices[0].Colour: is no field
written:4: devices[0].Guid: stands there twice
written:5: devices[1]: is no record
written:7: devices[2].HttpPort: is not a whole number from -2147483648 to 2147483647
written:7: devices[2].Password: is not a text
written:7: devices[2].Guid: is missing
written:8: devices[3].Guid: is empty
written:8: devices[4].Guid: stands in line 3 already
written:8: devices[4].Mac: has 256 characters, and may have 255
written:9: servers: is no list of records
written:10: is no JSON: syntax error while parsing value - invalid string: forbidden character after backslash
)",
              tool({"import", inScratch("written")}, 1).notes);
    EXPECT_EQ("0", query("select count(*) as v from device"));
}

TEST_P(DataTest, AnImportReplacesManyRowsOrNone) {
    addAlarms(13);
    expectOk(execute(R"(insert into device(Guid) select replace(Guid,'1','\'') from alarminfo)"));
    const auto counts = [&] {
        return query("select count(*) as v from alarminfo") + " alarms, " +
               query("select count(*) as v from device") + " devices";
    };
    const std::string start = R"({"format":"dbservice site","version":1,"alarms":[)";
    const std::string noNumberLeft = R"({"Guid":"a","SN":4294967295},{"Guid":"b"}]})";
    tool({"import", write(start + noNumberLeft), "--replace", "--yes"}, 1);
    EXPECT_EQ("8192 alarms, 8192 devices", counts());
    tool({"import", write(start + "]}"), "--replace", "--yes"});
    EXPECT_EQ("0 alarms, 0 devices", counts());
    const std::string noIdLeft =
        R"(],"servers":[{"Guid":"a","Id":9223372036854775807},{"Guid":"b"}]})";
    EXPECT_THAT(tool({"import", write(start + noIdLeft)}, 1).notes,
                HasSubstr("written:1: servers: no number is left for records without Id\n"));
}

TEST_P(DataTest, AnInterruptedCopyIsGoneOnWith) {
    addAlarms(15);
    const std::string last = query("select max(SN) as v from alarminfo");
    expectOk(execute("delete from alarminfo where SN=" + last));
    Words words = Words{TOOL} + copying(here_, other_) + account_;
    std::vector<char*> pointers(words.size() + 1);
    std::transform(words.begin(), words.end(), pointers.begin(),
                   [](std::string& word) { return word.data(); });
    pid_t process = 0;
    ASSERT_EQ(0, ::posix_spawn(&process, TOOL, nullptr, nullptr, pointers.data(), environ));
    const auto copied = [&] {
        return std::stoi(queryOther("select count(*) as v from alarminfo"));
    };
    EXPECT_TRUE(dbaccess::becomes([&] { return copied() > 0; }));
    ::kill(process, SIGINT);
    int status = 0;
    ::waitpid(process, &status, 0);
    EXPECT_EQ(130, WEXITSTATUS(status));
    EXPECT_LT(copied(), 32767);
    EXPECT_THAT(run(copying(here_, other_), 1).notes, HasSubstr(" is not empty: it has "));
    run(copying(here_, other_) + Words{"--resume"});
    EXPECT_EQ(32767, copied());
    // No number is given twice, and what somebody else changed is told.
    expectOk(there_.Execute(secondDbName(), "insert into alarminfo(Guid) values('new')"));
    EXPECT_LT(std::stoi(last), std::stoi(queryOther("select max(SN) as v from alarminfo")));
    EXPECT_THAT(run(copying(here_, other_) + Words{"--resume"}, 2).notes,
                HasSubstr("1 tables differ"));
    EXPECT_THAT(run(copying(here_, here_), 64).notes, HasSubstr("the same database"));
}

TEST_P(DataTest, ABackupIsOfOneMomentWhileOthersWrite) {
    std::atomic<int> pairs{0};
    std::atomic<bool> done{false};
    std::thread writer([&] {
        for (; !done; ++pairs) {
            std::deque<std::string> list{
                "insert into alarminfo(Guid) values('~" + std::to_string(pairs) + "')",
                "insert into facecapture(filePath) values('^')"};
            expectOk(access().Update(dbName(), list));
        }
    });
    EXPECT_TRUE(dbaccess::becomes([&] { return pairs > 100; }));
    tool({"backup", file_});
    done = true;
    writer.join();
    const std::string text = content(file_);
    const auto alarms = std::count(text.begin(), text.end(), '~');
    EXPECT_LT(100, alarms);
    EXPECT_EQ(alarms, std::count(text.begin(), text.end(), '^'));
}

TEST_P(DataTest, ADamagedBackupIsNamedAndWritesNothing) {
    addAlarms(11);
    tool({"backup", file_});
    const std::string whole = content(file_);
    const auto changed = [&](const std::string& from, const std::string& to) {
        return std::string(whole).replace(whole.rfind(from), from.size(), to);
    };
    const std::vector<std::pair<std::string, std::string>> damaged{
        {changed("\"text\"", "\"test\""), "was changed between line 20"},
        {changed("\"text\"", "[[\"text\""), ": was changed: it is no line of"},
        {changed("\"version\":1", "\"version\":2"), "is a backup of version 2, and this"},
        {whole.substr(0, whole.rfind("\"text\"")), "is cut off: it ends in line 20"},
        {whole.substr(0, whole.rfind('{')), "is cut off: it ends in line 20"},
        {whole + "\n", "something stands behind its end"},
        {"{\"format\":7}\n", "is no backup"}};
    for (const auto& [text, complaint] : damaged) {
        EXPECT_THAT(at(other_, {"restore", write(text)}, 2).notes, HasSubstr(complaint));
        EXPECT_EQ("-1049", queryOther("select 1 as v"));
    }
    tool({"backup", file_}, 1);  // nobody is there to be asked
    EXPECT_EQ(whole, content(file_));
    EXPECT_THAT(tool({"restore", file_}, 1).notes, HasSubstr("is not empty"));
}

INSTANTIATE_TEST_SUITE_P(Engines, DataTest, kEngines, engineName);

}  // namespace
