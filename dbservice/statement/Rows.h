#ifndef DBSERVICE_STATEMENT_ROWS_H
#define DBSERVICE_STATEMENT_ROWS_H

#include <string>
#include <string_view>

#include "dbservice/statement/NextId.h"
#include "dbservice/statement/Text.h"

// The rows of a batch, as they stand behind "values": for each record what appendRow(rows, record)
// appends, joined by ",". Where an insert writes an Id and the replace does not, one appendRow
// leaves the row open for both, and the end is given beside it.

namespace dbservice::statement {

template <class Range, class AppendRow>
std::string rowsOf(const Range& records, AppendRow appendRow, std::string_view end = "") {
    std::string rows;
    for (const auto& record : records) {
        separate(rows, ",");
        appendRow(rows, record);
        rows += end;
    }
    return rows;
}

/// The same with a number for each row in its end, as ", {})".
template <class Range, class AppendRow>
std::string rowsOf(const Range& records, AppendRow appendRow, std::string_view end,
                   IdSequence& ids) {
    return rowsOf(records, [&](std::string& rows, const auto& record) {
        appendRow(rows, record);
        append(rows, end, ids.next());
    });
}

}  // namespace dbservice::statement

#endif
