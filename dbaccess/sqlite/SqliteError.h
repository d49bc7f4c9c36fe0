#ifndef DBSERVICE_DBACCESS_SQLITE_SQLITEERROR_H
#define DBSERVICE_DBACCESS_SQLITE_SQLITEERROR_H

#include <string>
#include <string_view>

#include "dbaccess/LastError.h"

namespace dbaccess::sqlite {

/// The name of CHECK constraints that refuse a text for its length: failing one is a 1406. Any
/// other is taken to refuse a number for its size, which is a 1264.
constexpr const char* kTooLongCheck = "too_long";

/// A failure of SQLite in MySQL's numbers.
/// @param code       SQLite's extended result code.
/// @param message    SQLite's message; it tells apart what the code does not.
/// @param statement  the statement as the caller wrote it; empty if the failure is not one's own.
Error errorOf(int code, const std::string& message, std::string_view statement);

/// A failed system call on a database file or what belongs to it, in MySQL's numbers.
Error errorOfErrno(int failure, const std::string& subject);

/// Whether a failure leaves an open file that is better closed: the file is damaged or has moved,
/// it was opened for reading only, or its open descriptors are dead, as when its disk was gone for
/// a while.
bool spoilsFile(int code);

}  // namespace dbaccess::sqlite

#endif
