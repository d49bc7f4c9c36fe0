#ifndef DBSERVICE_SCHEMA_LIVETABLES_H
#define DBSERVICE_SCHEMA_LIVETABLES_H

#include <map>
#include <set>
#include <string>

#include "dbaccess/DataAccess.h"

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
};

/// By name, in lower case where the engine takes upper and lower for the same.
struct LiveTables {
    bool caseMatters = false;
    std::map<std::string, LiveTable> tables;

    std::string keyOf(const std::string& name) const;
    const LiveTable* find(const std::string& name) const;
};

/// Reads all tables of a database. @return 0, or the negated error number.
int readLiveTables(dbaccess::DataAccess& access, const std::string& dbName, LiveTables& live);

/// The collation for texts on this server; empty for the embedded engine, which compares bytes.
/// @return  0, or the negated error number.
int readTextCollation(dbaccess::DataAccess& access, std::string& collation);

}  // namespace schema

#endif
