#ifndef DBSERVICE_DBACCESS_SQLITE_SQLITECONNECTOR_H
#define DBSERVICE_DBACCESS_SQLITE_SQLITECONNECTOR_H

#include <memory>
#include <string>

#include "dbaccess/pool/Connector.h"
#include "dbaccess/pool/Timeouts.h"

namespace dbaccess::sqlite {

/// The embedded engine: the file `directory`/NAME.db for each database NAME. The directory must
/// exist; CREATE DATABASE makes the files.
std::unique_ptr<Connector> makeConnector(std::string directory, const Timeouts& timeouts = {});

}  // namespace dbaccess::sqlite

#endif
