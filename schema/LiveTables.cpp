#include "schema/LiveTables.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "dbaccess/ResultSet.h"
#include "dbaccess/reader/LetterCase.h"
#include "schema/Text.h"

namespace schema {
namespace {

using dbaccess::DataAccess;
using dbaccess::lowered;
using dbaccess::ResultSet;

template <typename Use>
int forEachRow(DataAccess& access, const std::string& dbName, const std::string& statement,
               Use use) {
    const std::unique_ptr<ResultSet, decltype(&DataAccess::ReleaseResulitSet)> rows(
        access.Query(dbName, statement), &DataAccess::ReleaseResulitSet);
    if (!rows) return -dbaccess::LastError().number;
    while (rows->next())
        use(*rows);
    return 0;
}

/// Empty when the column is NULL.
std::string textOf(ResultSet& row, const char* column) {
    std::string text;
    row.getString(column, text);
    return text;
}

// A server describes its tables in information_schema.

/// The type without the width for display, which says nothing and which newer servers leave out.
std::string typeOf(ResultSet& row) {
    std::string type = lowered(textOf(row, "COLUMN_TYPE"));
    const std::size_t integer = type.find("int(");
    if (integer == std::string::npos) return type;
    const std::size_t open = integer + 3;
    return type.erase(open, type.find(')', open) + 1 - open);
}

std::string serverDefinition(ResultSet& row) {
    std::string definition = typeOf(row);
    const std::string collation = textOf(row, "COLLATION_NAME");
    const std::string preset = textOf(row, "COLUMN_DEFAULT");
    if (!collation.empty()) definition += " collate " + collation;
    if (textOf(row, "IS_NULLABLE") == "NO") definition += " not null";
    if (!preset.empty() && preset != "NULL") definition += " default " + preset;
    if (lowered(textOf(row, "EXTRA")).find("auto_increment") != std::string::npos)
        definition += " auto_increment";
    return definition;
}

void addServerColumn(ResultSet& row, LiveTable& table) {
    table.columns[lowered(textOf(row, "COLUMN_NAME"))] = serverDefinition(row);
}

void addServerIndexColumn(ResultSet& row, LiveTable& table) {
    const std::string name = textOf(row, "INDEX_NAME");
    LiveIndex& index = table.indexes[name];
    index.unique = row.getUInt("NON_UNIQUE") == 0;
    if (!index.columns.empty()) index.columns += ',';
    index.columns += lowered(textOf(row, "COLUMN_NAME"));
    const std::string part = textOf(row, "SUB_PART");
    if (!part.empty()) index.columns += "(" + part + ")";
    if (name == "PRIMARY") table.primaryKey = index.columns;
}

int readServerTables(DataAccess& access, const std::string& dbName, LiveTables& live) {
    // A table that another program makes meanwhile is as good as not there yet.
    const auto ofKnownTable = [&](ResultSet& row, auto use) {
        const auto found = live.tables.find(live.keyOf(textOf(row, "TABLE_NAME")));
        if (found != live.tables.end()) use(row, found->second);
    };
    int result = forEachRow(access, dbName,
                            "select TABLE_NAME, ENGINE, @@lower_case_table_names as Folds "
                            "from information_schema.TABLES where TABLE_SCHEMA=database()",
                            [&](ResultSet& row) {
                                live.caseMatters = row.getUInt("Folds") == 0;
                                live.tables[live.keyOf(textOf(row, "TABLE_NAME"))].storage =
                                    textOf(row, "ENGINE");
                            });
    if (result != 0) return result;
    result = forEachRow(
        access, dbName,
        "select TABLE_NAME, COLUMN_NAME, COLUMN_TYPE, COLLATION_NAME, IS_NULLABLE, COLUMN_DEFAULT, "
        "EXTRA from information_schema.COLUMNS where TABLE_SCHEMA=database()",
        [&](ResultSet& row) { ofKnownTable(row, addServerColumn); });
    if (result != 0) return result;
    return forEachRow(access, dbName,
                      "select TABLE_NAME, INDEX_NAME, NON_UNIQUE, COLUMN_NAME, SUB_PART "
                      "from information_schema.STATISTICS where TABLE_SCHEMA=database() "
                      "order by SEQ_IN_INDEX",
                      [&](ResultSet& row) { ofKnownTable(row, addServerIndexColumn); });
}

// A SQLite file keeps the statements that made it, which say more than its pragmas: the checks.

struct Parts {
    std::string before;
    std::string inside;  // of the outermost parentheses
    std::string after;
};

Parts partsOf(const std::string& text) {
    const std::size_t open = text.find('(');
    const std::size_t close = text.rfind(')');
    if (open == std::string::npos || close == std::string::npos || close < open)
        return {text, {}, {}};
    return {text.substr(0, open), text.substr(open + 1, close - open - 1), text.substr(close + 1)};
}

/// A column, or the primary key of the table.
void addEmbeddedPiece(const std::string& piece, LiveTable& table) {
    if (plain(piece).rfind("primarykey(", 0) == 0) {
        table.primaryKey = plain(partsOf(piece).inside);
        return;
    }
    const std::size_t nameEnd = piece.find(' ');
    const std::string name = plain(piece.substr(0, nameEnd));
    std::string definition = nameEnd == std::string::npos ? "" : piece.substr(nameEnd + 1);
    if (plain(definition).find("primarykey") != std::string::npos) table.primaryKey = name;
    table.columns[name] = std::move(definition);
}

void addEmbedded(ResultSet& row, LiveTables& live) {
    const std::string type = textOf(row, "type");
    const std::string sql = oneLine(textOf(row, "sql"));
    LiveTable& table = live.tables[live.keyOf(textOf(row, "tbl_name"))];
    const Parts parts = partsOf(sql);
    if (type == "table") {
        table.storage = trimmed(parts.after);
        for (const std::string& piece : split(parts.inside))
            addEmbeddedPiece(piece, table);
    } else if (type == "index" && parts.after.empty()) {
        table.indexes[textOf(row, "name")] = {plain(parts.inside),
                                              plain(parts.before).rfind("createunique", 0) == 0};
    } else if (type == "trigger") {
        table.triggers.insert(plain(sql).substr(std::string_view("createtrigger").size()));
    }
}

}  // namespace

bool LiveTable::has(const Index& index) const {
    const std::string wanted = plain(index.columns);
    return std::any_of(indexes.begin(), indexes.end(), [&](const auto& named) {
        const LiveIndex& live = named.second;
        if (index.unique) return live.unique && live.columns == wanted;
        return (live.columns + ",").rfind(wanted + ",", 0) == 0;
    });
}

std::string LiveTables::keyOf(const std::string& name) const {
    return caseMatters ? name : lowered(name);
}

const LiveTable* LiveTables::find(const std::string& name) const {
    const auto found = tables.find(keyOf(name));
    return found == tables.end() ? nullptr : &found->second;
}

int readIsThere(DataAccess& access, const std::string& dbName, bool& isThere) {
    isThere = false;
    if (access.engine() == dbaccess::Engine::Embedded) return 0;
    return forEachRow(access, "",
                      "select SCHEMA_NAME, @@lower_case_table_names as Folds "
                      "from information_schema.SCHEMATA",
                      [&](ResultSet& row) {
                          const std::string name = textOf(row, "SCHEMA_NAME");
                          const bool folds = row.getUInt("Folds") != 0;
                          if (folds ? lowered(name) == lowered(dbName) : name == dbName)
                              isThere = true;
                      });
}

int readLiveTables(DataAccess& access, const std::string& dbName, LiveTables& live) {
    if (access.engine() == dbaccess::Engine::Server) return readServerTables(access, dbName, live);
    return forEachRow(access, dbName, "select type, tbl_name, name, sql from sqlite_master",
                      [&](ResultSet& row) { addEmbedded(row, live); });
}

int readRecordedVersion(DataAccess& access, const std::string& dbName, const LiveTables& live,
                        RecordedVersion& recorded) {
    recorded = {};
    const std::string table = versionTable().name;
    if (live.find(table) == nullptr) return 0;
    return forEachRow(
        access, dbName,
        "select Version, Checksum, MadeBy, MadeAt from " + table + " order by Version desc limit 1",
        [&](ResultSet& row) {
            row.getInt("Version", &recorded.version);
            row.getString("Checksum", recorded.checksum);
            row.getString("MadeBy", recorded.library);
            row.getString("MadeAt", recorded.time);
        });
}

int readTextCollation(DataAccess& access, std::string& collation) {
    if (access.engine() == dbaccess::Engine::Embedded) return 0;
    // MariaDB has the one and MySQL the other. A server that has neither is to say so itself.
    collation = "utf8mb4_nopad_bin";
    return forEachRow(access, "",
                      "select COLLATION_NAME from information_schema.COLLATIONS where "
                      "COLLATION_NAME in ('utf8mb4_nopad_bin','utf8mb4_0900_bin') "
                      "order by COLLATION_NAME",
                      [&](ResultSet& row) { collation = textOf(row, "COLLATION_NAME"); });
}

}  // namespace schema
