#include "dbaccess/mariadb/MariaDbError.h"

#include "dbaccess/error/ErrorNumber.h"

namespace dbaccess::mariadb {

Fate fateOf(int number) {
    switch (number) {
        case kServerGone:           // the first answer to a text that fits: it did not go out
        case kUnknownClusterState:  // a cluster node without quorum runs nothing
        case kOptionPreventsStatement:
        case kReadOnlyMode:
        case kReadOnlyTransaction:
            return Fate::NotExecuted;
        case kDeadlock:  // also a cluster's conflict with another node
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
        default:
            return isClientError(number) ? Fate::InDoubt : Fate::Refused;
    }
}

bool keepsConnection(int number) {
    const Fate fate = fateOf(number);
    return fate == Fate::Refused || fate == Fate::RolledBack;
}

bool isLoginRefusal(int number) {
    switch (number) {
        case kDatabaseAccessDenied:
        case kAccessDenied:
        case kUnknownDatabase:
        case kHostNotAllowed:
        case kTlsError:
            return true;
        default:
            return false;
    }
}

}  // namespace dbaccess::mariadb
