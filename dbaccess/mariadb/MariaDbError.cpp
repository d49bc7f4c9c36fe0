#include "dbaccess/mariadb/MariaDbError.h"

#include "dbaccess/error/ErrorNumber.h"

namespace dbaccess::mariadb {
namespace {

constexpr bool isClientError(unsigned int number) {
    return (number >= 2000 && number < 3000) || (number >= 5000 && number < 6000);
}

}  // namespace

Fate fateOf(unsigned int number) {
    switch (number) {
        case kServerGone:           // the first answer to a text that fits: it did not go out
        case kUnknownClusterState:  // a cluster node without quorum runs nothing
        case 1290:                  // the server is read-only
        case 1836:                  // the same, since an upgrade
        case 1792:                  // a read-only transaction
            return Fate::NotExecuted;
        case kDeadlock:  // also a cluster's conflict with another node
            return Fate::RolledBack;
        case 1053:  // the server is shutting down
        case 1152:  // to 1161: the connection broke on the server's side
        case 1158:
        case 1159:
        case 1160:
        case 1161:
        case 1180:  // a cluster node lost its quorum during the commit; some of these had committed
        case 1184:
        case 1927:  // the connection was killed
            return Fate::InDoubt;
        default:
            return isClientError(number) ? Fate::InDoubt : Fate::Refused;
    }
}

bool keepsConnection(unsigned int number) {
    const Fate fate = fateOf(number);
    return fate == Fate::Refused || fate == Fate::RolledBack;
}

bool isLoginRefusal(unsigned int number) {
    switch (number) {
        case 1044:  // no right to the database
        case 1045:  // wrong account or password
        case 1049:  // no such database
        case 1130:  // this host may not connect
        case kTlsError:
            return true;
        default:
            return false;
    }
}

}  // namespace dbaccess::mariadb
