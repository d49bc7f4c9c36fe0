#ifndef DBACCESS_SQLITE_SQLITETEXT_H
#define DBACCESS_SQLITE_SQLITETEXT_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace dbaccess::sqlite {

/// A literal to bind: text, or a whole number.
using Value = std::variant<std::string, std::int64_t>;

/// A statement of MySQL's dialect as SQLite takes it.
struct SqliteText {
    int error = 0;  ///< 0, or why it is no statement: 1064, 1065 (empty), 1300, 1366
    std::string errorMessage;

    /// The text for sqlite3_prepare, one `?` for each value. For a multi-row insert or replace
    /// whose rows all have one shape this holds one row, to be run once for each row of values.
    std::string text;
    std::vector<Value> values;     ///< row after row
    std::size_t valuesPerRow = 0;  ///< 0: one run with all values; else values.size() / valuesPerRow runs
};

/// Rewrites a statement for SQLite so that it means what it means on a MySQL server: literals are
/// decoded and become bound values (or SQLite literals where a value may not stand), comments go,
/// `||` and `&&` become OR and AND, a trailing `;` goes, a second statement is refused, and chains
/// of OR terms are grouped below SQLite's depth limit. ATTACH, DETACH, PRAGMA, VACUUM and other
/// statements that no server knows are refused as syntax errors.
SqliteText toSqlite(std::string_view statement);

}  // namespace dbaccess::sqlite

#endif
