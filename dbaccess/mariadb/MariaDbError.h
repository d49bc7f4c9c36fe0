#ifndef DBSERVICE_DBACCESS_MARIADB_MARIADBERROR_H
#define DBSERVICE_DBACCESS_MARIADB_MARIADBERROR_H

#include "dbaccess/pool/Connection.h"

namespace dbaccess::mariadb {

/// What an error number proves, when it is the answer to a statement that was sent.
Fate fateOf(unsigned int number);

/// Whether a connection that met this error is still good for the next statement.
bool keepsConnection(unsigned int number);

/// Whether another server of the list would give this login error too.
bool isLoginRefusal(unsigned int number);

}  // namespace dbaccess::mariadb

#endif
