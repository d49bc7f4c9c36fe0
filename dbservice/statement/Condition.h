#ifndef DBSERVICE_STATEMENT_CONDITION_H
#define DBSERVICE_STATEMENT_CONDITION_H

#include <string>
#include <string_view>

#include "dbservice/statement/Records.h"
#include "dbservice/statement/Text.h"

// A condition is a text that starts empty and grows clause by clause; each clause begins with its
// own blank, as " Guid='{}'". Two rules for empty keys: where a name says "given", an empty key has
// no clause; else it is a key like any other.

namespace dbservice::statement {

/// Adds the clause of a key, after " and" when there is a clause already; nothing for an empty key.
inline void andGivenKey(std::string& condition, std::string_view clause, const std::string& key) {
    if (key.empty()) return;
    separate(condition, " and");
    append(condition, clause, key);
}

/// Adds the clause of a key, after " or" when there is a clause already. The " or" comes before the
/// look at the key: an empty key behind another one leaves it dangling, which the database refuses.
inline void orGivenKey(std::string& condition, std::string_view clause, const std::string& key) {
    separate(condition, " or");
    if (!key.empty()) append(condition, clause, key);
}

/// The records' clauses by `orGivenKey`.
template <class Range, class Record>
std::string anyGivenKey(const Range& records, std::string_view clause, std::string Record::*key) {
    std::string condition;
    for (const Record& record : records)
        orGivenKey(condition, clause, record.*key);
    return condition;
}

/// The clause of each record, joined by " or"; an empty key has one too.
template <class Record>
std::string anyKey(const Records<Record>& records, std::string_view clause,
                   std::string Record::*key) {
    std::string condition;
    for (const Record& record : records) {
        separate(condition, " or");
        append(condition, clause, record.*key);
    }
    return condition;
}

/// " where" and the condition; nothing when the condition is empty, so that every row is meant.
inline std::string where(const std::string& condition) {
    return condition.empty() ? std::string() : " where" + condition;
}

}  // namespace dbservice::statement

#endif
