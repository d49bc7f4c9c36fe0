#ifndef DBSERVICE_DBACCESS_ERROR_ERRORNUMBER_H
#define DBSERVICE_DBACCESS_ERROR_ERRORNUMBER_H

#include "dbaccess/LastError.h"

namespace dbaccess {

/// The MySQL error numbers that the layer itself gives or judges by.
enum ErrorNumber : int {
    kDatabaseExists = 1007,
    kCannotOpenFile = 1016,
    kRecordChanged = 1020,
    kErrorOnRead = 1024,
    kErrorOnWrite = 1026,
    kNotDatabaseFile = 1033,
    kReadOnlyFile = 1036,
    kOutOfMemory = 1037,
    kTooManyConnections = 1040,
    kDatabaseAccessDenied = 1044,
    kAccessDenied = 1045,  // wrong account or password
    kNoDatabaseSelected = 1046,
    kUnknownClusterState = 1047,
    kColumnCannotBeNull = 1048,
    kUnknownDatabase = 1049,
    kTableExists = 1050,
    kAmbiguousColumn = 1052,
    kServerShutdown = 1053,
    kUnknownColumn = 1054,
    kDuplicateIndexName = 1061,
    kDuplicateKey = 1062,
    kSyntaxError = 1064,
    kEmptyQuery = 1065,
    kWrongDatabaseName = 1102,
    kUnknownError = 1105,
    kTableFull = 1114,
    kHostNotAllowed = 1130,
    kValueCountMismatch = 1136,
    kTableAccessDenied = 1142,
    kNoSuchTable = 1146,
    kConnectionAborted = 1152,
    kPacketTooLarge = 1153,
    kNetworkReadError = 1158,  // the server's, as the next three
    kNetworkReadTimeout = 1159,
    kNetworkWriteError = 1160,
    kNetworkWriteTimeout = 1161,
    kErrorDuringCommit = 1180,
    kNewConnectionAborted = 1184,
    kUnknownVariable = 1193,
    kDamagedFile = 1194,
    kTooManyUserConnections = 1203,
    kLockWaitTimeout = 1205,
    kDeadlock = 1213,
    kColumnCountMismatch = 1222,
    kUserLimitReached = 1226,
    kNotSupported = 1235,
    kUnknownPrepared = 1243,  // as behind a proxy that changed the session
    kOutOfRange = 1264,
    kOptionPreventsStatement = 1290,  // as read_only does
    kNotPreparable = 1295,
    kInvalidUtf8 = 1300,
    kNoSuchFunction = 1305,
    kNoDefaultValue = 1364,
    kIncorrectValue = 1366,
    kTooManyPlaces = 1390,
    kDataTooLong = 1406,
    kTooManyPrepared = 1461,
    kNeedsPreparing = 1615,
    kAccessDeniedWithoutPassword = 1698,
    kReadOnlyTransaction = 1792,
    kPasswordMustChange = 1820,
    kReadOnlyMode = 1836,  // of a server that is being upgraded
    kPasswordExpired = 1862,
    kConnectionKilled = 1927,
    kStatementTimeout = 1969,
    kCannotConnect = 2002,
    kUnknownHost = 2005,
    kServerGone = 2006,
    kServerLost = 2013,
    kTlsError = 2026,
    kMalformedPacket = 2027,
    kIllFormedSetting = 2034,  // the client's for a parameter that is wrong
    kUnsafeLogin = 2061,       // the client's for a failed authentication plugin
    kAccountLocked = 3118,
    kTlsWanted = 3159,
    kCapacityExceeded = 3170,
    kIdleTooLong = 4031,
    kAccountBlocked = 4151,
    kNoArrayBinding = 5003,  // the client's, before it sends anything
};

/// Whether the client library gives this number, not the server: about the way to it.
constexpr bool isClientError(int number) {
    return (number >= 2000 && number < 3000) || (number >= 5000 && number < 6000);
}

/// Whether a server refuses the login with this, which another one of a list would refuse too.
bool isLoginRefusal(int number);

/// Whether a server takes no more connections, or no more of this account.
bool isTooManyConnections(int number);

/// The SQLSTATE that MySQL gives with a number; "HY000" for those that have none of their own.
const char* sqlStateOf(int number);

inline Error makeError(int number, std::string message) {
    return Error{number, sqlStateOf(number), std::move(message)};
}

}  // namespace dbaccess

#endif
