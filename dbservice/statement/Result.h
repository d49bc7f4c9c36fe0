#ifndef DBSERVICE_STATEMENT_RESULT_H
#define DBSERVICE_STATEMENT_RESULT_H

#include <cstdint>
#include <type_traits>

namespace dbservice::statement {

/// What an operation answers that sends no statement because it cannot: -1, null or false, by what
/// it returns. LastError tells it from an answer of the database, see `noRecords` and `noDao`.
class NotSent {
public:
    template <class Answer>
    operator Answer() const {  // deliberately implicit: it stands where the answer does
        if constexpr (std::is_pointer_v<Answer>) return nullptr;
        if constexpr (std::is_same_v<Answer, bool>) return false;
        if constexpr (std::is_integral_v<Answer>) return -1;
    }
};

/// The operation was given no records to work on, or none that it is for. Sets LastError.
NotSent noRecords();

/// There is no object that the operation goes on to: none of them in a service made by hand or
/// behind Cleanup, those of the resource tree never. Sets LastError; logs when there is no service.
NotSent noDao();

/// 0, of an operation that succeeds without a statement. Clears LastError.
int nothingToDo();

/// What an insert or update answers to the access layer's result: 0 for success, else the negated
/// error number. Counts of rows become 0. Only the low 32 bits are looked at.
inline int zeroOrError(std::int64_t result) {
    const auto low = static_cast<std::int32_t>(static_cast<std::uint32_t>(result));
    return low < 0 ? low : 0;
}

}  // namespace dbservice::statement

#endif
