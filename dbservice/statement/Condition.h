#ifndef DBSERVICE_STATEMENT_CONDITION_H
#define DBSERVICE_STATEMENT_CONDITION_H

#include <cstdint>
#include <string>
#include <string_view>

#include "dbservice/statement/Records.h"
#include "dbservice/statement/Text.h"

// A condition is a text that starts empty and grows clause by clause; each clause begins with its
// own blank, as " Guid='{}'".

namespace dbservice::statement {

/// Adds the clause of a key, after " and" when there is a clause already. An empty key adds
/// nothing.
inline void andKey(std::string& condition, std::string_view clause, const std::string& key) {
    if (key.empty()) return;
    separate(condition, " and");
    append(condition, clause, key);
}

/// Adds the clause of a key, after " or" when there is a clause already. The " or" comes before the
/// look at the key: an empty key behind another one leaves it dangling, which the database refuses.
inline void orKey(std::string& condition, std::string_view clause, const std::string& key) {
    separate(condition, " or");
    if (!key.empty()) append(condition, clause, key);
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

/// The same by `orKey`: an empty key has no clause.
template <class Record>
std::string anyKeyed(const Records<Record>& records, std::string_view clause,
                     std::string Record::*key) {
    std::string condition;
    for (const Record& record : records)
        orKey(condition, clause, record.*key);
    return condition;
}

/// " where" and the condition; nothing when the condition is empty, so that every row is meant.
inline std::string where(const std::string& condition) {
    return condition.empty() ? std::string() : " where" + condition;
}

/// The where clause for a time range without its ends; 0 leaves an end open. Times are written
/// signed, so that those from 2^31 on are negative.
inline std::string between(std::uint32_t beginTime, std::uint32_t endTime) {
    std::string clause;
    if (beginTime != 0) append(clause, " where addTime>{}", static_cast<std::int32_t>(beginTime));
    if (endTime != 0) {
        clause += clause.empty() ? " where " : " and ";
        append(clause, "addTime<{}", static_cast<std::int32_t>(endTime));
    }
    return clause;
}

}  // namespace dbservice::statement

#endif
