#ifndef DBSERVICE_STATEMENT_CONDITION_H
#define DBSERVICE_STATEMENT_CONDITION_H

#include <string>
#include <string_view>

#include "dbservice/statement/Records.h"
#include "dbservice/statement/Text.h"

// A condition is a text that starts empty and grows clause by clause; each clause begins with its
// own blank, as " Guid='{}'".

namespace dbservice::statement {

/// Adds the clause of a key, after " and" when there is a clause already. An empty key adds nothing.
inline void andKey(std::string& condition, std::string_view clause, const std::string& key) {
    if (key.empty()) return;
    separate(condition, " and");
    append(condition, clause, key);
}

/// The clause for the key of each record, joined by " or"; an empty key is a key like any other.
template <class Record>
std::string anyOf(const Records<Record>& records, std::string_view clause,
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
