#ifndef DBSERVICE_DBACCESS_SQLITE_SQLITETEXT_H
#define DBSERVICE_DBACCESS_SQLITE_SQLITETEXT_H

#include <string>
#include <string_view>

#include "dbaccess/reader/Statement.h"

namespace dbaccess::sqlite {

/// A statement of MySQL's dialect as SQLite takes it.
struct SqliteText {
    /// 0, or why it is no statement: 1064 (syntax), 1065 (empty), 1300 or 1366 (not UTF-8). Only
    /// the message has a meaning then.
    int error = 0;
    std::string errorMessage;  ///< names the place in the statement, never what stands there

    std::string text;  ///< for sqlite3_prepare: one statement, or none when it is empty
};

/// Rewrites a statement for SQLite so that it means what it means on a MySQL server: literals are
/// decoded, comments go, `||` and `&&` become OR and AND, a trailing `;` goes, a second statement
/// is refused, and chains of OR terms are grouped below SQLite's depth limit. What begins with
/// another word than SELECT, INSERT, REPLACE, UPDATE, DELETE, WITH, VALUES, CREATE, ALTER or DROP
/// is a syntax error, and so is what SQLite would take for a parameter. Of CREATE TRIGGER, the
/// `;` of its body are kept.
///
/// Where the statement has a skeleton the text is that of the skeleton, with one `?` for each of
/// its values. An error's place is that in the statement.
SqliteText toSqlite(const Statement& statement);

/// The same for a skeleton alone.
SqliteText toSqlite(const Skeleton& skeleton);

}  // namespace dbaccess::sqlite

#endif
