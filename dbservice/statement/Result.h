#ifndef DBSERVICE_STATEMENT_RESULT_H
#define DBSERVICE_STATEMENT_RESULT_H

#include <cstdint>

namespace dbservice::statement {

/// What an operation answers that was given no records to work on.
constexpr int kNoRecords = -1;

/// What an operation of DBService answers without the object that it goes on to: all of them in a
/// service made by hand, those of the resource tree always.
constexpr int kNoDao = -1;

/// What an insert or update answers to the access layer's result: 0 for success, else the negated
/// error number. Counts of rows become 0. Only the low 32 bits are looked at.
inline int zeroOrError(std::int64_t result) {
    const auto low = static_cast<std::int32_t>(static_cast<std::uint32_t>(result));
    return low < 0 ? low : 0;
}

}  // namespace dbservice::statement

#endif
