#include "dbaccess/pool/StatementRunner.h"

#include <array>
#include <random>
#include <thread>

#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/reader/TokenReader.h"
#include "dbaccess/stats/Counters.h"

namespace dbaccess {
namespace {

using std::chrono::milliseconds;

// How long a call that lost its connection on the way goes on trying to get another one: long
// enough for a server's restart and for a cluster to agree that a node is gone.
constexpr std::chrono::seconds kReconnectTime{10};
constexpr milliseconds kReconnectPause{100};
constexpr int kMostLosses = 5;
constexpr std::array<milliseconds, 3> kDeadlockPauses{milliseconds(10), milliseconds(40),
                                                      milliseconds(160)};

/// When a call may run again.
enum class Repeats {
    WhenLost,      ///< also when it may have run: it changes nothing
    WhenNotRun,    ///< when it is certain that it took no effect
    WhenNotBegun,  ///< not after a deadlock: it may have committed something before it
};

/// Decides, for one call, whether a failed attempt is followed by another one.
class Attempts {
public:
    Attempts(Repeats repeats, bool reconnects, TimePoint deadline)
        : repeats_(repeats), reconnects_(reconnects), deadline_(deadline) {}

    /// Whether the call is to be tried again; pauses before a true where a pause helps.
    bool again(const Outcome& outcome) {
        if (outcome.fate == Fate::RolledBack)
            return repeats_ != Repeats::WhenNotBegun && againAfterDeadlock();
        doubtful_ = doubtful_ || outcome.fate == Fate::InDoubt;
        const bool may = outcome.fate == Fate::NotExecuted ||
                         (outcome.fate == Fate::InDoubt && repeats_ == Repeats::WhenLost);
        if (!reconnects_ || !may || ++losses_ > kMostLosses) return false;
        giveUp_ = std::min(deadline_, Clock::now() + kReconnectTime);
        return Clock::now() < deadline_;
    }

    /// Whether to try again to get a connection: only when the call has lost one.
    bool connectAgain() {
        if (losses_ == 0 || Clock::now() >= giveUp_) return false;
        std::this_thread::sleep_for(kReconnectPause);
        return true;
    }

    /// Whether an attempt may have run to its end unseen.
    bool doubtful() const { return doubtful_; }

private:
    bool againAfterDeadlock() {
        if (deadlocks_ == kDeadlockPauses.size()) return false;
        thread_local std::minstd_rand random{std::random_device{}()};
        const auto pause = kDeadlockPauses[deadlocks_++];
        std::this_thread::sleep_for(pause + pause * (random() % 100) / 100);
        return Clock::now() < deadline_;
    }

    const Repeats repeats_;
    const bool reconnects_;
    const TimePoint deadline_;
    TimePoint giveUp_{};
    int losses_ = 0;
    bool doubtful_ = false;
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

Repeats repeatsOf(StatementKind kind) {
    switch (kind) {
        case StatementKind::Read:
        case StatementKind::Session:
            return Repeats::WhenLost;
        case StatementKind::Definition:  // and CALL: procedures commit where they like
            return Repeats::WhenNotBegun;
        default:
            return Repeats::WhenNotRun;
    }
}

void takeOverSession(Pool& pool, Pool::Lease& lease, const Statement& statement) {
    if (statement.kind == StatementKind::Session) pool.addSessionStatement(lease, statement);
}

/// Runs the call on a connection of the pool, again as long as it may.
/// @param call  gets the lease, and whether it may have run before.
template <class Call>
Outcome attempt(Pool& pool, TimePoint deadline, Repeats repeats, Call call) {
    Attempts attempts(repeats, pool.reconnects(), deadline);
    for (;;) {
        Error error;
        Pool::Lease lease = pool.acquire(deadline, error);
        if (!lease) {
            if (attempts.connectAgain()) continue;
            return numbered(Outcome::failure(error));
        }
        Outcome outcome = call(lease, attempts.doubtful());
        if (attempts.doubtful() && outcome.error.number == kReadOnlyTransaction) {
            outcome.error = makeError(kServerLost,
                                      "the connection was lost in the middle of a "
                                      "query that changes data");
            outcome.fate = Fate::InDoubt;
            return outcome;
        }
        if (!outcome.error) return outcome;
        if (!attempts.again(outcome)) return numbered(std::move(outcome));
        counters.retried.add();
    }
}

}  // namespace

Outcome StatementRunner::run(const std::string& dbName, const Statement& statement,
                             TimePoint begin) {
    if (Error error = refusal(statement, false)) return Outcome::failure(error);
    const bool query = statement.kind == StatementKind::Read;
    return attempt(pool_, begin + callTimeout_, repeatsOf(statement.kind),
                   [&](Pool::Lease& lease, bool doubtful) {
                       Outcome outcome = query && doubtful ? lease->runAgain(dbName, statement)
                                                           : lease->run(dbName, statement);
                       if (!outcome.error) takeOverSession(pool_, lease, statement);
                       return outcome;
                   });
}

Outcome StatementRunner::run(const std::string& dbName, const std::vector<Statement>& statements,
                             TimePoint begin) {
    for (const Statement& statement : statements) {
        if (Error error = refusal(statement, true)) return Outcome::failure(error);
    }
    if (statements.empty()) return {};
    return attempt(pool_, begin + callTimeout_, Repeats::WhenNotRun,
                   [&](Pool::Lease& lease, bool /*doubtful*/) {
                       Outcome outcome = runTransaction(*lease, dbName, statements);
                       if (!outcome.error) {
                           for (const Statement& statement : statements)
                               takeOverSession(pool_, lease, statement);
                       }
                       return outcome;
                   });
}

}  // namespace dbaccess
