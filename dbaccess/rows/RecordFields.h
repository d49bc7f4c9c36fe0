#ifndef DBSERVICE_DBACCESS_ROWS_RECORDFIELDS_H
#define DBSERVICE_DBACCESS_ROWS_RECORDFIELDS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>

#include "dbaccess/ResultSet.h"

namespace dbaccess {

/// A column, by a literal, and the field of a record that it is read into.
struct Field {
    const char* column;
    std::variant<std::string*, int*, unsigned int*, std::uint64_t*> place;
};

/// Reads the fields from the current row, each as the getter for its type does: NULL, or a column
/// that is not there, leaves a text and an int as they are and makes the others 0. In the rows of a
/// DataAccess the columns are looked for once, where the getters look for one each time.
void readFields(ResultSet& row, const Field* fields, std::size_t count);

template <std::size_t count>
void readFields(ResultSet& row, const Field (&fields)[count]) {
    readFields(row, fields, count);
}

}  // namespace dbaccess

#endif
