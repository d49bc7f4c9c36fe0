#ifndef DBSERVICE_SCHEMA_TEXT_H
#define DBSERVICE_SCHEMA_TEXT_H

#include <string>
#include <string_view>
#include <vector>

namespace schema {

/// Without blanks at both ends.
std::string_view trimmed(std::string_view text);

/// Every blank a plain space, so that a text of several lines is one.
std::string oneLine(std::string text);

/// A piece of a statement in the form in which pieces are compared: lower case, without blanks and
/// without the quotes of names.
std::string plain(std::string_view text);

/// What stands between the commas, trimmed; commas in parentheses and quotes are none.
std::vector<std::string> split(std::string_view list);

}  // namespace schema

#endif
