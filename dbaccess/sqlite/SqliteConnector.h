#ifndef DBACCESS_SQLITE_SQLITECONNECTOR_H
#define DBACCESS_SQLITE_SQLITECONNECTOR_H

#include <memory>
#include <string>

#include "dbaccess/Connection.h"

namespace dbaccess::sqlite {

/// The embedded engine: the file `directory`/NAME.db for each database NAME.
std::unique_ptr<Connector> makeConnector(std::string directory);

}  // namespace dbaccess::sqlite

#endif
