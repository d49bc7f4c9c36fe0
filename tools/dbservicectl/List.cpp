#include <fmt/format.h>

#include "dbaccess/EscapeText.h"
#include "tools/dbservicectl/Commands.h"
#include "tools/dbservicectl/Entities.h"
#include "tools/dbservicectl/Rows.h"

namespace dbservicectl {
void listRecords(Session& session, const ListOptions& options) {
    if (options.kinds) {
        for (const Entity& entity : entities())
            fmt::print("{}\n", entity.name);
        return;
    }
    const Entity& entity = entityOf(options.entity);
    const schema::Table& table = tableOf(entity);
    std::vector<Column> columns;
    std::string names;
    for (const schema::Column& column : schema::columnsOf(table)) {
        columns.push_back({column.name, isNumber(column.type)});
        // What is secret never leaves the database.
        names += (names.empty() ? "" : ",") +
                 (isSecret(column) ? "case when Password='' then '' else '***' end as Password"
                                   : column.name);
    }
    std::string statement = "select " + names + " from " + table.name;
    if (!options.key.empty())
        statement += " where " + std::string(table.primaryKey) + "='" +
                     dbaccess::EscapeText(options.key) + "'";
    statement += " order by " + std::string(table.primaryKey);
    if (options.limit > 0) statement += " limit " + std::to_string(options.limit);
    Output output = session.output(columns);
    forEachRow(session.access(), session.dbName(), statement, columns,
               [&](std::vector<Cell> row) { output.add(std::move(row)); });
    output.finish();
}

}  // namespace dbservicectl
