#include "dbaccess/error/ErrorNumber.h"

namespace dbaccess {

bool isLoginRefusal(int number) {
    switch (number) {
        case kDatabaseAccessDenied:
        case kAccessDenied:
        case kUnknownDatabase:
        case kHostNotAllowed:
        case kUserLimitReached:
        case kAccessDeniedWithoutPassword:
        case kPasswordMustChange:
        case kPasswordExpired:
        case kAccountLocked:
        case kAccountBlocked:
        case kTlsWanted:
            return true;
        default:
            return false;
    }
}

bool isTooManyConnections(int number) {
    return number == kTooManyConnections || number == kTooManyUserConnections ||
           number == kUserLimitReached;
}

const char* sqlStateOf(int number) {
    switch (number) {
        case 0:
            return "";
        case kTooManyConnections:
            return "08004";
        case kUnknownClusterState:
        case kPacketTooLarge:
            return "08S01";
        case kColumnCannotBeNull:
        case kAmbiguousColumn:
        case kDuplicateKey:
            return "23000";
        case kNoDatabaseSelected:
            return "3D000";
        case kUnknownDatabase:
        case kTableAccessDenied:
        case kEmptyQuery:
        case kSyntaxError:
        case kNotSupported:
        case kNoSuchFunction:
        case kWrongDatabaseName:
            return "42000";
        case kTableExists:
            return "42S01";
        case kNoSuchTable:
            return "42S02";
        case kUnknownColumn:
            return "42S22";
        case kColumnCountMismatch:
            return "21000";
        case kValueCountMismatch:
            return "21S01";
        case kDeadlock:
            return "40001";
        case kOutOfRange:
            return "22003";
        case kIncorrectValue:
            return "22007";
        case kDataTooLong:
            return "22001";
        case kStatementTimeout:
            return "70100";
        default:
            return "HY000";
    }
}

}  // namespace dbaccess
