#ifndef DBSERVICE_DBACCESS_SQLITE_SQLITECONNECTOR_H
#define DBSERVICE_DBACCESS_SQLITE_SQLITECONNECTOR_H

#include <memory>
#include <string>

#include "dbaccess/pool/Connector.h"
#include "dbaccess/settings/Settings.h"

namespace dbaccess::sqlite {

/// The embedded engine: the file `directory`/NAME.db for each database NAME. The directory must
/// exist; CREATE DATABASE makes the files.
std::unique_ptr<Connector> makeConnector(std::string directory, const Settings& settings = {});

}  // namespace dbaccess::sqlite

#endif
