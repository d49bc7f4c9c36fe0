#include "dbaccess/rows/RowBuffer.h"

#include <gmock/gmock.h>

namespace dbaccess {
namespace {

using Fields = std::vector<std::optional<std::string>>;

void add(RowBuffer& rows, const Fields& fields) {
    std::vector<const char*> values;
    std::vector<std::size_t> lengths;
    for (const auto& field : fields) {
        values.push_back(field ? field->data() : nullptr);
        lengths.push_back(field ? field->size() : 0);
    }
    rows.addRow(values.data(), lengths.data());
}

std::string text(RowBuffer& rows, const std::string& column) {
    std::string value = "untouched";
    rows.getString(column, value);
    return value;
}

TEST(RowBuffer, ColumnsInAnyOrderAndAnyCase) {
    RowBuffer rows({"Guid", "Num", "Name"});
    add(rows, {"g1", "1", "first"});
    add(rows, {"g2", "2", "second"});
    EXPECT_EQ(2, rows.rowsCount());
    EXPECT_EQ("untouched", text(rows, "Guid"));  // stands before the first row
    ASSERT_TRUE(rows.next());
    EXPECT_EQ("g1", text(rows, "Guid"));
    EXPECT_EQ("first", text(rows, "Name"));
    EXPECT_EQ("1", text(rows, "nUM"));
    EXPECT_EQ("first", text(rows, "Name"));
    EXPECT_EQ("first", text(rows, "Name"));
    EXPECT_EQ("untouched", text(rows, "Nam"));
    ASSERT_TRUE(rows.next());
    EXPECT_EQ("second", text(rows, "Name"));
    EXPECT_EQ("g2", text(rows, "Guid"));
    EXPECT_FALSE(rows.next());
    EXPECT_EQ("untouched", text(rows, "Guid"));
    EXPECT_FALSE(rows.next());
    EXPECT_EQ(2, rows.rowsCount());
}

TEST(RowBuffer, NullAndAbsentColumnsLeaveTheValue) {
    RowBuffer rows({"Id", "Name"});
    add(rows, {std::nullopt, std::nullopt});
    ASSERT_TRUE(rows.next());
    int number = 500;
    EXPECT_EQ("untouched", text(rows, "Name"));
    EXPECT_FALSE(rows.getInt("Id", &number));
    EXPECT_FALSE(rows.getInt("nosuch", &number));
    EXPECT_EQ(500, number);
    EXPECT_EQ(0U, rows.getUInt("Id"));
    EXPECT_EQ(0U, rows.getUInt64("nosuch"));
    EXPECT_FALSE(rows.getInt("Id", nullptr));
}

TEST(RowBuffer, NumbersWrapToTheAskedWidth) {
    struct Case {
        const char* stored;
        int asInt;
        unsigned int asUInt;
        std::uint64_t asUInt64;
    };
    const Case cases[] = {
        {"42", 42, 42, 42},
        {"-1294967296", -1294967296, 3000000000U, static_cast<std::uint64_t>(-1294967296LL)},
        {"3000000000", -1294967296, 3000000000U, 3000000000U},
        {"-2147483648", -2147483647 - 1, 2147483648U, static_cast<std::uint64_t>(-2147483648LL)},
        {"18446744073709551615", -1, 4294967295U, 18446744073709551615U},
        {"99999999999999999999", -1, 4294967295U, 18446744073709551615U},
        {"12abc", 12, 12, 12},
        {"1.9", 1, 1, 1},
        {"abc", 0, 0, 0},
        {"", 0, 0, 0},
        {"-", 0, 0, 0},
    };
    for (const Case& oneCase : cases) {
        SCOPED_TRACE(oneCase.stored);
        RowBuffer rows({"n"});
        add(rows, {oneCase.stored});
        rows.next();
        int number = -7;
        EXPECT_TRUE(rows.getInt("n", &number));
        EXPECT_EQ(oneCase.asInt, number);
        EXPECT_EQ(oneCase.asUInt, rows.getUInt("n"));
        EXPECT_EQ(oneCase.asUInt64, rows.getUInt64("n"));
    }
}

TEST(RowBuffer, RowsOfAllSizesInOrder) {
    RowBuffer rows({"n", "bytes"});
    const auto bytesOf = [](int n) {
        return std::string(static_cast<std::size_t>(n % 7 == 0 ? n * 40 : n % 50),
                           static_cast<char>(n));
    };
    constexpr int kRows = 3000;
    for (int n = 0; n < kRows; ++n)
        add(rows, {std::to_string(n), bytesOf(n)});
    for (int n = 0; n < kRows; ++n) {
        ASSERT_TRUE(rows.next());
        ASSERT_EQ(static_cast<unsigned int>(n), rows.getUInt("n"));
        ASSERT_EQ(bytesOf(n), text(rows, "bytes"));
    }
    EXPECT_FALSE(rows.next());
}

TEST(RowBuffer, WithoutRowsOrColumns) {
    RowBuffer empty({});
    EXPECT_EQ(0, empty.rowsCount());
    EXPECT_FALSE(empty.next());
    EXPECT_EQ(0U, empty.getUInt("Id"));
}

}  // namespace
}  // namespace dbaccess
