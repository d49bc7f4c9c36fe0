#include "schema/Schema.h"

#include <algorithm>

#include "dbaccess/DataAccess.h"
#include "dbaccess/error/ErrorNumber.h"
#include "schema/Dialect.h"
#include "schema/LiveTables.h"
#include "schema/Tables.h"
#include "schema/Text.h"

namespace schema {
namespace {

using dbaccess::DataAccess;

/// @return  0, or the negated error number.
int execute(DataAccess& access, const std::string& dbName, const std::string& statement) {
    return std::min(access.Execute(dbName, statement), 0);
}

int createTables(DataAccess& access, const std::string& dbName, const Dialect& dialect) {
    int result = 0;
    for (const Table& table : tables()) {
        const std::string trigger = dialect.triggerOf(table);
        if (result == 0) result = execute(access, dbName, dialect.createTable(table));
        if (result == 0 && !trigger.empty())
            result = execute(access, dbName, "create trigger if not exists " + trigger);
    }
    return result;
}

/// An index serves as well under any name, and with further columns behind those asked for unless
/// it keeps values from coming twice.
bool isThere(const Index& index, const LiveTable& table) {
    const std::string columns = plain(index.columns);
    return std::any_of(table.indexes.begin(), table.indexes.end(), [&](const auto& named) {
        const LiveIndex& live = named.second;
        if (index.unique) return live.unique && live.columns == columns;
        return (live.columns + ",").rfind(columns + ",", 0) == 0;
    });
}

int createMissingIndexes(DataAccess& access, const std::string& dbName, const Dialect& dialect) {
    LiveTables live;
    int result = readLiveTables(access, dbName, live);
    for (const Table& table : tables()) {
        const LiveTable* found = live.find(table.name);
        for (const Index& index : table.indexes) {
            if (result != 0) return result;
            if (found == nullptr || isThere(index, *found)) continue;
            result = execute(access, dbName, dialect.createIndex(table, index));
            if (result == -dbaccess::kDuplicateIndexName) result = 0;  // another program was faster
        }
    }
    return result;
}

/// Writes down what of one table is other than expected.
class Comparison {
public:
    Comparison(const Dialect& dialect, const Table& table, std::vector<std::string>& differences)
        : dialect_(dialect), table_(table), differences_(differences) {}

    void compareWith(const LiveTable& live) {
        expectSame("", "stored as", live.storage, dialect_.storageOf(table_));
        for (const Column& column : columnsOf(table_))
            compareColumn(column, live);
        expectSame("", "primary key is", live.primaryKey, table_.primaryKey);
        for (const Index& index : table_.indexes) {
            if (isThere(index, live)) continue;
            note("", std::string(index.unique ? "unique index" : "index") + " on (" +
                         index.columns + ") is missing");
        }
        const std::string trigger = dialect_.triggerOf(table_);
        if (!trigger.empty() && live.triggers.count(plain(trigger)) == 0)
            note("", "the trigger that numbers Id is missing or another one");
    }

    void noteMissing() { note("", "table is missing"); }

private:
    void compareColumn(const Column& column, const LiveTable& live) {
        const auto found = live.columns.find(plain(column.name));
        if (found == live.columns.end()) return note(column.name, "column is missing");
        expectSame(column.name, "is", found->second, dialect_.definitionOf(column));
    }

    void expectSame(const std::string& column, const std::string& what, const std::string& live,
                    const std::string& expected) {
        if (plain(live) == plain(expected)) return;
        note(column, what + " " + (live.empty() ? "nothing" : live) + ", expected " + expected);
    }

    void note(const std::string& column, const std::string& difference) {
        differences_.push_back(table_.name + (column.empty() ? "" : "." + column) + ": " +
                               difference);
    }

    const Dialect& dialect_;
    const Table& table_;
    std::vector<std::string>& differences_;
};

}  // namespace

int Create(DataAccess& access, const std::string& dbName) {
    std::string collation;
    int result = readTextCollation(access, collation);
    const Dialect dialect(access.engine(), collation);
    if (result == 0) result = execute(access, "", dialect.createDatabase(dbName));
    if (result == 0) result = createTables(access, dbName, dialect);
    if (result == 0) result = createMissingIndexes(access, dbName, dialect);
    return result;
}

int Check(DataAccess& access, const std::string& dbName, std::vector<std::string>& differences) {
    differences.clear();
    // Without a name a server would look at the database that the connection used before.
    if (dbName.empty()) return -dbaccess::kNoDatabaseSelected;
    LiveTables live;
    std::string collation;
    int result = readLiveTables(access, dbName, live);
    if (result == 0) result = readTextCollation(access, collation);
    if (result != 0) return result;
    const Dialect dialect(access.engine(), collation);
    for (const Table& table : tables()) {
        Comparison comparison(dialect, table, differences);
        if (const LiveTable* found = live.find(table.name)) {
            comparison.compareWith(*found);
        } else {
            comparison.noteMissing();
        }
    }
    return static_cast<int>(differences.size());
}

}  // namespace schema
