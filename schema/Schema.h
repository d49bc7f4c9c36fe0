#ifndef DBSERVICE_SCHEMA_SCHEMA_H
#define DBSERVICE_SCHEMA_SCHEMA_H

#include <string>
#include <vector>

#include "base/Export.h"

namespace dbaccess {
class DataAccess;
}

namespace schema {

/// Makes what is not there: the database, and in it every table and index, and records their
/// version. So it also brings a database of an older library up to date. It never touches what
/// exists: use `Check` to learn whether that is as expected.
///
/// May be run at any time, at every start and by several programs at once: it reads first and sends
/// what is missing, so a complete database needs no more than the right to read it (SELECT), and
/// may be read-only. What a crash or a failure left half done is gone on with by the next call.
/// @param access   an initialised access layer.
/// @param dbName   the database; for the embedded engine the file DIR/dbName.db is made. Empty or
///                 with a backtick: -1102.
/// @return  0, or the negated MySQL error number of the first statement that failed; what was
///          created before it stays. `dbaccess::LastError` and the log tell which statement it was,
///          and which right the account lacks for it (-1044, -1142). -1235: the recorded version is
///          higher than this library's; nothing was sent.
DBSERVICE_API int Create(dbaccess::DataAccess& access, const std::string& dbName);

/// Compares a live database with the tables that the library expects and names each difference:
/// tables, columns, their types, limits and collations, keys, indexes and the tables' storage,
/// where missing or other than expected, and a recorded version that is another than this
/// library's. What the database has beyond that is no difference, an index serves under any name,
/// and a database need not record a version.
/// @param differences  replaced by one line for each difference, as "device.Mac: column is missing"
///                     or "channel.Num: is bigint, expected int"; empty when the database fits. A
///                     table that the account may not read is one too, as "device: cannot be seen
///                     with this account, which lacks the right SELECT".
/// @return  the number of differences, or the negated MySQL error number when it could not look
///          (-1049: no such database, -1044: no right to it, -1046: an empty name).
DBSERVICE_API int Check(dbaccess::DataAccess& access, const std::string& dbName,
                        std::vector<std::string>& differences);

/// The version of the tables that this library makes. It rises with every change of them.
DBSERVICE_API int Version();

/// What a database says of its tables, in the table `dbservice_schema`.
struct RecordedVersion {
    int version = 0;       ///< 0: none is recorded, as in databases made before there were versions
    std::string checksum;  ///< of the definitions that made the tables; differs between engines
    std::string library;   ///< the version of the library that recorded it, as "1.1.0"
    std::string time;      ///< when it did, as "2026-11-22 03:00:00", in UTC
};

/// Reads the highest version that a database records.
/// @return  0, or the negated MySQL error number (-1049: no such database, -1046: an empty name).
DBSERVICE_API int ReadVersion(dbaccess::DataAccess& access, const std::string& dbName,
                              RecordedVersion& recorded);

}  // namespace schema

#endif
