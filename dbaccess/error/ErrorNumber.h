#ifndef DBSERVICE_DBACCESS_ERROR_ERRORNUMBER_H
#define DBSERVICE_DBACCESS_ERROR_ERRORNUMBER_H

#include "dbaccess/LastError.h"

namespace dbaccess {

/// The MySQL error numbers that the layer itself gives or judges by.
enum ErrorNumber : int {
    kDatabaseExists = 1007,
    kCannotOpenFile = 1016,
    kErrorOnRead = 1024,
    kErrorOnWrite = 1026,
    kNotDatabaseFile = 1033,
    kReadOnlyFile = 1036,
    kOutOfMemory = 1037,
    kTooManyConnections = 1040,
    kNoDatabaseSelected = 1046,
    kUnknownClusterState = 1047,
    kColumnCannotBeNull = 1048,
    kUnknownDatabase = 1049,
    kTableExists = 1050,
    kAmbiguousColumn = 1052,
    kUnknownColumn = 1054,
    kDuplicateKey = 1062,
    kSyntaxError = 1064,
    kEmptyQuery = 1065,
    kWrongDatabaseName = 1102,
    kUnknownError = 1105,
    kTableFull = 1114,
    kValueCountMismatch = 1136,
    kNoSuchTable = 1146,
    kPacketTooLarge = 1153,
    kDamagedFile = 1194,
    kLockWaitTimeout = 1205,
    kDeadlock = 1213,
    kColumnCountMismatch = 1222,
    kNotSupported = 1235,
    kOutOfRange = 1264,
    kInvalidUtf8 = 1300,
    kNoSuchFunction = 1305,
    kNoDefaultValue = 1364,
    kIncorrectValue = 1366,
    kDataTooLong = 1406,
    kStatementTimeout = 1969,
    kCannotConnect = 2002,
    kUnknownHost = 2005,
    kServerGone = 2006,
    kServerLost = 2013,
    kTlsError = 2026,
};

/// The SQLSTATE that MySQL gives with a number; "HY000" for those that have none of their own.
const char* sqlStateOf(int number);

inline Error makeError(int number, std::string message) {
    return Error{number, sqlStateOf(number), std::move(message)};
}

}  // namespace dbaccess

#endif
