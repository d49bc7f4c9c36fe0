// The mechanics that all DAOs are made of, beyond what the tests of the operations show of them.
#include <gmock/gmock.h>

#include <cstdint>
#include <limits>

#include "dbservice/statement/NextId.h"
#include "dbservice/statement/ReadRows.h"
#include "dbservice/statement/Result.h"
#include "dbservice/statement/Text.h"
#include "tests/unit/ScriptedDataAccess.h"

namespace dbservice::statement {
namespace {

using scripted::Rows;
using scripted::script;
using testing::ElementsAre;

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();

TEST(Text, ValuesGoInAsTheyAre) {
    EXPECT_EQ("values('O'Brien\\', -2147483648, 4294967295)",
              compose("values('{}', {}, {})", std::string("O'Brien\\"), kLowest,
                      std::numeric_limits<std::uint32_t>::max()));
    EXPECT_EQ("x='{}' y=''", compose("x='{}' y='{}'", std::string("{}"), ""));
    const std::string binary("a\0b", 3);
    EXPECT_EQ(binary, compose("{}", binary));
    EXPECT_EQ("a text without values", compose("a text without values"));
}

TEST(Result, OnlyTheLowHalfCounts) {
    EXPECT_EQ(kLowest, zeroOrError(std::int64_t{0x80000000}));
    EXPECT_EQ(0, zeroOrError(std::int64_t{1} << 32));
}

TEST(NextId, WhatIsReadOfTheLargest) {
    const std::pair<std::optional<Rows>, std::int32_t> cases[] = {
        {std::nullopt, 1},
        {Rows{{"Id"}, {}}, 1},
        {Rows{{"Id"}, {}, 1}, 1},  // announced, but the row does not come
        {Rows{{"Id"}, {{"2147483647"}}}, kLowest},
        {Rows{{"Id"}, {{"4294967295"}}}, 0},
    };
    dbaccess::DataAccess access("", 0, "", "");
    for (const auto& [answer, first] : cases) {
        script() = {};
        script().queries.push_back(answer);
        EXPECT_EQ(first, IdSequence(access, "vms", "device").next());
        EXPECT_EQ(0, script().openSets);
    }
}

struct Pair {
    std::string Name = "as constructed";
};
struct PairList {
    int count = 0;
    Pair* items = nullptr;
};
int readPair(dbaccess::ResultSet* row, Pair* pair) {
    row->getString("Name", pair->Name);
    return 0;
}

/// The names that a reader makes of an answer of which not all rows come.
template <class Reader>
std::vector<std::string> names(Reader reader) {
    script() = {};
    script().queries.push_back(Rows{{"Name"}, {{"a"}}, 3});
    dbaccess::DataAccess access("", 0, "", "");
    PairList* list = reader(access.Query("", ""), readPair);
    std::vector<std::string> result;
    for (int i = 0; i < list->count; ++i)
        result.push_back(list->items[i].Name);
    release(list);
    return result;
}

TEST(ReadRows, RowsThatDoNotComeLeaveTheirRecords) {
    const auto expected = ElementsAre("a", "as constructed", "as constructed");
    EXPECT_THAT(names(listOrNull<PairList, Pair>), expected);
    EXPECT_THAT(names(listOrEmpty<PairList, Pair>), expected);
}

}  // namespace
}  // namespace dbservice::statement
