#include "dbaccess/EscapeText.h"

#include <random>

#include "tests/support/engines/ServiceTest.h"

namespace dbservice {
namespace {

using namespace std::string_literals;
using EscapeTextTest = ServiceTest;

TEST_P(EscapeTextTest, AnyTextIsReadBackAsItWas) {
    // What means something to a statement, alone and in any company, and plain characters.
    std::vector<std::string> pieces = {"\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x93\xB7",
                                       "' or 1=1 -- "};
    for (const char c : "'''\"\\\\\\`--#/**/;?%_\n\r\t\x1a\0 nZa0"s)
        pieces.emplace_back(1, c);
    std::mt19937 random(20261121);  // NOLINT(cert-msc51-cpp): the same texts each time
    for (int i = 0; i < 500; ++i) {
        std::string text;
        for (auto count = random() % 20; count > 0; --count)
            text += pieces[random() % pieces.size()];
        const std::string guid = std::to_string(i);
        ASSERT_EQ(0, service().InsertArchiveInfo({guid, dbaccess::EscapeText(text)}));
        EXPECT_EQ(text, joined(records(service().QueryArchiveInfo(guid),
                                       &DBService::ReleaseArchiveInfoList),
                               &T_ArchiveInfo::ArchiveTime));
    }
}

INSTANTIATE_TEST_SUITE_P(Engines, EscapeTextTest, kEngines, engineName);

}  // namespace
}  // namespace dbservice
