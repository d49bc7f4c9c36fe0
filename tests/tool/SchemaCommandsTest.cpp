// The tables as the tool makes and compares them, and the rights that accounts need.
#include <fmt/format.h>
#include <sqlite3.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <regex>
#include <sstream>

#include "dbaccess/pool/HostText.h"
#include "schema/Tables.h"
#include "tests/tool/ToolTest.h"

namespace {

using ::testing::HasSubstr;

class SchemaCommandsTest : public ToolTest {
protected:
    /// As an administrator would, without the library.
    void pipeToClient(const std::string& statements) const {
        if (GetParam() == dbaccess::Engine::Embedded) {
            sqlite3* file = nullptr;
            sqlite3_open((host().substr(7) + "/" + secondDbName() + ".db").c_str(), &file);
            EXPECT_EQ(SQLITE_OK, sqlite3_exec(file, statements.c_str(), nullptr, nullptr, nullptr));
            sqlite3_close(file);
            return;
        }
        std::ofstream(inScratch("sql")) << statements;
        ::setenv("MYSQL_PWD", password().c_str(), 1);
        const auto at = dbaccess::parseHost(host(), port()).servers.front();
        const std::string client =
            fmt::format("mariadb --no-defaults --user={} {} <{}", user(),
                        at.socket.empty() ? fmt::format("--host={} --port={}", at.name, at.port)
                                          : "--socket=" + at.socket,
                        inScratch("sql"));
        EXPECT_EQ(0, std::system(client.c_str()));
    }
};

TEST_P(SchemaCommandsTest, PrintsStatementsThatMakeAll) {
    const std::string engine = GetParam() == dbaccess::Engine::Embedded ? "sqlite"
                               : testServer().isMariaDb                 ? "mariadb"
                                                                        : "mysql";
    pipeToClient(toolOn(secondDbName(), {"schema", "print-sql", "--engine", engine}).data);
    const ToolRun run = toolOn(secondDbName(), {"schema", "check"});
    EXPECT_EQ(0, run.exit) << run.data << run.notes;
    EXPECT_EQ(64, runTool({"schema", "print-sql", "--database", "a`b"}).exit);
}

TEST_P(SchemaCommandsTest, NamesDifferencesAndMakesWhatIsMissing) {
    tool({"schema", "create"});
    EXPECT_EQ("[]\n", tool({"schema", "check", "--format", "json"}).data);
    expectOk(execute("drop table device"));
    expectOk(execute("delete from dbservice_schema"));
    EXPECT_EQ("[\n{\"Difference\":\"device: table is missing\"}\n]\n",
              tool({"schema", "check", "--format", "json"}, 2).data);
    EXPECT_THAT(tool({"schema", "upgrade"}).notes, HasSubstr("create table device\n"));
    tool({"schema", "check"});
    EXPECT_THAT(toolOn(secondDbName(), {"schema", "upgrade"}).notes,
                HasSubstr("schema create' makes them"));
}

INSTANTIATE_TEST_SUITE_P(Engines, SchemaCommandsTest, kEngines, engineName);

class GrantsTest : public ToolTest {
protected:
    GrantsTest() {
        createSchema();
        expectOk(access().Execute("", "create user " + dbName()));
    }
    ~GrantsTest() override { expectOk(access().Execute("", "drop user " + dbName())); }

    bool succeeds(const std::vector<std::string>& command) const {
        std::vector<std::string> words{"--host", host(),   "--port",     std::to_string(port()),
                                       "--user", dbName(), "--database", dbName()};
        words.insert(words.end(), command.begin(), command.end());
        return runTool(words).exit == 0;
    }

    /// Runs the statements that the tool prints, once as they are and once each without a right.
    void expectLeast(const std::string& kind, const std::function<bool()>& works) {
        const std::string printed = tool({"grants", "--kind", kind, "--account", dbName()}).data;
        for (const char* right :
             {"no right", "SELECT", "INSERT", "UPDATE", "DELETE", "CREATE", "INDEX"}) {
            const std::regex leftOut(fmt::format(", {0}|{0},? ?", right));
            const std::string less = std::regex_replace(printed, leftOut, "");
            expectOk(access().Execute("", "revoke all privileges, grant option from " + dbName()));
            std::istringstream lines(less);
            for (std::string line; std::getline(lines, line, ';');)
                access().Execute("", line);
            EXPECT_EQ(less == printed, works()) << kind << " without " << right;
        }
    }
};

TEST_P(GrantsTest, AreTheLeastThatEachKindOfAccountNeeds) {
    expectLeast("running", [&] {
        dbaccess::DataAccess service(host(), port(), dbName(), "");
        bool works = service.Initialize(1, 1, true, true) && succeeds({"schema", "create"});
        const bool isHealthy = succeeds({"doctor"});
        for (const schema::Table& table : schema::tables()) {
            const std::string key = schema::columnsOf(table).front().name;
            expectOk(execute(fmt::format("delete from {}", table.name)));
            for (const char* form :
                 {"insert into {}({}) values('1')", "replace into {}({}) values('1')",
                  "update {0} set {1}='2' where {1}='1'", "delete from {}"})
                works = service.Execute(dbName(),
                                        fmt::format(fmt::runtime(form), table.name, key)) > 0 &&
                        works;
        }
        EXPECT_EQ(works, isHealthy);
        return works;
    });
    expectLeast("setup", [&] {
        expectOk(execute("drop table if exists device"));
        execute("drop index channel_Device_Guid_Num on channel");
        execute("drop table dbservice_schema");
        return succeeds({"schema", "create"}) && succeeds({"schema", "check"});
    });
    expectLeast("backup", [&] { return succeeds({"list", "devices"}); });
}

INSTANTIATE_TEST_SUITE_P(Server, GrantsTest, ::testing::Values(dbaccess::Engine::Server),
                         engineName);

}  // namespace
