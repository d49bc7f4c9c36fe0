#ifndef DBSERVICE_SCHEMA_DIALECT_H
#define DBSERVICE_SCHEMA_DIALECT_H

#include <string>
#include <utility>

#include "dbaccess/DataAccess.h"
#include "schema/Tables.h"

namespace schema {

/// How an engine declares the tables: the statements that make them, and the pieces of those
/// statements in the form in which `readLiveTables` finds them again in a database.
class Dialect {
public:
    /// @param collation  of texts on a server: one that compares bytes and pads nothing.
    explicit Dialect(dbaccess::Engine engine, std::string collation = {})
        : engine_(engine), collation_(std::move(collation)) {}

    dbaccess::Engine engine() const { return engine_; }

    std::string createDatabase(const std::string& name) const;

    std::string createTable(const Table& table) const;
    /// Whether that makes the table's indexes, too.
    bool tablesHaveIndexes() const { return !isEmbedded(); }
    std::string createIndex(const Table& table, const Index& index) const;

    /// What numbers the rows of a table with a `NextId` where the engine cannot: all that stands
    /// behind CREATE TRIGGER. Empty without need.
    std::string triggerOf(const Table& table) const;

    /// What stands behind the column's name, as "varchar(255) collate utf8mb4_nopad_bin not null".
    std::string definitionOf(const Column& column) const;

    /// The table's storage, as "strict, without rowid".
    std::string storageOf(const Table& table) const;

private:
    std::string optionsOf(const Table& table) const;
    std::string serverDefinition(Type type) const;
    bool isEmbedded() const { return engine_ == dbaccess::Engine::Embedded; }

    dbaccess::Engine engine_;
    std::string collation_;
};

}  // namespace schema

#endif
