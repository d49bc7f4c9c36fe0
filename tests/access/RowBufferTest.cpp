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

TEST(RowBuffer, FieldsOfRecords) {
    const auto columns = std::make_shared<const ColumnNames>(
        std::vector<std::string>{"Time", "name", "Level", "Serial", "Note"});
    std::string name, absent, note;
    int level = 0, missing = 0;
    unsigned int time = 0, again = 0, never = 0;
    std::uint64_t serial = 0;
    const Field fields[] = {{"Name", &name},   {"Time", &time},     {"NoSuch", &absent},
                            {"Level", &level}, {"Serial", &serial}, {"Time", &again},
                            {"Note", &note},   {"None", &missing},  {"Never", &never}};
    const Field others[] = {{"Note", &note}, {"Level", &level}};
    const auto values = [&] {
        return std::make_tuple(name, time, level, serial, again, note, absent, missing, never);
    };
    const auto clear = [&] {
        name = absent = note = "untouched";
        level = missing = -7;
        time = again = never = 9;
        serial = 9;
    };
    for (int set = 0; set < 2; ++set) {  // the second one finds the places known
        RowBuffer rows(columns);
        add(rows, {"1", "first", "-3", "18446744073709551615", std::nullopt});
        add(rows, {"2", std::string(300, 'n'), std::nullopt, std::nullopt, ""});
        clear();
        readFields(rows, fields);  // before the first row
        EXPECT_EQ(std::make_tuple("untouched", 0U, -7, 0U, 0U, "untouched", "untouched", -7, 0U),
                  values());
        ASSERT_TRUE(rows.next());
        clear();
        readFields(rows, fields);
        EXPECT_EQ(std::make_tuple("first", 1U, -3, 18446744073709551615U, 1U, "untouched",
                                  "untouched", -7, 0U),
                  values());
        EXPECT_EQ("first", text(rows, "name"));  // by its name from the same row
        ASSERT_TRUE(rows.next());
        clear();
        readFields(rows, others);
        EXPECT_EQ(std::make_tuple("untouched", 9U, -7, 9U, 9U, "", "untouched", -7, 9U), values());
        readFields(rows, fields);
        EXPECT_EQ(std::make_tuple(std::string(300, 'n'), 2U, -7, 0U, 2U, "", "untouched", -7, 0U),
                  values());
        EXPECT_FALSE(rows.next());
    }
}

TEST(RowBuffer, RowsOfAllSizesInOrder) {
    RowBuffer rows({"number", "text"});
    std::vector<std::int64_t> numbers;  // beside the limits of what may hold them
    for (const int bits : {0, 7, 8, 15, 31, 32, 62})
        for (const std::int64_t near : {-1, 0, 1})
            for (const int sign : {1, -1})
                numbers.push_back(sign * ((std::int64_t{1} << bits) + near));
    const auto numberOf = [&](std::size_t row) { return numbers[row % numbers.size()]; };
    const auto textOf = [](std::size_t row) {
        return std::string(row % 7 == 0 ? row * 40 : row % 300, static_cast<char>(row));
    };
    for (std::size_t row = 0; row < 3000; ++row) {
        rows.beginRow();
        rows.addNumber(numberOf(row));
        rows.addText(textOf(row));
        rows.endRow();
    }
    for (std::size_t row = 0; row < 3000; ++row) {
        ASSERT_TRUE(rows.next());
        ASSERT_EQ(textOf(row), text(rows, "text"));
        ASSERT_EQ(std::to_string(numberOf(row)), text(rows, "number"));
        ASSERT_EQ(static_cast<std::uint64_t>(numberOf(row)), rows.getUInt64("number"));
    }
    EXPECT_FALSE(rows.next());
}

}  // namespace
}  // namespace dbaccess
