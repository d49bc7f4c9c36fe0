#ifndef DBSERVICE_DBACCESS_MARIADB_SERVERS_H
#define DBSERVICE_DBACCESS_MARIADB_SERVERS_H

#include "dbaccess/mariadb/Hosts.h"
#include "dbaccess/mariadb/ServerLog.h"
#include "dbaccess/mariadb/Watch.h"

namespace dbaccess::mariadb {

/// What all connections of a host text share.
struct Servers {
    explicit Servers(const std::vector<ServerAddress>& addresses)
        : hosts(addresses.size()), log(addresses) {}

    Hosts hosts;
    Watch watch;
    ServerLog log;
};

}  // namespace dbaccess::mariadb

#endif
