#ifndef DBSERVICE_DBACCESS_MARIADB_MARIADBCONNECTOR_H
#define DBSERVICE_DBACCESS_MARIADB_MARIADBCONNECTOR_H

#include <memory>
#include <string>
#include <vector>

#include "dbaccess/pool/Connector.h"
#include "dbaccess/pool/HostText.h"
#include "dbaccess/settings/Settings.h"

namespace dbaccess::mariadb {

/// MariaDB and MySQL servers. Each connect tries the servers in order until one accepts; one that
/// answers but refuses the login ends the search.
std::unique_ptr<Connector> makeConnector(std::vector<ServerAddress> servers, std::string user,
                                         std::string password, const Settings& settings = {});

}  // namespace dbaccess::mariadb

#endif
