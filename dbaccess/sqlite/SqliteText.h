#ifndef DBSERVICE_DBACCESS_SQLITE_SQLITETEXT_H
#define DBSERVICE_DBACCESS_SQLITE_SQLITETEXT_H

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
    /// 0, or why it is no statement: 1064 (syntax), 1065 (empty), 1300 or 1366 (not UTF-8). Only
    /// the message has a meaning then.
    int error = 0;
    std::string errorMessage;  ///< names the place in the statement, never what stands there

    /// The text for sqlite3_prepare: one statement, with one `?` for each value. For a multi-row
    /// insert or replace whose rows all have one shape it holds one row, to be run once for each
    /// row of values.
    std::string text;
    std::vector<Value> values;  ///< row after row

    /// 0: one run with all values; else values.size() / valuesPerRow runs.
    std::size_t valuesPerRow = 0;
};

/// Rewrites a statement for SQLite so that it means what it means on a MySQL server: literals are
/// decoded, comments go, `||` and `&&` become OR and AND, a trailing `;` goes, a second statement
/// is refused, and chains of OR terms are grouped below SQLite's depth limit. What begins with
/// another word than SELECT, INSERT, REPLACE, UPDATE, DELETE, WITH, VALUES, CREATE, ALTER or DROP
/// is a syntax error, and so is what SQLite would take for a parameter.
///
/// Text literals and whole numbers become values where a value surely means the same: as a whole
/// element of an inserted row, and where something is compared with or set to them, in SET, ON and
/// WHERE. Elsewhere, and from the 30,000th on, they stay literals in the text: a literal in the
/// list of SELECT names its column, and definitions take no values. Of CREATE TRIGGER, the `;` of
/// its body are kept.
SqliteText toSqlite(std::string_view statement);

}  // namespace dbaccess::sqlite

#endif
