#ifndef DBACCESS_CONNECTION_H
#define DBACCESS_CONNECTION_H

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include "dbaccess/LastError.h"
#include "dbaccess/RowBuffer.h"
#include "dbaccess/StatementReader.h"

namespace dbaccess {

constexpr std::chrono::seconds kConnectTimeout{5};
constexpr std::chrono::seconds kAcquireTimeout{30};
constexpr std::chrono::seconds kLockTimeout{10};
constexpr std::chrono::seconds kAnswerTimeout{
    30};  // above kLockTimeout: a lock wait is no lost connection

/// A text and what the layer must know of it before sending.
struct Statement {
    explicit Statement(std::string statement) : text(std::move(statement)), kind(kindOf(text)) {}

    std::string text;
    StatementKind kind;
};

/// What a failure proves about the statement that met it.
enum class Fate {
    Refused,      ///< it took no effect, and sending it again would fail again
    NotExecuted,  ///< it took no effect and the connection is of no use: send it on another one
    RolledBack,   ///< it lost to another transaction: send it again after a pause
    InDoubt,      ///< the connection broke after sending: it may have taken effect
};

/// What became of one statement.
struct Outcome {
    Error error;                ///< number 0: it succeeded
    Fate fate = Fate::Refused;  ///< of a failure
    std::int64_t affectedRows = 0;
    std::unique_ptr<RowBuffer> rows;  ///< null for a statement that has no result

    static Outcome failure(Error why, Fate fate = Fate::Refused) {
        Outcome outcome;
        outcome.error = std::move(why);
        outcome.fate = fate;
        return outcome;
    }
};

/// One connection to a database, used by one thread at a time. Nothing throws but bad_alloc.
class Connection {
public:
    Connection() = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    virtual ~Connection() = default;

    /// Looks, without a round trip, whether the other side has hung up. False: nothing was sent and
    /// the connection is of no use.
    virtual bool alive() = 0;

    /// False once a failure has made the connection useless; it is then to be closed.
    virtual bool usable() const = 0;

    /// Runs one statement in the named database. `statement.kind` is never Transaction or Use.
    virtual Outcome run(const std::string& dbName, const Statement& statement) = 0;

    /// A transaction around the runs between them, all in the database named at its begin.
    virtual Outcome begin(const std::string& dbName) = 0;
    virtual Outcome commit() = 0;
    /// Ends the transaction without effect, also after a failed run or commit.
    virtual void rollback() = 0;
};

/// Opens connections of one engine. Threads: any number at once.
class Connector {
public:
    Connector() = default;
    Connector(const Connector&) = delete;
    Connector& operator=(const Connector&) = delete;
    virtual ~Connector() = default;

    /// A new connection, or null with `error` set. Takes at most about kConnectTimeout for each
    /// host.
    virtual std::unique_ptr<Connection> connect(Error& error) = 0;
};

}  // namespace dbaccess

#endif
