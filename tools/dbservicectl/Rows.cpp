#include "tools/dbservicectl/Rows.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <utility>

#include "dbaccess/ResultSet.h"
#include "tools/dbservicectl/Failure.h"
#include "tools/dbservicectl/Inserts.h"

namespace dbservicectl {

void forEachRow(dbaccess::DataAccess& access, const std::string& dbName,
                const std::string& statement, const std::vector<Column>& columns,
                const std::function<void(std::vector<Cell>)>& take) {
    using dbaccess::DataAccess;
    const std::unique_ptr<dbaccess::ResultSet, decltype(&DataAccess::ReleaseResulitSet)> rows(
        access.Query(dbName, statement), &DataAccess::ReleaseResulitSet);
    if (!rows) throw failureOf(dbaccess::LastError(), "reading", Message::LeftOut);
    while (rows->next()) {
        std::vector<Cell> row;
        row.reserve(columns.size());
        for (const Column& column : columns) {
            std::string value;
            row.push_back(rows->getString(column.name, value) ? Cell(std::move(value)) : Cell());
        }
        take(std::move(row));
    }
}

Cell valueOf(dbaccess::DataAccess& access, const std::string& dbName, const std::string& expression,
             const std::string& from) {
    Cell value;
    forEachRow(access, dbName,
               "select " + expression + " as value" + (from.empty() ? "" : " from " + from),
               {{"value"}}, [&](std::vector<Cell> row) { value = std::move(row.front()); });
    return value;
}

void appendDeletions(dbaccess::DataAccess& access, const std::string& dbName,
                     const schema::Table& table, std::deque<std::string>& statements) {
    constexpr int kRows = 5000;
    const std::vector<schema::Column> columns = schema::columnsOf(table);
    const auto key = std::find_if(columns.begin(), columns.end(), [&](const auto& column) {
        return column.name == table.primaryKey;
    });
    // By ranges of keys: by a limit each would first pass over what those before it deleted.
    std::string range;
    while (const Cell last = valueOf(access, dbName, key->name,
                                     fmt::format("{}{} order by {} limit 1 offset {}", table.name,
                                                 range, key->name, kRows - 1))) {
        const std::string literal = literalOf(key->type, last);
        statements.push_back(fmt::format("delete from {}{} {} {}<={}", table.name, range,
                                         range.empty() ? "where" : "and", key->name, literal));
        range = fmt::format(" where {}>{}", key->name, literal);
    }
    statements.push_back(fmt::format("delete from {}{}", table.name, range));
}

}  // namespace dbservicectl
