#ifndef DBSERVICECTL_ROWS_H
#define DBSERVICECTL_ROWS_H

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "dbaccess/DataAccess.h"
#include "schema/Tables.h"
#include "tools/dbservicectl/Output.h"

namespace dbservicectl {

/// Runs a query and hands over each of its rows: the values of the columns, in their order. Throws
/// a Failure, without the database's message, which may quote stored texts.
void forEachRow(dbaccess::DataAccess& access, const std::string& dbName,
                const std::string& statement, const std::vector<Column>& columns,
                const std::function<void(std::vector<Cell>)>& take);

/// The single value of a query; none without a row, and for NULL.
Cell valueOf(dbaccess::DataAccess& access, const std::string& dbName, const std::string& expression,
             const std::string& from = "");

/// Appends statements that together delete all rows of a table, each so few of them that it ends
/// far within any time limit.
void appendDeletions(dbaccess::DataAccess& access, const std::string& dbName,
                     const schema::Table& table, std::deque<std::string>& statements);

}  // namespace dbservicectl

#endif
