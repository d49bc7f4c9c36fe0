#ifndef DBACCESS_MARIADB_MARIADBCONNECTOR_H
#define DBACCESS_MARIADB_MARIADBCONNECTOR_H

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "dbaccess/Connection.h"
#include "dbaccess/HostText.h"

namespace dbaccess::mariadb {

struct Timeouts {
    std::chrono::seconds connect = kConnectTimeout;
    std::chrono::seconds lock = kLockTimeout;      ///< to wait for other writers
    std::chrono::seconds answer = kAnswerTimeout;  ///< for a statement to run; above `lock`
};

/// MariaDB and MySQL servers. Each connect tries the servers in order until one accepts; one that
/// answers but refuses the login ends the search.
std::unique_ptr<Connector> makeConnector(std::vector<ServerAddress> servers, std::string user,
                                         std::string password, const Timeouts& timeouts = {});

}  // namespace dbaccess::mariadb

#endif
