#ifndef DBSERVICE_DBACCESS_MARIADB_SERVERLOG_H
#define DBSERVICE_DBACCESS_MARIADB_SERVERLOG_H

#include <mutex>
#include <string>
#include <vector>

#include "dbaccess/mariadb/Hosts.h"
#include "dbaccess/pool/HostText.h"
#include "log/RepeatLog.h"

namespace dbaccess::mariadb {

/// Tells the log when something changes about the servers of a host text, each change once.
/// Threads: any number at once.
class ServerLog {
public:
    explicit ServerLog(const std::vector<ServerAddress>& addresses);
    ServerLog(const ServerLog&) = delete;
    ServerLog& operator=(const ServerLog&) = delete;
    ~ServerLog() { lines_.flush(); }

    /// A connection broke with a statement on it.
    void lost(Hosts::Index host, const Error& error);
    /// A connect got no answer, or got one.
    void unreachable(Hosts::Index host, const Error& error);
    void reached(Hosts::Index host);
    /// Connections are on this server from now on.
    void uses(Hosts::Index host);

private:
    struct Server {
        std::string name;
        bool known = false;     // it has answered before
        TimePoint downSince{};  // zero: it is not
    };

    RepeatLog lines_{"Server"};
    std::mutex mutex_;  // guards all that follows, but for the names
    std::vector<Server> servers_;
    Hosts::Index inUse_ = Hosts::kNone;
};

}  // namespace dbaccess::mariadb

#endif
