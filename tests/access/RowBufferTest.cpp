#include "dbaccess/rows/RowBuffer.h"

#include <gtest/gtest.h>

#include <limits>
#include <tuple>

namespace dbaccess {
namespace {

using Fields = std::vector<std::optional<std::string>>;

void add(RowBuffer& rows, const Fields& fields) {
    rows.beginRow();
    for (const auto& field : fields)
        field ? rows.addText(*field) : rows.addNull();
    rows.endRow();
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
    EXPECT_EQ("untouched", text(rows, "Guid"));  // stands before the first row
    ASSERT_TRUE(rows.next());
    const std::pair<const char*, const char*> reads[] = {{"Guid", "g1"},    {"Name", "first"},
                                                         {"nUM", "1"},      {"Name", "first"},
                                                         {"Name", "first"}, {"Nam", "untouched"}};
    for (const auto& [column, value] : reads)
        EXPECT_EQ(value, text(rows, column)) << column;
    ASSERT_TRUE(rows.next());
    EXPECT_EQ("second", text(rows, "Name"));
    EXPECT_EQ("g2", text(rows, "Guid"));
    for (int i = 0; i < 2; ++i) {
        EXPECT_FALSE(rows.next());
        EXPECT_EQ("untouched", text(rows, "Guid"));
        EXPECT_EQ(2, rows.rowsCount());
    }
}

TEST(RowBuffer, NullAndAbsentColumnsLeaveTheValue) {
    RowBuffer rows({"Name"});
    add(rows, {std::nullopt});
    ASSERT_TRUE(rows.next());
    for (const char* column : {"Name", "nosuch"}) {
        int number = 500;
        EXPECT_EQ("untouched", text(rows, column));
        EXPECT_FALSE(rows.getInt(column, &number));
        EXPECT_EQ(500, number);
        EXPECT_EQ(0U, rows.getUInt(column));
        EXPECT_EQ(0U, rows.getUInt64(column));
    }
}

TEST(RowBuffer, NumbersWrapToTheAskedWidth) {
    const std::tuple<const char*, int, std::uint64_t> cases[] = {
        {"42", 42, 42},
        {"-1294967296", -1294967296, 18446744072414584320U},
        {"3000000000", -1294967296, 3000000000U},
        {"-2147483648", std::numeric_limits<int>::min(), 18446744071562067968U},
        {"18446744073709551615", -1, 18446744073709551615U},
        {"99999999999999999999", -1, 18446744073709551615U},
        {"12abc", 12, 12},
        {"1.9", 1, 1},
        {"abc", 0, 0},
        {"", 0, 0},
        {"-", 0, 0},
    };
    for (const auto& [stored, asInt, asUInt64] : cases) {
        SCOPED_TRACE(stored);
        RowBuffer rows({"n"});
        add(rows, {stored});
        rows.next();
        int number = -7;
        EXPECT_TRUE(rows.getInt("n", &number));
        EXPECT_FALSE(rows.getInt("n", nullptr));
        EXPECT_EQ(asInt, number);
        EXPECT_EQ(static_cast<unsigned int>(asInt), rows.getUInt("n"));
        EXPECT_EQ(asUInt64, rows.getUInt64("n"));
    }
}

TEST(RowBuffer, RowsOfAllSizesInOrder) {
    RowBuffer rows({"n", "bytes"});
    const auto bytesOf = [](std::size_t n) {
        return std::string(n % 7 == 0 ? n * 40 : n % 50, static_cast<char>(n));
    };
    for (std::size_t n = 0; n < 3000; ++n)
        add(rows, {std::to_string(n), bytesOf(n)});
    for (std::size_t n = 0; n < 3000; ++n) {
        ASSERT_TRUE(rows.next());
        ASSERT_EQ(n, rows.getUInt("n"));
        ASSERT_EQ(bytesOf(n), text(rows, "bytes"));
    }
    EXPECT_FALSE(rows.next());
}

}  // namespace
}  // namespace dbaccess
