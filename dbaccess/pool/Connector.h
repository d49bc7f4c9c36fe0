#ifndef DBSERVICE_DBACCESS_POOL_CONNECTOR_H
#define DBSERVICE_DBACCESS_POOL_CONNECTOR_H

#include <memory>

#include "dbaccess/pool/Connection.h"

namespace dbaccess {

/// Opens connections of one engine. Threads: any number at once.
class Connector {
public:
    Connector() = default;
    Connector(const Connector&) = delete;
    Connector& operator=(const Connector&) = delete;
    virtual ~Connector() = default;

    /// A new connection, or null with `error` set. Takes about the connect time limit at most, for
    /// each host.
    virtual std::unique_ptr<Connection> connect(Error& error) = 0;
};

}  // namespace dbaccess

#endif
