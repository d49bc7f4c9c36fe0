// The mechanics that all DAOs are made of.
#include <gmock/gmock.h>

#include <cstdint>
#include <limits>

#include "dbservice/statement/Condition.h"
#include "dbservice/statement/NextId.h"
#include "dbservice/statement/ReadRows.h"
#include "dbservice/statement/Records.h"
#include "dbservice/statement/Result.h"
#include "dbservice/statement/Rows.h"
#include "dbservice/statement/Text.h"
#include "tests/unit/ScriptedDataAccess.h"

namespace dbservice::statement {
namespace {

using scripted::Rows;
using scripted::script;
using testing::ElementsAre;

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

TEST(Text, ValuesGoInAsTheyAre) {
    EXPECT_EQ("values('O'Brien\\', -2147483648, 4294967295)",
              compose("values('{}', {}, {})", std::string("O'Brien\\"), kLowest,
                      std::numeric_limits<std::uint32_t>::max()));
    EXPECT_EQ("x='{}' y=''", compose("x='{}' y='{}'", std::string("{}"), ""));
    const std::string binary("a\0b", 3);
    EXPECT_EQ(binary, compose("{}", binary));
    EXPECT_EQ("a text without values", compose("a text without values"));
}

TEST(Text, LengthHasNoLimit) {
    const std::string huge(5'000'000, 'x');
    EXPECT_EQ(huge.size() + 2, compose("'{}'", huge).size());
}

TEST(Condition, EmptyKeysAddNothing) {
    const auto filter = [](const std::string& a, const std::string& b, const std::string& c) {
        std::string condition;
        andGivenKey(condition, " A='{}'", a);
        andGivenKey(condition, " B='{}'", b);
        andGivenKey(condition, " C='{}'", c);
        return where(condition);
    };
    EXPECT_EQ("", filter("", "", ""));
    EXPECT_EQ(" where B='2'", filter("", "2", ""));
    EXPECT_EQ(" where A='1' and C='3'", filter("1", "", "3"));
    EXPECT_EQ(" where A='1' and B='2' and C='3'", filter("1", "2", "3"));
}

TEST(Condition, AlternativesAreJoinedByOr) {
    struct Keyed {
        std::string Key;
    };
    const Keyed keys[] = {{"a"}, {""}, {"c"}};
    EXPECT_EQ(" K='a' or K='' or K='c'", anyKey(Records<Keyed>(keys, 3), " K='{}'", &Keyed::Key));
    EXPECT_EQ("", anyKey(Records<Keyed>(keys, 0), " K='{}'", &Keyed::Key));

    std::string condition;
    orGivenKey(condition, " A='{}'", "");
    EXPECT_EQ("", condition);
    orGivenKey(condition, " A='{}'", "1");
    orGivenKey(condition, " B='{}'", "");
    EXPECT_EQ(" A='1' or", condition);  // dangling
}

TEST(Records, NullOrNoCountIsEmpty) {
    const int numbers[] = {5, 6};
    EXPECT_TRUE(Records<int>(nullptr, 5).empty());
    EXPECT_TRUE(Records<int>(numbers, 0).empty());
    EXPECT_TRUE(Records<int>(numbers, -3).empty());
    const Records<int> both(numbers, 2);
    EXPECT_THAT(std::vector<int>(both.begin(), both.end()), ElementsAre(5, 6));
}

TEST(Result, CountsFoldToZeroAndErrorsStay) {
    EXPECT_EQ(0, zeroOrError(7));
    EXPECT_EQ(0, zeroOrError(0));
    EXPECT_EQ(-1062, zeroOrError(-1062));
    EXPECT_EQ(kLowest, zeroOrError(std::int64_t{0x80000000}));  // only the low half counts
    EXPECT_EQ(0, zeroOrError(std::int64_t{1} << 32));
}

class NextId : public testing::Test {
protected:
    NextId() { script() = {}; }

