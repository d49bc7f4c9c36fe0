#include "schema/Steps.h"

#include "dbaccess/error/ErrorNumber.h"
#include "log/Log.h"
#include "schema/Text.h"
#include "schema/Version.h"

namespace schema {
namespace {

void addMissing(const Dialect& dialect, const Table& table, const LiveTable* live,
                std::vector<Step>& steps) {
    const std::string name = table.name;
    if (live == nullptr) {
        steps.push_back({dialect.createTable(table), "create table " + name, "CREATE"});
        if (dialect.tablesHaveIndexes()) return;
    }
    const std::string trigger = dialect.triggerOf(table);
    if (!trigger.empty() && (live == nullptr || live->triggers.count(plain(trigger)) == 0))
        steps.push_back(
            {"create trigger if not exists " + trigger, "create trigger on " + name, "TRIGGER"});
    for (const Index& index : table.indexes)
        if (live == nullptr || !live->has(index))
            steps.push_back(
                {dialect.createIndex(table, index), "create index on " + name, "INDEX"});
}

/// Last, so that a version that is recorded is there as a whole.
void addVersion(const Dialect& dialect, const LiveTables& live, std::vector<Step>& steps) {
    const Table& table = versionTable();
    addMissing(dialect, table, live.find(table.name), steps);
    steps.push_back({recording(ownVersion(dialect.engine())),
                     std::string("replace into ") + table.name, "INSERT and DELETE"});
}

/// Sets the last error when the account sees a table and not what is in it.
bool seesAll(const LiveTables& live, const Table& table) {
    const LiveTable* found = live.find(table.name);
    if (found == nullptr || !found->columns.empty()) return true;
    dbaccess::SetLastError(dbaccess::makeError(dbaccess::kTableAccessDenied,
                                               "its columns cannot be seen with this account"));
    return false;
}

}  // namespace

std::vector<Step> missingTables(const Dialect& dialect, const LiveTables& live) {
    std::vector<Step> steps;
    for (const Table& table : tables())
        addMissing(dialect, table, live.find(table.name), steps);
    return steps;
}

int readMissing(dbaccess::DataAccess& access, const std::string& dbName, std::vector<Step>& steps) {
    std::string collation;
    LiveTables live;
    RecordedVersion recorded;
    int result = readTextCollation(access, collation);
    if (result == 0) result = readLiveTables(access, dbName, live);
    if (result == 0) result = readRecordedVersion(access, dbName, live, recorded);
    if (result != 0) return failed(dbName, "reading the tables", "SELECT");
    if (isNewer(recorded)) {
        dbaccess::SetLastError(dbaccess::makeError(
            dbaccess::kNotSupported,
            "the tables of '" + dbName + "' are newer than this library: " + describe(recorded) +
                ", while this one knows version " + std::to_string(Version())));
        return -dbaccess::kNotSupported;
    }
    for (const Table& table : tables())
        if (!seesAll(live, table))
            return failed(dbName, std::string("reading ") + table.name, "SELECT");
    const Dialect dialect(access.engine(), collation);
    steps = missingTables(dialect, live);
    if (!isOwn(recorded, access.engine())) addVersion(dialect, live, steps);
    return 0;
}

std::vector<std::string> statementsFor(dbaccess::Engine engine, const std::string& collation,
                                       const std::string& dbName) {
    const Dialect dialect(engine, collation);
    std::vector<std::string> statements;
    if (engine == dbaccess::Engine::Server && !dbName.empty())
        statements = {dialect.createDatabase(dbName), "use `" + dbName + "`"};
    std::vector<Step> steps = missingTables(dialect, {});
    addVersion(dialect, {}, steps);
    for (Step& step : steps)
        statements.push_back(std::move(step.statement));
    return statements;
}

int failed(const std::string& dbName, std::string what, const char* right) {
    dbaccess::Error error = dbaccess::LastError();
    if (error.number == dbaccess::kDatabaseAccessDenied ||
        error.number == dbaccess::kTableAccessDenied) {
        what += " needs the right " + std::string(right) + " on '" + dbName + "'";
        Qz_Write_Log(kQzLogError, "Schema", what.c_str());
    }
    error.message = what + ": " + error.message;
    dbaccess::SetLastError(error);
    return -error.number;
}

}  // namespace schema
