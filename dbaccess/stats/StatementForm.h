#ifndef DBSERVICE_DBACCESS_STATS_STATEMENTFORM_H
#define DBSERVICE_DBACCESS_STATS_STATEMENTFORM_H

#include <cstddef>
#include <string>
#include <string_view>

namespace dbaccess {

/// About where a text for the log is cut.
constexpr std::size_t kLongestForm = 1000;

/// The text of a statement for the log, with `?` in the place of every literal and without
/// comments. Only for one that a database has run: in an ill-formed one, parts of a value may stand
/// as words. Ends in "..." where it is cut: when it gets too long, and behind a literal with a
/// backslash, whose end depends on the session's settings.
std::string formOf(std::string_view statement);

}  // namespace dbaccess

#endif
