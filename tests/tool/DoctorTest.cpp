// What doctor sees of a database, and that it finds what is wrong.
#include <fstream>

#include "tests/tool/ToolTest.h"

namespace {

using ::testing::HasSubstr;

class DoctorTest : public ToolTest {};

TEST_P(DoctorTest, ShowsAHealthyDatabase) {
    createSchema();
    expectOk(execute(
        "insert into alarminfo(Guid,BeginTime) values('1',''),('2','2026-01-02 03:04:05')"));
    expectOk(execute("insert into facecapture(addTime) values(0),(1767323045)"));
    const std::string table = tool({"doctor"}).data;
    EXPECT_THAT(table, HasSubstr("alarms            2026-01-02 03:04:05\n"));
    EXPECT_THAT(table, HasSubstr("face-captures     2026-01-02 03:04:05 UTC\n"));
    EXPECT_THAT(table, HasSubstr("0 differences\n"));
    EXPECT_THAT(tool({"doctor", "--format", "json"}).data,
                HasSubstr(R"("Problem":null,"Do":null})"));
}

TEST_P(DoctorTest, FindsWhatIsWrong) {
    createSchema();
    expectOk(execute("drop table channel"));
    EXPECT_THAT(tool({"doctor"}, 2).data,
                HasSubstr("problem: schema: channel: table is missing / do: "));
    EXPECT_THAT(toolOn(secondDbName(), {"doctor"}).data, HasSubstr("error 1049 (42000) / do: "));
    EXPECT_EQ(1, runTool({"--host", "sqlite:/no/such", "--database", "a", "doctor"}).exit);
    if (GetParam() == dbaccess::Engine::Embedded) {
        toolOn(secondDbName(), {"schema", "create"});
        std::fstream(host().substr(7) + "/" + secondDbName() + ".db").seekp(160'000)
            << std::string(4096, 'x');
        EXPECT_THAT(toolOn(secondDbName(), {"doctor"}).data, HasSubstr("problem: integrity: "));
    } else if (testServer().isPrivate) {
        expectOk(execute("set global read_only=1, max_allowed_packet=1048576"));
        const std::string found = tool({"doctor"}, 2).data;
        expectOk(execute("set global read_only=0, max_allowed_packet=default"));
        EXPECT_THAT(found, HasSubstr("problem: server: takes no writes: read_only is on / do: "));
        EXPECT_THAT(found, HasSubstr("problem: packet limit: "));
    }
}

INSTANTIATE_TEST_SUITE_P(Engines, DoctorTest, kEngines, engineName);

}  // namespace
