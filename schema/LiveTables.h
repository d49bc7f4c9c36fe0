#ifndef DBSERVICE_SCHEMA_LIVETABLES_H
#define DBSERVICE_SCHEMA_LIVETABLES_H

#include <map>
#include <set>
#include <string>

#include "dbaccess/DataAccess.h"
#include "schema/Tables.h"
#include "schema/Version.h"

namespace schema {

struct LiveIndex {
    std::string columns;  ///< plain, as "user_guid,id"; a part of a text as "name(20)"
    bool unique = false;
};

/// A table as it is in a database, in the terms of `Dialect`.
struct LiveTable {
    std::string storage;
    std::string primaryKey;                      ///< plain
    std::map<std::string, std::string> columns;  ///< definitions by plain name
    std::map<std::string, LiveIndex> indexes;    ///< by name, the primary key's among them
    std::set<std::string> triggers;              ///< plain: all that stands behind CREATE TRIGGER

    /// An index serves as well under any name, and with further columns behind those asked for
    /// unless it keeps values from coming twice.
    bool has(const Index& index) const;
};

/// By name, in lower case where the engine takes upper and lower for the same.
struct LiveTables {
    bool caseMatters = false;
    std::map<std::string, LiveTable> tables;

    std::string keyOf(const std::string& name) const;
    const LiveTable* find(const std::string& name) const;
};

/// Whether the database is certainly there: a server shows those that the account has a right to,
/// and the embedded engine none. @return 0, or the negated error number.
int readIsThere(dbaccess::DataAccess& access, const std::string& dbName, bool& isThere);

/// Reads all tables of a database that the account has a right to. Of their columns a server shows
/// those that it may read or write. @return 0, or the negated error number.
int readLiveTables(dbaccess::DataAccess& access, const std::string& dbName, LiveTables& live);

/// Reads the highest version that is recorded, where there is a table of versions.
/// @return 0, or the negated error number.
int readRecordedVersion(dbaccess::DataAccess& access, const std::string& dbName,
                        const LiveTables& live, RecordedVersion& recorded);

/// The collation for texts on this server; empty for the embedded engine, which compares bytes.
/// @return  0, or the negated error number.
int readTextCollation(dbaccess::DataAccess& access, std::string& collation);

}  // namespace schema

#endif
