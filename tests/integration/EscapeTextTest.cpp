#include "dbaccess/EscapeText.h"

#include <random>

#include "tests/support/engines/ServiceTest.h"

namespace dbservice {
namespace {

class EscapeTextTest : public ServiceTest {};

/// A text of pieces that mean something to a statement, and of plain ones.
std::string hostileText(std::mt19937& random) {
    static const std::vector<std::string> pieces = {"'",
                                                    "''",
                                                    "\"",
                                                    "\\",
                                                    "\\'",
                                                    "\\\\",
                                                    "`",
                                                    "--",
                                                    "-- ",
                                                    "#",
                                                    "/*",
                                                    "*/",
                                                    ";",
                                                    "?",
                                                    "%",
                                                    "_",
                                                    "\n",
                                                    "\r",
                                                    "\t",
                                                    "\x1a",
                                                    std::string(1, '\0'),
                                                    " or '1'='1",
                                                    "' or 1=1 -- ",
                                                    "\\n",
                                                    "\\0",
                                                    "a",
                                                    "Z",
                                                    " ",
                                                    "\xC3\xA9",
                                                    "\xE2\x82\xAC",
                                                    "\xF0\x9F\x93\xB7"};
    std::string text;
    for (auto count = random() % 12; count > 0; --count)
        text += pieces[random() % pieces.size()];
    return text;
}

TEST_P(EscapeTextTest, AnyTextIsReadBackAsItWas) {
    std::mt19937 random(20261121);  // NOLINT(cert-msc51-cpp): the same texts each time
    for (int i = 0; i < 500; ++i) {
        const std::string text = hostileText(random);
        T_ArchiveInfo archive;
        archive.Guid = std::to_string(i);
        archive.ArchiveTime = dbaccess::EscapeText(text);
        ASSERT_EQ(0, service().InsertArchiveInfo(archive)) << dbaccess::LastError().message;
        T_ArchiveInfoList* list = service().QueryArchiveInfo(archive.Guid);
        ASSERT_NE(nullptr, list);
        EXPECT_EQ(text, list->items[0].ArchiveTime);
        service().ReleaseArchiveInfoList(list);
    }
}

TEST_P(EscapeTextTest, ALoginCannotBeTalkedInto) {
    T_UserInfo user;
    user.Guid = "g";
    user.UserName = dbaccess::EscapeText("O'Hara");
    user.Password = dbaccess::EscapeText("back\\slash");
    ASSERT_EQ(0, service().InsertUser(user));
    const auto login = [](const std::string& name, const std::string& password) {
        return service().Login(dbaccess::EscapeText(name), dbaccess::EscapeText(password));
    };
    EXPECT_EQ(0, login("O'Hara", "back\\slash"));
    EXPECT_EQ(-1, login("O'Hara", "' or '1'='1"));
    EXPECT_EQ(-1, login("O'Hara' -- ", ""));
    EXPECT_EQ(-1, login("\\", " or 1=1 -- "));
    EXPECT_EQ(
        0, service().Login("' or '1'='1", "' or '1'='1"));  // not escaped: as the contract has it
}

INSTANTIATE_TEST_SUITE_P(Engines, EscapeTextTest, kEngines, engineName);

}  // namespace
}  // namespace dbservice
