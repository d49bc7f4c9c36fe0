#include "dbaccess/mariadb/MariaDbConnector.h"

#include <algorithm>
#include <new>

#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/mariadb/MariaDbConnection.h"
#include "dbaccess/mariadb/MariaDbError.h"

namespace dbaccess::mariadb {
namespace {

using std::chrono::milliseconds;

// A statement that takes longer than this makes us ask whether its server still answers anybody.
constexpr milliseconds kSuspicious{500};
constexpr milliseconds kBetweenQuestions{2000};
// A cluster's node that was out is returned to when no statement has begun for this long.
constexpr milliseconds kIdle{1000};

/// Whether the server itself said so: then it is not silent.
bool isAnswer(const Error& error) {
    return !isClientError(error.number);
}

class MariaDbConnector final : public Connector {
public:
    MariaDbConnector(std::vector<ServerAddress> addresses, std::string user, std::string password,
                     const Settings& settings)
        : addresses_(std::move(addresses)),
          account_{std::move(user), std::move(password)},
          settings_(settings),
          servers_(std::make_shared<Servers>(addresses_)) {}

    std::unique_ptr<Connection> connect(TimePoint deadline, Error& error) override {
        return connect(deadline, std::vector<bool>(addresses_.size()), true, error);
    }

    std::unique_ptr<Connection> connectUnasked(Error& error) override {
        return connect(TimePoint::max(), std::vector<bool>(addresses_.size()), false, error);
    }

    bool wantsTending() const override { return true; }

    void tend() override {
        lookWhetherItAnswers();
        servers_->watch.cutEarlier(servers_->hosts.vainBefore());
        returnToBetter();
        endOverdue();
    }

    bool silent(Error& error) const override { return servers_->hosts.silent(error); }

private:
    std::unique_ptr<MariaDbConnection> open(Hosts::Index host, milliseconds limit, Error& error) {
        try {
            auto connection = MariaDbConnection::open(servers_, host, addresses_[host], account_,
                                                      settings_, limit, error);
            if (connection) {
                servers_->log.reached(host);
            } else if (isClientError(error.number)) {
                servers_->log.unreachable(host, error);
            }
            return connection;
        } catch (const std::bad_alloc&) {
            error = makeError(kOutOfMemory, "out of memory");
            return nullptr;
        }
    }

    std::unique_ptr<Connection> connect(TimePoint deadline, std::vector<bool> tried, bool asked,
                                        Error& error) {
        Hosts& hosts = servers_->hosts;
        std::unique_ptr<MariaDbConnection> readOnly;
        error = {};
        for (;;) {
            const Hosts::Index host = hosts.begin(tried, deadline, error);
            if (host == Hosts::kNone) break;
            tried[host] = true;
            const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
            auto connection =
                open(host, std::clamp(left, milliseconds(1), settings_.timeouts.connect), error);
            if (!connection) {
                if (!hosts.failed(host, asked, error)) return nullptr;
                continue;
            }
            if (connection->join(hosts.connected(host, connection->standing()))) {
                servers_->log.uses(host);
                return connection;
            }
            if (connection->standing() == Standing::ReadOnly && !readOnly)
                readOnly = std::move(connection);
        }
        if (readOnly && readOnly->join(hosts.settleFor(readOnly->host()))) {
            servers_->log.uses(readOnly->host());
            return readOnly;
        }
        if (!error) error = makeError(kCannotConnect, "no server is fit for use");
        return nullptr;
    }

    /// Statements that get no answer have no limit but their own, which is long: a server that does
    /// not greet a new connection either is left, if there is another one.
    void lookWhetherItAnswers() {
        Hosts& hosts = servers_->hosts;
        const Hosts::InUse inUse = hosts.inUse();
        Error error;
        if (hosts.silent(error)) {
            if (!leave(inUse) && answers(inUse.host, error)) hosts.clearSilent(inUse.epoch);
            return;
        }
        const TimePoint now = Clock::now();
        if (now < nextQuestion_ || !servers_->watch.anyRunningSince(inUse.epoch, now - kSuspicious))
            return;
        if (!answers(inUse.host, error)) {
            hosts.setSilent(inUse, error);
            leave(inUse);
        }
        nextQuestion_ = Clock::now() + kBetweenQuestions;
    }

    bool answers(Hosts::Index host, Error& error) {
        return open(host, settings_.timeouts.connect, error) != nullptr || isAnswer(error);
    }

    /// For another server, unless somebody has done so already.
    bool leave(const Hosts::InUse& inUse) {
        std::vector<bool> tried(addresses_.size());
        tried[inUse.host] = true;
        Error error;
        return servers_->hosts.inUse().epoch != inUse.epoch ||
               connect(Clock::now() + settings_.timeouts.connect, tried, true, error);
    }

    /// Not in the middle of load, unless the server in use takes no writes.
    void returnToBetter() {
        Hosts& hosts = servers_->hosts;
        if (Clock::now() < nextReturn_) return;
        for (const Hosts::Index host : hosts.better()) {
            Error error;
            const auto connection =
                open(host, std::min<milliseconds>(settings_.timeouts.connect, kIdle), error);
            if (!connection || connection->standing() != Standing::Fit) continue;
            hosts.moveTo(host, servers_->watch.idleSince(Clock::now() - kIdle));
            servers_->log.uses(hosts.inUse().host);
            break;
        }
        nextReturn_ = Clock::now() + kBetweenQuestions;
    }

    /// MariaDB ends what takes too long by itself, and so it is certain what became of it. The
    /// writes of other servers are ended from here.
    void endOverdue() {
        const Hosts::InUse inUse = servers_->hosts.inUse();
        const auto ids =
            servers_->watch.overdue(inUse.epoch, Clock::now() - settings_.timeouts.answer);
        if (ids.empty()) return;
        Error error;
        const auto connection = open(inUse.host, settings_.timeouts.connect, error);
        for (const unsigned long id : ids) {
            if (connection) connection->run("", Statement("KILL QUERY " + std::to_string(id)));
        }
    }

    const std::vector<ServerAddress> addresses_;
    const Account account_;
    const Settings settings_;
    const std::shared_ptr<Servers> servers_;
    // Of the thread that tends:
    TimePoint nextQuestion_{};
    TimePoint nextReturn_{};
};

}  // namespace

std::unique_ptr<Connector> makeConnector(std::vector<ServerAddress> addresses, std::string user,
                                         std::string password, const Settings& settings) {
    return std::make_unique<MariaDbConnector>(std::move(addresses), std::move(user),
                                              std::move(password), settings);
}

}  // namespace dbaccess::mariadb
