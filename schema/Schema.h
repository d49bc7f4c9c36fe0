#ifndef SCHEMA_SCHEMA_H
#define SCHEMA_SCHEMA_H

#include <string>
#include <vector>

#include "base/Export.h"

namespace dbaccess {
class DataAccess;
}

namespace schema {

/// Creates the database, when it is not there, and in it every table and index that is not there.
/// May be run again at any time, by several programs at once, and never touches what exists: use
/// `Check` to learn whether that is as expected.
/// @param access   an initialised access layer; its account needs the right to create.
/// @param dbName   the database; for the embedded engine the file DIR/dbName.db is made.
/// @return  0, or the negated MySQL error number of the first statement that failed (as
///          `dbaccess::LastError` tells); what was created before it stays.
DBSERVICE_API int Create(dbaccess::DataAccess& access, const std::string& dbName);

/// Compares a live database with the tables that the library expects and names each difference:
/// tables, columns, column types, keys, indexes and collations that are missing or other than
/// expected. What the database has beyond that is no difference.
/// @param differences  replaced by one line for each difference, as "device.Guid: type is
///                     varchar(100), expected varchar(255)"; empty when the database fits.
/// @return  the number of differences, or the negated MySQL error number when it could not look
///          (-1049: no such database).
DBSERVICE_API int Check(dbaccess::DataAccess& access, const std::string& dbName,
                        std::vector<std::string>& differences);

}  // namespace schema

#endif
