// What the tool shows of records, and how.
#include "tests/tool/ToolTest.h"
#include "tools/dbservicectl/Output.h"

namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class ListTest : public ToolTest {
protected:
    ListTest() {
        createSchema();
        expectOk(execute(R"(insert into device(Guid,DisplayName,HttpPort,Password) values)"
                         R"(('a','Tür\n\\nas1\\\'x"',80,'secret'),('b','',null,''))"));
    }
};

TEST_P(ListTest, WritesEveryFormatAndNoPassword) {
    EXPECT_THAT(tool({"list", "devices", "--key", "a", "--format", "json"}).data,
                HasSubstr(R"("DisplayName":"Tür\n\\nas1\\'x\"","IPAddress":null,"HttpPort":80,)"));
    EXPECT_THAT(tool({"--format", "csv", "list", "device"}).data,
                HasSubstr("Guid,ServerGuid,Mac,DriverKey,DisplayName,IPAddress,HttpPort,"));
    const std::string table = tool({"list", "devices"}).data;
    EXPECT_THAT(table, HasSubstr(R"(Tür\n\nas1\'x")"));
    EXPECT_THAT(table, Not(HasSubstr("secret")));
    EXPECT_EQ("[]\n", tool({"list", "servers", "--format", "json"}).data);
}

TEST_P(ListTest, SaysWhatIsWrongOnceAndWhatToDo) {
    EXPECT_THAT(tool({"list", "cars"}, 64).notes, HasSubstr("'cars' is no kind of record"));
    EXPECT_THAT(tool({"list"}, 64).notes, HasSubstr("'' is no kind of record"));
    expectOk(execute("drop table device"));
    const ToolRun run = tool({"list", "devices"}, 1);
    EXPECT_EQ("", run.data);
    EXPECT_EQ(
        "dbservicectl: reading: error 1146 (42S02)\n"
        "  The database or its tables are not there: 'dbservicectl schema create' makes them\n",
        run.notes);
}

INSTANTIATE_TEST_SUITE_P(Engines, ListTest, kEngines, engineName);

TEST(Table, FitsAnyWidth) {
    using namespace dbservicectl;
    const std::vector<Column> columns{{"Name"}, {"Count", true}, {"Text"}};
    const std::vector<std::vector<Cell>> rows{
        {"陈 door", "7", "a text of several words, and averyverylongwordatitsend"},
        {"\x1b[m\t", {}, "\xff\xc2\x9b"}};
    EXPECT_EQ(
        "Name      Count  Text\n"
        "陈 door       7  a text of several words, and averyverylongwordatitsend\n"
        "\\x1b[m\\t   NULL  \\xff\\u009b\n",
        tableText(columns, rows, 0));
    EXPECT_EQ(
        "Name      Count  Text\n"
        "陈 door       7  a text of\n"
        "                 several\n"
        "                 words, and\n"
        "                 averyverylo\n"
        "                 ngwordatits\n"
        "                 end\n"
        "\\x1b[m\\t   NULL  \\xff\\u009b\n",
        tableText(columns, rows, 28));
    EXPECT_THAT(tableText(columns, rows, 20), HasSubstr("Count  7\nText   a text of\n"));
}

}  // namespace
