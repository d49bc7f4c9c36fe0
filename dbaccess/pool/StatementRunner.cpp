#include "dbaccess/pool/StatementRunner.h"

#include <array>
#include <random>
#include <thread>

#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/reader/TokenReader.h"

namespace dbaccess {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

// How long a call that lost its connection on the way goes on trying to get another one: long
// enough for a server's restart, short enough for a person who waits.
constexpr std::chrono::seconds kReconnectTime{5};
constexpr milliseconds kReconnectPause{100};
constexpr int kMostLosses = 3;
constexpr std::array<milliseconds, 3> kDeadlockPauses{milliseconds(10), milliseconds(40),
                                                      milliseconds(160)};

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

/// Why a statement is not sent: the next user of the connection would meet what it leaves there.
Error refusal(const Statement& statement, bool inList) {
    switch (statement.kind) {
        case StatementKind::Transaction:
            return makeError(kNotSupported, "transactions are run by the list form of Update");
        case StatementKind::Use:
            return makeError(kNotSupported, "USE is not supported: each call names its database");
        case StatementKind::Definition:
            if (!inList) return {};
            return makeError(kNotSupported,
                             "a statement that commits by itself cannot stand in a list");
        case StatementKind::Read:
        case StatementKind::Session:
            return {};  // what begins ill-formed is a Write
        case StatementKind::Write:
            break;
    }
    TokenReader reader(statement.text);
    if (reader.next().kind != TokenKind::Bad) return {};
    return makeError(reader.error(),
                     "ill-formed, or an executable comment, which hides what it does");
}

/// Ends a transaction without effect unless it was committed, also when memory runs out on the way:
/// a connection that is lent next must not be in somebody else's transaction.
class Rollback {
public:
    explicit Rollback(Connection& connection) : connection_(connection) {}
    Rollback(const Rollback&) = delete;
    Rollback& operator=(const Rollback&) = delete;
    ~Rollback() {
        if (armed_ && connection_.usable()) connection_.rollback();
    }
    void disarm() { armed_ = false; }

private:
    Connection& connection_;
    bool armed_ = true;
};

/// Runs a list in one transaction on one connection.
Outcome runTransaction(Connection& connection, const std::string& dbName,
                       const std::vector<Statement>& statements) {
    Rollback rollback(connection);
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
    if (outcome.error) return outcome;
    rollback.disarm();
    outcome.affectedRows = affected;
    return outcome;
}

/// The number says which fate it was: in doubt is 2013, whatever the engine called it, and 2013 is
/// nothing else.
Outcome numbered(Outcome outcome) {
    if (outcome.fate == Fate::InDoubt && outcome.error.number != kServerLost) {
        outcome.error = makeError(kServerLost, outcome.error.message);
    } else if (outcome.fate != Fate::InDoubt && outcome.error.number == kServerLost) {
        outcome.error = makeError(kServerGone, outcome.error.message);
    }
    return outcome;
}

}  // namespace

Outcome StatementRunner::run(const std::string& dbName, const Statement& statement) {
    if (Error error = refusal(statement, false)) return Outcome::failure(error);
    const bool repeatable =
        statement.kind == StatementKind::Read || statement.kind == StatementKind::Session;
    return attempt(repeatable, [&](Pool::Lease& lease) {
        Outcome outcome = lease->run(dbName, statement);
        if (!outcome.error) takeOverSession(lease, statement);
        return outcome;
    });
}

Outcome StatementRunner::run(const std::string& dbName, const std::vector<Statement>& statements) {
    for (const Statement& statement : statements) {
        if (Error error = refusal(statement, true)) return Outcome::failure(error);
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

void StatementRunner::takeOverSession(Pool::Lease& lease, const Statement& statement) {
    if (statement.kind == StatementKind::Session) pool_.addSessionStatement(lease, statement);
}

template <class Call>
Outcome StatementRunner::attempt(bool repeatable, Call call) {
    Attempts attempts(repeatable, pool_.reconnects());
    for (;;) {
        Error error;
        Pool::Lease lease = pool_.acquire(error);
        if (!lease) {
            if (attempts.connectAgain()) continue;
            return numbered(Outcome::failure(error));
        }
        Outcome outcome = call(lease);
        if (!outcome.error) return outcome;
        if (!attempts.again(outcome)) return numbered(std::move(outcome));
    }
}

}  // namespace dbaccess
