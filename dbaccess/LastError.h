#ifndef DBSERVICE_DBACCESS_LASTERROR_H
#define DBSERVICE_DBACCESS_LASTERROR_H

#include <string>

#include "base/Export.h"

namespace dbaccess {

/// Why a statement failed. The numbers and SQLSTATEs are MySQL's on every engine.
struct Error {
    int number = 0;        ///< MySQL error number, as 1062 for a duplicate key; 0: no error.
    std::string sqlState;  ///< Five characters, as "23000"; empty without an error.
    std::string message;   ///< The engine's own words. May quote values of the statement.

    /// Whether there is one.
    explicit operator bool() const { return number != 0; }
};

/// What became of the calling thread's last operation on any `DataAccess` or `DBService`: `number`
/// is 0 after a success. An operation that returned -N left N here. 1 when an operation of
/// `DBService` sent no statement, as it was given no records, is not connected, or was called
/// behind `Cleanup`. Releases leave it.
/// Ownership / threads: each thread has its own; the reference holds for the thread's lifetime and
/// the content changes with its next operation.
DBSERVICE_API const Error& LastError() noexcept;

/// Makes it the calling thread's last error, for layers on top that answer by themselves.
DBSERVICE_API void SetLastError(const Error& error);

}  // namespace dbaccess

#endif
