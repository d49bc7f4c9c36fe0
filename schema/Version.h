#ifndef DBSERVICE_SCHEMA_VERSION_H
#define DBSERVICE_SCHEMA_VERSION_H

#include <string>

#include "dbaccess/Engine.h"
#include "schema/Schema.h"
#include "schema/Tables.h"

namespace schema {

/// Where a database says which libraries made its tables, a row for each version that it has had.
/// None of `tables()`: the service works without it. Its columns are the same in all versions, so
/// that every library can read them.
const Table& versionTable();

/// What this library records of its tables, now.
RecordedVersion ownVersion(dbaccess::Engine engine);

/// Whether it is what this library records, whoever did.
bool isOwn(const RecordedVersion& recorded, dbaccess::Engine engine);

/// Whether a library made the database that knows more than this one.
bool isNewer(const RecordedVersion& recorded);

/// As "version 2 of library 1.1.0".
std::string describe(const RecordedVersion& recorded);

/// The statement that records it, which may be run again.
std::string recording(const RecordedVersion& version);

}  // namespace schema

#endif
