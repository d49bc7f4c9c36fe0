#ifndef DBSERVICE_DBACCESS_MARIADB_MARIADBERROR_H
#define DBSERVICE_DBACCESS_MARIADB_MARIADBERROR_H

#include "dbaccess/pool/Outcome.h"

namespace dbaccess::mariadb {

/// What an error number proves, when it is the answer to a statement that was sent.
Fate fateOf(int number);

/// Whether a connection that met this error is still good for the next statement.
bool keepsConnection(int number);

/// Whether a server says with this that it takes no writes now.
bool isReadOnly(const Error& error);

}  // namespace dbaccess::mariadb

#endif
