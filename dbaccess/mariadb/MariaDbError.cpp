#include "dbaccess/mariadb/MariaDbError.h"

#include "dbaccess/error/ErrorNumber.h"

namespace dbaccess::mariadb {

Fate fateOf(int number) {
    switch (number) {
        case kServerGone:           // the first answer to a text that fits: it did not go out
        case kUnknownClusterState:  // a cluster node without quorum runs nothing
        case kIdleTooLong:          // MySQL's farewell
            return Fate::NotExecuted;
        case kDeadlock:       // also a cluster's conflict with another node
        case kRecordChanged:  // under snapshot isolation
            return Fate::RolledBack;
        case kErrorDuringCommit:  // a cluster node lost its quorum; some of these had committed
        case kServerShutdown:
        case kConnectionAborted:
        case kNewConnectionAborted:
        case kNetworkReadError:
        case kNetworkReadTimeout:
        case kNetworkWriteError:
        case kNetworkWriteTimeout:
        case kConnectionKilled:
            return Fate::InDoubt;
        case kNoArrayBinding:
            return Fate::Refused;
        default:
            return isClientError(number) ? Fate::InDoubt : Fate::Refused;
    }
}

bool keepsConnection(int number) {
    const Fate fate = fateOf(number);
    return fate == Fate::Refused || fate == Fate::RolledBack;
}

bool isReadOnly(const Error& error) {
    // 1290 has many reasons, as a file where none may be.
    return error.number == kReadOnlyMode || error.number == kReadOnlyTransaction ||
           (error.number == kOptionPreventsStatement &&
            error.message.find("read-only") != std::string::npos);
}

}  // namespace dbaccess::mariadb
