// Users by the tool: no password on a command line, and none in what it prints.
#include "tests/tool/ToolTest.h"

namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class UserTest : public ToolTest {
protected:
    UserTest() { createSchema(); }
};

const std::string kName = R"(O'Hare \" ü)";
const std::string kPassword = R"(s' or '1'='1\\ "ß)";

TEST_P(UserTest, AddsChangesAndLogsIn) {
    const ToolRun added = tool({"user", "add", kName, "--user-id", "it's"}, 0, kPassword + "\n");
    EXPECT_THAT(added.data + added.notes, Not(HasSubstr(kPassword)));
    EXPECT_EQ(kPassword, query("select Password as v from userinfo"));
    tool({"user", "login", kName}, 0, kPassword + "\n");
    tool({"user", "login", kName}, 1, "' or '1'='1\n");
    EXPECT_THAT(tool({"user", "add", kName}, 1, "another\n").notes, HasSubstr("already"));

    tool({"user", "passwd", kName}, 0, "next\n");
    tool({"user", "passwd", kName}, 1, "\n");
    tool({"user", "passwd", kName}, 1, "");
    tool({"user", "passwd", ""}, 64, "secret\n");
    const ToolRun tooLong = tool({"user", "passwd", kName}, 1, std::string(300, 'x') + "\n");
    EXPECT_THAT(tooLong.notes, HasSubstr("error 1406 (22001)"));
    EXPECT_THAT(tooLong.notes, Not(HasSubstr("xxx")));
    EXPECT_EQ("next", query("select Password as v from userinfo"));
    EXPECT_EQ("it's", query("select UserId as v from userinfo"));
}

TEST_P(UserTest, ShowsAndSetsRights) {
    expectOk(execute("insert into userinfo(Guid,UserName) values('g\\'1','ann')"));
    EXPECT_THAT(tool({"user", "rights", "ann", "--set", "live,browse"}).data,
                HasSubstr("live               1\nbrowse             1\nsetup              0\n"));
    tool({"user", "rights", "ann", "--set", "management"});
    EXPECT_EQ("0", query("select ViewLive as v from userrights"));  // in the one row
    expectOk(execute("update userrights set PrivateViews=7"));
    EXPECT_THAT(tool({"user", "rights", "ann", "--format", "json"}).data,
                HasSubstr(R"({"Right":"private-views","Value":7})"));
    expectOk(execute("insert into userinfo(Guid,UserName) values('2','ann')"));
    EXPECT_THAT(tool({"user", "rights", "ann"}, 1).notes, HasSubstr("2 users have the name"));
}

INSTANTIATE_TEST_SUITE_P(Engines, UserTest, kEngines, engineName);

}  // namespace
