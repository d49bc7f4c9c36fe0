#ifndef DBSERVICE_STATEMENT_NEXTID_H
#define DBSERVICE_STATEMENT_NEXTID_H

#include <cstdint>
#include <string>

#include "dbservice/statement/ReadRows.h"
#include "dbservice/statement/Text.h"

namespace dbservice::statement {

/// The largest Id of a table; 0 for an empty table and when it cannot be read.
/// Two callers at once may read the same number: nothing is locked.
inline std::uint32_t largestId(dbaccess::DataAccess& access, const std::string& dbName,
                               const char* table) {
    const RowsPtr rows(access.Query(dbName, compose("select max(Id) as Id from {}", table)));
    return rows && rows->rowsCount() != 0 && rows->next() ? rows->getUInt("Id") : 0;
}

/// Numbers for the Id column of new rows: one more than the largest so far, then counting up.
class IdSequence {
public:
    IdSequence(dbaccess::DataAccess& access, const std::string& dbName, const char* table)
        : last_(largestId(access, dbName, table)) {}

    /// Beyond the largest int32 the numbers go on from the smallest: they are written signed.
    std::int32_t next() { return static_cast<std::int32_t>(++last_); }

private:
    std::uint32_t last_;
};

}  // namespace dbservice::statement

#endif
