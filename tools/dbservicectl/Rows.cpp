#include "tools/dbservicectl/Rows.h"

#include <memory>

#include "dbaccess/ResultSet.h"
#include "tools/dbservicectl/Failure.h"

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

}  // namespace dbservicectl
