#ifndef DBSERVICE_DBACCESS_POOL_HOSTTEXT_H
#define DBSERVICE_DBACCESS_POOL_HOSTTEXT_H

#include <string>
#include <vector>

#include "dbaccess/Engine.h"
#include "dbaccess/LastError.h"

namespace dbaccess {

/// Where one server listens: `name` and `port` over TCP, or the unix socket `socket`.
struct ServerAddress {
    std::string name;
    unsigned int port = 0;
    std::string socket;  ///< empty: TCP, or for the name "localhost" the client library's socket
};

/// What a host text says, see DataAccess.
struct HostText {
    Engine engine = Engine::Server;
    std::vector<ServerAddress> servers;  ///< in the order in which they are tried
    std::string directory;               ///< of the embedded engine
    Error error;                         ///< 2005 when the text is ill-formed
};

HostText parseHost(const std::string& text, unsigned int port);

}  // namespace dbaccess

#endif
