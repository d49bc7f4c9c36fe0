#ifndef DBSERVICE_SCHEMA_STEPS_H
#define DBSERVICE_SCHEMA_STEPS_H

#include <string>
#include <vector>

#include "dbaccess/DataAccess.h"
#include "schema/Dialect.h"
#include "schema/LiveTables.h"

namespace schema {

/// A statement that makes a piece of a database. It may be run again, though on a server an index
/// that is there already answers 1061.
struct Step {
    std::string statement;
    std::string what;   ///< its kind and its table, as "create index on device"
    const char* right;  ///< what an account on a server needs for it, as "INDEX"
};

/// What `tables()` have and the live ones lack.
std::vector<Step> missingTables(const Dialect& dialect, const LiveTables& live);

/// Reads what a database lacks, in the order in which it is to be made; nothing when it is
/// complete.
/// @return  0, or the negated error number, as `Create`.
int readMissing(dbaccess::DataAccess& access, const std::string& dbName, std::vector<Step>& steps);

/// All statements that make a database, for those who run them by other ways than `Create`.
/// @param collation  for texts on a server, as "utf8mb4_nopad_bin".
/// @param dbName     on a server the first statements make and choose it; empty leaves them out.
std::vector<std::string> statementsFor(dbaccess::Engine engine, const std::string& collation,
                                       const std::string& dbName);

/// Puts in front of the last error what it is about, and the right that it takes when that was
/// missing; this goes to the log too. @return  the negated error number.
int failed(const std::string& dbName, std::string what, const char* right);

}  // namespace schema

#endif
