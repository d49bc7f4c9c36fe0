#ifndef DBSERVICECTL_OUTPUT_H
#define DBSERVICECTL_OUTPUT_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dbservicectl {

enum class Format {
    Table,  ///< for people
    Json,   ///< one object on a line, in an array
    Csv,    ///< with a line of names; NULL and the empty text look alike
};

struct Column {
    std::string name;
    bool isNumber = false;
};

/// None is a NULL of the database.
using Cell = std::optional<std::string>;

/// Writes rows to standard output: data and nothing else. JSON and CSV are written as the rows
/// come; a table at the end, as its columns are as wide as what stands in them.
class Output {
public:
    Output(Format format, std::vector<Column> columns);

    void add(std::vector<Cell> row);

    /// To be called once, behind the last row.
    void finish();

private:
    void writeJson(const std::vector<Cell>& row) const;

    Format format_;
    std::vector<Column> columns_;
    std::vector<std::vector<Cell>> rows_;  // of a table
    std::size_t count_ = 0;
};

/// The text as a terminal may show it: control characters, and bytes that are no UTF-8, as \n or
/// \x1b, whatever they would do there.
std::string harmless(std::string_view text);

/// The lines of a harmless text, each within so many columns: broken at word ends, or in a word
/// that is too long for a line.
std::vector<std::string> wrapped(const std::string& text, std::size_t width);

/// The table as text, each line within so many columns of a terminal (0: any number). A cell that
/// is too wide is wrapped at word ends; columns that do not fit at all stand below each other.
std::string tableText(const std::vector<Column>& columns,
                      const std::vector<std::vector<Cell>>& rows, std::size_t width);

/// How wide the terminal at standard output is; 0 when it is none.
std::size_t terminalWidth();

}  // namespace dbservicectl

#endif
