#ifndef DBSERVICE_DBACCESS_MARIADB_MARIADBERROR_H
#define DBSERVICE_DBACCESS_MARIADB_MARIADBERROR_H

#include "dbaccess/pool/Outcome.h"

namespace dbaccess::mariadb {

/// What an error number proves, when it is the answer to a statement that was sent.
Fate fateOf(int number);

/// Whether a connection that met this error is still good for the next statement.
bool keepsConnection(int number);

/// Whether another server of the list would give this login error too.
bool isLoginRefusal(int number);

}  // namespace dbaccess::mariadb

#endif
