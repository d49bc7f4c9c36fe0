#include "dbaccess/mariadb/ServerLog.h"

#include <cstdio>

#include "dbaccess/stats/Counters.h"
#include "log/Log.h"

namespace dbaccess::mariadb {
namespace {

std::string nameOf(const ServerAddress& address) {
    if (!address.socket.empty()) return address.socket;
    return address.name + ":" + std::to_string(address.port);
}

}  // namespace

ServerLog::ServerLog(const std::vector<ServerAddress>& addresses) {
    for (const ServerAddress& address : addresses) {
        servers_.emplace_back();
        servers_.back().name = nameOf(address);
    }
}

/// Most are replaced unseen, so this is no more than information. By its number only: the message
/// is about a statement.
void ServerLog::lost(Hosts::Index host, const Error& error) {
    lines_.write(kQzLogInfo, "a connection to " + servers_[host].name + " is lost",
                 ": " + std::to_string(error.number));
}

void ServerLog::unreachable(Hosts::Index host, const Error& error) {
    const std::lock_guard<std::mutex> lock(mutex_);
    Server& server = servers_[host];
    if (server.downSince != TimePoint()) return;
    server.downSince = Clock::now();
    // Of one that never answered, the failed call says as much.
    if (server.known)
        lines_.write(kQzLogError, server.name + " is lost, waiting for it", ": " + error.message);
}

void ServerLog::reached(Hosts::Index host) {
    const std::lock_guard<std::mutex> lock(mutex_);
    Server& server = servers_[host];
    server.known = true;
    if (server.downSince == TimePoint()) return;
    const std::chrono::duration<double> time = Clock::now() - server.downSince;
    server.downSince = {};
    char seconds[32];
    std::snprintf(seconds, sizeof seconds, " after %.1f s", time.count());
    lines_.write(kQzLogWarning, server.name + " is back", seconds);
}

void ServerLog::uses(Hosts::Index host) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (host == inUse_ || host == Hosts::kNone) return;
    if (inUse_ != Hosts::kNone) {
        counters.failedOver.add();
        lines_.write(kQzLogWarning,
                     servers_[host].name + " is used in the place of " + servers_[inUse_].name, "");
    }
    inUse_ = host;
}

}  // namespace dbaccess::mariadb
