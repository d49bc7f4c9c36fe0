#include "schema/Schema.h"

#include <algorithm>

#include "dbaccess/DataAccess.h"
#include "dbaccess/error/ErrorNumber.h"
#include "schema/Dialect.h"
#include "schema/LiveTables.h"
#include "schema/Steps.h"
#include "schema/Tables.h"
#include "schema/Text.h"
#include "schema/Version.h"

namespace schema {
namespace {

using dbaccess::DataAccess;

/// The embedded engine cannot tell whether a database is there, but leaves the file alone that is.
/// @return  0, or the negated error number.
int createDatabase(DataAccess& access, const std::string& dbName) {
    bool found = false;
    std::string collation;
    int result = readIsThere(access, dbName, found);
    if (result != 0 || found) return result;
    result = readTextCollation(access, collation);
    if (result != 0) return result;
    const std::string statement = Dialect(access.engine(), collation).createDatabase(dbName);
    return access.Execute("", statement) < 0 ? failed(dbName, "create database", "CREATE") : 0;
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
            if (live.has(index)) continue;
            note("", std::string(index.unique ? "unique index" : "index") + " on (" +
                         index.columns + ") is missing");
        }
        const std::string trigger = dialect_.triggerOf(table_);
        if (!trigger.empty() && live.triggers.count(plain(trigger)) == 0)
            note("", "the trigger that numbers Id is missing or another one");
    }

    void noteMissing() { note("", "table is missing"); }
    void noteUnseen() {
        note("", "cannot be seen with this account, which lacks the right SELECT");
    }

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

/// Tells what is missing from what the account has no right to see: a server shows either as
/// little.
class Sight {
public:
    Sight(DataAccess& access, const std::string& dbName)
        : access_(access), dbName_(dbName), whole_(access.engine() == dbaccess::Engine::Embedded) {}

    bool covers(const Table& table, const LiveTable* live) {
        if (whole_ || (live != nullptr && hasAllColumns(table, *live))) return true;
        DataAccess::ReleaseResulitSet(
            access_.Query(dbName_, std::string("select * from ") + table.name + " limit 0"));
        const int error = dbaccess::LastError().number;
        // An account that may not read all tables is not told that there is none of this name.
        whole_ = error == dbaccess::kNoSuchTable;
        return error != dbaccess::kTableAccessDenied;
    }

private:
    static bool hasAllColumns(const Table& table, const LiveTable& live) {
        const std::vector<Column> columns = columnsOf(table);
        return std::all_of(columns.begin(), columns.end(), [&](const Column& column) {
            return live.columns.count(plain(column.name)) != 0;
        });
    }

    DataAccess& access_;
    const std::string& dbName_;
    bool whole_;
};

/// Nothing, or the difference.
std::string compareVersion(const RecordedVersion& recorded, const RecordedVersion& own) {
    const std::string expected = ", expected version " + std::to_string(own.version);
    if (recorded.version == 0) return {};
    if (isNewer(recorded)) return "is newer than this library: " + describe(recorded) + expected;
    if (recorded.version < own.version) return "is " + describe(recorded) + expected;
    if (recorded.checksum == own.checksum) return {};
    return "is " + describe(recorded) + " with other tables, checksum " + recorded.checksum +
           ", expected " + own.checksum;
}

}  // namespace

int Create(DataAccess& access, const std::string& dbName) {
    std::vector<Step> steps;
    int result = createDatabase(access, dbName);
    if (result == 0) result = readMissing(access, dbName, steps);
    for (const Step& step : steps) {
        if (access.Execute(dbName, step.statement) >= 0) continue;
        const bool isThere = dbaccess::LastError().number == dbaccess::kDuplicateIndexName;
        if (!isThere) return failed(dbName, step.what, step.right);
        dbaccess::SetLastError({});  // another program was faster
    }
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
    Sight sight(access, dbName);
    for (const Table& table : tables()) {
        Comparison comparison(dialect, table, differences);
        const LiveTable* found = live.find(table.name);
        if (!sight.covers(table, found)) {
            comparison.noteUnseen();
        } else if (found == nullptr) {
            comparison.noteMissing();
        } else {
            comparison.compareWith(*found);
        }
    }
    RecordedVersion recorded;
    result = readRecordedVersion(access, dbName, live, recorded);
    if (result == -dbaccess::kTableAccessDenied) {
        Comparison(dialect, versionTable(), differences).noteUnseen();
    } else if (result != 0) {
        return result;
    }
    const std::string difference = compareVersion(recorded, ownVersion(access.engine()));
    if (!difference.empty()) differences.push_back(versionTable().name + (": " + difference));
    dbaccess::SetLastError({});
    return static_cast<int>(differences.size());
}

int ReadVersion(DataAccess& access, const std::string& dbName, RecordedVersion& recorded) {
    recorded = {};
    if (dbName.empty()) return -dbaccess::kNoDatabaseSelected;
    LiveTables live;
    const int result = readLiveTables(access, dbName, live);
    return result == 0 ? readRecordedVersion(access, dbName, live, recorded) : result;
}

}  // namespace schema
