#ifndef DBSERVICE_SCHEMA_SCHEMA_H
#define DBSERVICE_SCHEMA_SCHEMA_H

#include <string>
#include <vector>

#include "base/Export.h"

namespace dbaccess {
class DataAccess;
}

namespace schema {

/// Creates the database, when it is not there, and in it every table and index that is not there.
/// May be run again at any time, by several programs at once. It never touches what exists: use
/// `Check` to learn whether that is as expected.
/// @param access   an initialised access layer; its account needs the right to create.
/// @param dbName   the database; for the embedded engine the file DIR/dbName.db is made. Empty or
///                 with a backtick: -1102.
/// @return  0, or the negated MySQL error number of the first statement that failed (as
///          `dbaccess::LastError` tells); what was created before it stays.
DBSERVICE_API int Create(dbaccess::DataAccess& access, const std::string& dbName);

/// Compares a live database with the tables that the library expects and names each difference:
/// tables, columns, their types, limits and collations, keys, indexes and the tables' storage,
/// where missing or other than expected. What the database has beyond that is no difference, and an
/// index serves under any name.
/// @param differences  replaced by one line for each difference, as "device.Mac: column is missing"
///                     or "channel.Num: is bigint, expected int"; empty when the database fits.
/// @return  the number of differences, or the negated MySQL error number when it could not look
///          (-1049: no such database, -1046: an empty name).
DBSERVICE_API int Check(dbaccess::DataAccess& access, const std::string& dbName,
                        std::vector<std::string>& differences);

}  // namespace schema

#endif
