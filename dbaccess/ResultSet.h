#ifndef DBSERVICE_DBACCESS_RESULTSET_H
#define DBSERVICE_DBACCESS_RESULTSET_H

#include <cstdint>
#include <string>

#include "base/Export.h"

namespace dbaccess {

/// The rows of one query, read forward once, columns by name.
///
/// A new set stands before its first row; `next()` reaches it. Column names compare without regard
/// to letter case. A column that is NULL or not in the set leaves an out-parameter as it was and
/// reads as 0 from the getters that return their value. Numbers are taken from the column's text:
/// its leading whole number (0 when there is none), cut to the asked width with wrap-around, so a
/// stored -1294967296 reads as 3000000000 unsigned. Reading columns in the order of the select list
/// is fastest.
///
/// Ownership: whoever got the set from `DataAccess::Query` gives it back to
/// `DataAccess::ReleaseResulitSet`; it may outlive the `DataAccess`.
/// Threads: one thread at a time.
class DBSERVICE_API ResultSet {
public:
    ResultSet() = default;
    ResultSet(const ResultSet&) = delete;
    ResultSet& operator=(const ResultSet&) = delete;
    virtual ~ResultSet() = default;

    /// Number of rows in the whole set, wherever it stands.
    virtual int rowsCount() const = 0;

    /// Moves to the next row; false when there is none. Rows passed are freed.
    virtual bool next() = 0;

    /// Stores the column's text in `value`, NUL bytes included. False when NULL, absent, or before
    /// the first or behind the last row.
    virtual bool getString(std::string column, std::string& value) = 0;

    /// Stores the column's number in `*value`. False as for `getString`, and for a null pointer.
    virtual bool getInt(std::string column, int* value) = 0;

    /// The column's number; 0 for NULL and absent columns.
    virtual unsigned int getUInt(std::string column) = 0;

    /// The column's number; 0 for NULL and absent columns.
    virtual std::uint64_t getUInt64(std::string column) = 0;
};

}  // namespace dbaccess

#endif