    static std::int32_t first(std::optional<Rows> answer) {
        script().queries.push_back(std::move(answer));
        dbaccess::DataAccess access("", 0, "", "");
        return IdSequence(access, "vms", "device").next();
    }
};

TEST_F(NextId, CountsOnFromTheLargest) {
    script().queries.push_back(Rows{{"Id"}, {{"7"}}});
    dbaccess::DataAccess access("", 0, "", "");
    IdSequence ids(access, "vms", "device");
    EXPECT_EQ(8, ids.next());
    EXPECT_EQ(9, ids.next());
    EXPECT_EQ(10, ids.next());
    EXPECT_EQ("Query vms: select max(Id) as Id from device", script().calls.at(1));
    EXPECT_EQ(1, script().releasedSets);
}

TEST_F(NextId, StartsWithOneWhenThereIsNothingToRead) {
    EXPECT_EQ(1, first(std::nullopt));
    EXPECT_EQ(1, first(Rows{{"Id"}, {}}));
    EXPECT_EQ(1, first(Rows{{"Id"}, {}, 1}));  // announced, but the row does not come
    EXPECT_EQ(0, script().openSets);
}

TEST_F(NextId, WrapsAroundSigned) {
    EXPECT_EQ(kLowest, first(Rows{{"Id"}, {{std::to_string(kHighest)}}}));
    EXPECT_EQ(0, first(Rows{{"Id"}, {{"4294967295"}}}));
}

TEST_F(NextId, RowsEndAsTold) {
    const auto appendRow = [](std::string& rows, int number) { append(rows, "({}", number); };
    const int numbers[] = {5, 6};
    const Records<int> both(numbers, 2);
    EXPECT_EQ("(5) ,(6) ", rowsOf(both, appendRow, ") "));
    EXPECT_EQ("", rowsOf(Records<int>(numbers, 0), appendRow, ")"));

    script().queries.push_back(Rows{{"Id"}, {{"7"}}});
    dbaccess::DataAccess access("", 0, "", "");
    IdSequence ids(access, "vms", "device");
    EXPECT_EQ("(5,8),(6,9)", rowsOf(both, appendRow, ",{})", ids));
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

class ReadRows : public testing::Test {
protected:
    ReadRows() { script() = {}; }
    ~ReadRows() override { EXPECT_EQ(0, script().openSets); }

    /// The names that a reader makes of an answer; "null" for no list.
    template <class Reader>
    static std::vector<std::string> names(Reader reader, std::optional<Rows> answer) {
        dbaccess::DataAccess access("", 0, "", "");
        script().queries.push_back(std::move(answer));
        PairList* list = reader(access.Query("", ""), readPair);
        if (list == nullptr) return {"null"};
        std::vector<std::string> result;
        for (int i = 0; i < list->count; ++i)
            result.push_back(list->items[i].Name);
        EXPECT_EQ(list->count == 0, list->items == nullptr);
        release(list);
        return result;
    }
};

TEST_F(ReadRows, ListOrNull) {
    const auto reader = [](auto... arguments) { return listOrNull<PairList>(arguments...); };
    EXPECT_THAT(names(reader, std::nullopt), ElementsAre("null"));
    EXPECT_THAT(names(reader, Rows{{"Name"}, {}}), ElementsAre("null"));
    EXPECT_THAT(names(reader, Rows{{"Name"}, {{"a"}, {"b"}}}), ElementsAre("a", "b"));
    EXPECT_THAT(names(reader, Rows{{"Name"}, {{"a"}}, 2}), ElementsAre("a", "as constructed"));
}

TEST_F(ReadRows, ListOrEmpty) {
    const auto reader = [](auto... arguments) { return listOrEmpty<PairList>(arguments...); };
    EXPECT_THAT(names(reader, std::nullopt), ElementsAre("null"));
    EXPECT_THAT(names(reader, Rows{{"Name"}, {}}), ElementsAre());
    EXPECT_THAT(names(reader, Rows{{"Name"}, {{"a"}, {"b"}}}), ElementsAre("a", "b"));
    EXPECT_THAT(names(reader, Rows{{"Name"}, {{"a"}}, 3}),
                ElementsAre("a", "as constructed", "as constructed"));
}

TEST_F(ReadRows, FirstRecord) {
    const auto first = [](bool orNull, std::optional<Rows> answer) -> std::string {
        dbaccess::DataAccess access("", 0, "", "");
        script().queries.push_back(std::move(answer));
        dbaccess::ResultSet* rows = access.Query("", "");
        const std::unique_ptr<Pair> record(orNull ? firstOrNull(rows, readPair)
                                                  : firstOrDefault(rows, readPair));
        return record ? record->Name : "null";
    };
    for (const bool orNull : {false, true}) {
        EXPECT_EQ("null", first(orNull, std::nullopt));
        EXPECT_EQ(orNull ? "null" : "as constructed", first(orNull, Rows{{"Name"}, {}}));
        EXPECT_EQ("a", first(orNull, Rows{{"Name"}, {{"a"}, {"b"}}}));
    }
}

TEST_F(ReadRows, HasRows) {
    dbaccess::DataAccess access("", 0, "", "");
    script().queries = {std::nullopt, Rows{{"Name"}, {}}, Rows{{"Name"}, {{"a"}}}};
    EXPECT_FALSE(hasRows(access.Query("", "")));
    EXPECT_FALSE(hasRows(access.Query("", "")));
    EXPECT_TRUE(hasRows(access.Query("", "")));
}

TEST_F(ReadRows, ReleaseTakesNullAndEmptyLists) {
    release<PairList>(nullptr);
    release(new PairList);
}

}  // namespace
}  // namespace dbservice::statement
