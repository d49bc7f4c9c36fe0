#include "dbaccess/mariadb/MariaDbConnector.h"

#include "dbaccess/mariadb/MariaDbConnection.h"
#include "dbaccess/mariadb/MariaDbError.h"

namespace dbaccess::mariadb {
namespace {

class MariaDbConnector final : public Connector {
public:
    MariaDbConnector(std::vector<ServerAddress> servers, std::string user, std::string password,
                     const Timeouts& timeouts)
        : servers_(std::move(servers)),
          user_(std::move(user)),
          password_(std::move(password)),
          timeouts_(timeouts) {}

    std::unique_ptr<Connection> connect(Error& error) override {
        for (const ServerAddress& server : servers_) {
            error = {};
            auto connection = MariaDbConnection::open(server, user_, password_, timeouts_, error);
            if (connection) return connection;
            if (isLoginRefusal(error.number)) break;
        }
        return nullptr;
    }

private:
    const std::vector<ServerAddress> servers_;
    const std::string user_;
    const std::string password_;
    const Timeouts timeouts_;
};

}  // namespace

std::unique_ptr<Connector> makeConnector(std::vector<ServerAddress> servers, std::string user,
                                         std::string password, const Timeouts& timeouts) {
    return std::make_unique<MariaDbConnector>(std::move(servers), std::move(user),
                                              std::move(password), timeouts);
}

}  // namespace dbaccess::mariadb
