#include "dbaccess/DataAccess.h"

#include <algorithm>
#include <limits>
#include <new>
#include <vector>

#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/mariadb/MariaDbConnector.h"
#include "dbaccess/pool/HostText.h"
#include "dbaccess/pool/StatementRunner.h"
#include "dbaccess/sqlite/SqliteConnector.h"
#include "log/Log.h"

namespace dbaccess {
namespace {

Error& lastError() {
    thread_local Error error;
    return error;
}

/// Failures on the way to the database. Their messages quote no statement.
bool isConnectionError(int number) {
    switch (number) {
        case kTooManyConnections:
        case kUnknownClusterState:
        case kUnknownDatabase:
        case kDatabaseAccessDenied:
        case kAccessDenied:
            return true;
        default:
            return isClientError(number);
    }
}

/// One line for a failure. What an engine says of a statement quotes values out of it, passwords
/// among them, and so stays in LastError.
void logFailure(const Error& error, const std::string& dbName, std::string_view summary) {
    std::string line = std::to_string(error.number) + " (" + error.sqlState + ") on '" + dbName +
                       "': " + std::string(summary);
    const bool connection = isConnectionError(error.number);
    if (connection) line += ": " + error.message;
    Qz_Write_Log(connection ? kQzLogError : kQzLogWarning, "DataAccess", line.c_str());
}

int asInt(std::int64_t result) {
    constexpr std::int64_t kMost = std::numeric_limits<int>::max();
    return static_cast<int>(std::min(result, kMost));
}

std::unique_ptr<Connector> makeConnector(const HostText& host, const std::string& user,
                                         const std::string& password) {
    if (host.engine == Engine::Embedded) return sqlite::makeConnector(host.directory);
    return mariadb::makeConnector(host.servers, user, password);
}

}  // namespace

const Error& LastError() noexcept {
    return lastError();
}

class DataAccess::Impl {
public:
    Impl(HostText host, const std::string& user, const std::string& password)
        : host_(std::move(host)), runner_(makeConnector(host_, user, password)) {}

    Engine engine() const { return host_.engine; }

    bool open(const PoolSettings& settings) {
        Error error = host_.error;
        if (!error) runner_.open(settings, error);
        if (error) logFailure(error, "", "connect");
        lastError() = error;
        return !error;
    }

    Outcome run(const std::string& dbName, std::string text) {
        const Statement statement(std::move(text));
        Outcome outcome = guarded([&] { return runner_.run(dbName, statement); });
        if (outcome.error) logFailure(outcome.error, dbName, summaryOf(statement.text));
        lastError() = outcome.error;
        return outcome;
    }

    Outcome runList(const std::string& dbName, const std::deque<std::string>& texts) {
        Outcome outcome = guarded([&] {
            return runner_.run(dbName, std::vector<Statement>(texts.begin(), texts.end()));
        });
        if (outcome.error) {
            logFailure(outcome.error, dbName, "list of " + std::to_string(texts.size()));
        }
        lastError() = outcome.error;
        return outcome;
    }

private:
    template <class Call>
    Outcome guarded(Call call) const {
        if (host_.error) return Outcome::failure(host_.error);
        try {
            return call();
        } catch (const std::bad_alloc&) {
            return Outcome::failure(makeError(kOutOfMemory, "out of memory"));
        }
    }

    const HostText host_;
    StatementRunner runner_;
};

DataAccess::DataAccess(const std::string& host, unsigned int port, const std::string& user,
                       const std::string& password)
    : impl_(new Impl(parseHost(host, port), user, password)) {}

DataAccess::~DataAccess() = default;

bool DataAccess::Initialize(unsigned int minConnections, unsigned int maxConnections,
                            bool autoReconnect, bool waitForConnection) {
    PoolSettings settings;
    settings.minConnections = minConnections;
    settings.maxConnections = maxConnections;
    settings.autoReconnect = autoReconnect;
    settings.waitForConnection = waitForConnection;
    return impl_->open(settings);
}

ResultSet* DataAccess::Query(std::string dbName, std::string statement) {
    Outcome outcome = impl_->run(dbName, std::move(statement));
    if (outcome.error) return nullptr;
    if (!outcome.rows) return new RowBuffer(std::vector<std::string>());
    return outcome.rows.release();
}

std::int64_t DataAccess::Insert(std::string dbName, std::string statement) {
    return Execute(std::move(dbName), std::move(statement));
}

int DataAccess::Update(std::string dbName, std::string statement) {
    return Execute(std::move(dbName), std::move(statement));
}

int DataAccess::Update(std::string dbName, std::deque<std::string>& statements) {
    const Outcome outcome = impl_->runList(dbName, statements);
    return outcome.error ? -outcome.error.number : asInt(outcome.affectedRows);
}

int DataAccess::Execute(std::string dbName, std::string statement) {
    const Outcome outcome = impl_->run(dbName, std::move(statement));
    return outcome.error ? -outcome.error.number : asInt(outcome.affectedRows);
}

void DataAccess::ReleaseResulitSet(ResultSet* set) {
    delete set;
}

Engine DataAccess::engine() const noexcept {
    return impl_->engine();
}

}  // namespace dbaccess
