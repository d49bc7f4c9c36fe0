#include "dbaccess/DataAccess.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <random>
#include <thread>
#include <vector>

#include "dbaccess/Connection.h"
#include "dbaccess/ErrorNumber.h"
#include "dbaccess/HostText.h"
#include "dbaccess/Pool.h"
#include "dbaccess/mariadb/MariaDbConnector.h"
#include "dbaccess/sqlite/SqliteConnector.h"
#include "log/Log.h"

namespace dbaccess {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr int kWarning = 200;
constexpr int kFailure = 300;

// How long a call that lost its connection on the way goes on trying to get another one: long
// enough for a server's restart, short enough for a person who waits.
constexpr std::chrono::seconds kReconnectTime{5};
constexpr milliseconds kReconnectPause{100};
constexpr int kMostLosses = 3;
constexpr std::array<milliseconds, 3> kDeadlockPauses{milliseconds(10), milliseconds(40),
                                                      milliseconds(160)};

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
        case 1044:  // no right to the database
        case 1045:  // wrong account or password
            return true;
        default:
            return number >= 2000 && number < 3000;
    }
}

/// One line for a failure. What an engine says of a statement quotes values out of it, passwords
/// among them, and so stays in LastError.
void logFailure(const Error& error, const std::string& dbName, std::string_view summary) {
    std::string line = std::to_string(error.number) + " (" + error.sqlState + ") on '" + dbName +
                       "': " + std::string(summary);
    const bool connection = isConnectionError(error.number);
    if (connection) line += ": " + error.message;
    Qz_Write_Log(connection ? kFailure : kWarning, "DataAccess", line.c_str());
}

int asInt(std::int64_t result) {
    constexpr std::int64_t kMost = std::numeric_limits<int>::max();
    return static_cast<int>(std::min(result, kMost));
}

/// Decides, for one call, whether a failed attempt is followed by another one.
class Attempts {
public:
    /// @param repeatable  the call may run again although it may have run already.
    Attempts(bool repeatable, bool reconnects) : repeatable_(repeatable), reconnects_(reconnects) {}

    /// Whether the call is to be tried again; pauses before a true where a pause helps.
    bool again(const Outcome& outcome) {
        if (outcome.fate == Fate::RolledBack) return againAfterDeadlock();
        const bool certain = outcome.fate == Fate::NotExecuted;
        if (!reconnects_ || (!certain && !(repeatable_ && outcome.fate == Fate::InDoubt)))
            return false;
        return ++losses_ <= kMostLosses && Clock::now() < giveUp_;
    }

    /// Whether to try again to get a connection: only when the call has lost one.
    bool connectAgain() {
        if (losses_ == 0 || Clock::now() >= giveUp_) return false;
        std::this_thread::sleep_for(kReconnectPause);
        return true;
    }

private:
    bool againAfterDeadlock() {
        if (deadlocks_ == kDeadlockPauses.size()) return false;
        thread_local std::minstd_rand random{std::random_device{}()};
        const auto pause = kDeadlockPauses[deadlocks_++];
        std::this_thread::sleep_for(pause + pause * (random() % 100) / 100);
        return true;
    }

    const bool repeatable_;
    const bool reconnects_;
    const Clock::time_point giveUp_ = Clock::now() + kReconnectTime;
    int losses_ = 0;
    std::size_t deadlocks_ = 0;
};

Error refusal(StatementKind kind, bool inList) {
    switch (kind) {
        case StatementKind::Transaction:
            return makeError(kNotSupported, "transactions are run by the list form of Update");
        case StatementKind::Use:
            return makeError(kNotSupported, "USE is not supported: each call names its database");
        case StatementKind::Definition:
            if (!inList) return {};
            return makeError(kNotSupported,
                             "a statement that commits by itself cannot stand in a list");
        default:
            return {};
    }
}

/// Runs a list in one transaction on one connection, up to its commit.
Outcome runTransaction(Connection& connection, const std::string& dbName,
                       const std::vector<Statement>& statements) {
    Outcome outcome = connection.begin(dbName);
    std::int64_t affected = 0;
    for (const Statement& statement : statements) {
        if (outcome.error) break;
        outcome = connection.run(dbName, statement);
        affected += outcome.affectedRows;
    }
    // Without its COMMIT a transaction has no effect, however its connection ended.
    if (outcome.error && outcome.fate == Fate::InDoubt) outcome.fate = Fate::NotExecuted;
    if (!outcome.error) outcome = connection.commit();
    if (outcome.error) {
        if (connection.usable()) connection.rollback();
        return outcome;
    }
    outcome.affectedRows = affected;
    return outcome;
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
        : host_(std::move(host)), pool_(makeConnector(host_, user, password)) {}

    Engine engine() const { return host_.engine; }

    bool open(const PoolSettings& settings) {
        Error error = host_.error;
        if (!error) pool_.open(settings, error);
        if (error) logFailure(error, "", "connect");
        lastError() = error;
        return !error;
    }

    Outcome run(const std::string& dbName, std::string text) {
        const Statement statement(std::move(text));
        Outcome outcome = guarded([&] { return runStatement(dbName, statement); });
        if (outcome.error) logFailure(outcome.error, dbName, summaryOf(statement.text));
        lastError() = outcome.error;
        return outcome;
    }

    Outcome runList(const std::string& dbName, const std::deque<std::string>& texts) {
        Outcome outcome = guarded([&] {
            return runStatements(dbName, std::vector<Statement>(texts.begin(), texts.end()));
        });
        if (outcome.error) {
            logFailure(outcome.error, dbName, "list of " + std::to_string(texts.size()));
        }
        lastError() = outcome.error;
        return outcome;
    }

private:
    template <class Call>
    static Outcome guarded(Call call) {
        try {
            return call();
        } catch (const std::bad_alloc&) {
            return Outcome::failure(makeError(kOutOfMemory, "out of memory"));
        }
    }

    Outcome runStatement(const std::string& dbName, const Statement& statement) {
        if (Error error = refusal(statement.kind, false)) return Outcome::failure(error);
        const bool repeatable =
            statement.kind == StatementKind::Read || statement.kind == StatementKind::Session;
        return attempt(repeatable, [&](Pool::Lease& lease) {
            Outcome outcome = lease->run(dbName, statement);
            if (!outcome.error) takeOverSession(lease, statement);
            return outcome;
        });
    }

    Outcome runStatements(const std::string& dbName, const std::vector<Statement>& statements) {
        for (const Statement& statement : statements) {
            if (Error error = refusal(statement.kind, true)) return Outcome::failure(error);
        }
        if (statements.empty()) return {};
        return attempt(false, [&](Pool::Lease& lease) {
            Outcome outcome = runTransaction(*lease, dbName, statements);
            if (!outcome.error) {
                for (const Statement& statement : statements)
                    takeOverSession(lease, statement);
            }
            return outcome;
        });
    }

    void takeOverSession(Pool::Lease& lease, const Statement& statement) {
        if (statement.kind == StatementKind::Session) pool_.addSessionStatement(lease, statement);
    }

    template <class Call>
    Outcome attempt(bool repeatable, Call call) {
        if (host_.error) return Outcome::failure(host_.error);
        Attempts attempts(repeatable, pool_.reconnects());
        for (;;) {
            Error error;
            Pool::Lease lease = pool_.acquire(error);
            if (!lease) {
                if (attempts.connectAgain()) continue;
                return Outcome::failure(error);
            }
            Outcome outcome = call(lease);
            if (!outcome.error || !attempts.again(outcome)) return outcome;
        }
    }

    const HostText host_;
    Pool pool_;
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
    if (!outcome.rows) return new RowBuffer({});
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
