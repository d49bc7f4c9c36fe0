#ifndef DBSERVICE_CONVENIENCE_RESULTS_H
#define DBSERVICE_CONVENIENCE_RESULTS_H

#include <cstdint>
#include <stdexcept>
#include <string>

#include "base/Export.h"
#include "dbaccess/LastError.h"

namespace dbservice {

/// The error numbers that callers decide by, named for what they say. Any other number may come as
/// well: those of MySQL, the same on both engines.
enum class ErrorNumber : int {
    kNone = 0,
    kNotSent = 1,  ///< an answer of -1: no records, or not connected, as behind `Cleanup`
    kRecordChanged = 1020,
    kTooManyConnections = 1040,  ///< of the server, or no free one in the pool in time
    kDatabaseAccessDenied = 1044,
    kAccessDenied = 1045,         ///< wrong account or password
    kUnknownClusterState = 1047,  ///< the cluster node has lost the majority
    kUnknownDatabase = 1049,
    kServerShutdown = 1053,
    kUnknownColumn = 1054,
    kDuplicateKey = 1062,
    kSyntaxError = 1064,  ///< most often a text that was not escaped
    kTableFull = 1114,
    kNoSuchTable = 1146,
    kPacketTooLarge = 1153,
    kTooManyUserConnections = 1203,
    kLockWaitTimeout = 1205,
    kDeadlock = 1213,
    kUserLimitReached = 1226,
    kNotSupported = 1235,
    kOutOfRange = 1264,               ///< a number that its column cannot hold
    kOptionPreventsStatement = 1290,  ///< as on a read-only server
    kDataTooLong = 1406,              ///< a text that its column cannot hold
    kReadOnlyTransaction = 1792,
    kReadOnlyMode = 1836,
    kConnectionKilled = 1927,
    kStatementTimeout = 1969,
    kCannotConnect = 2002,
    kUnknownHost = 2005,
    kServerGone = 2006,  ///< the connection was lost; the statement took no effect
    kServerLost = 2013,  ///< in doubt: a write may or may not have taken effect
    kTlsError = 2026,
    kIllFormedSetting = 2034,
    kCapacityExceeded = 3170,  ///< a result larger than the settings allow
};

/// Whether an answer leaves open what became of a write: -2013. Every other negative answer says
/// that it took no effect.
inline bool isInDoubt(std::int64_t answer) {
    return answer == -static_cast<std::int64_t>(ErrorNumber::kServerLost);
}

/// What an operation answered, as a value that keeps the error with it. It is made of the answer
/// itself, on the same thread and before its next operation:
///
///     Result result = service.InsertServerInfo(server);
///     if (result.number() == ErrorNumber::kDuplicateKey) ...
///
/// Not for `Login`, whose -1 is an answer like 0.
class Result {
public:
    /// @param answer  0 or a count for success, a negated error number for a failure.
    Result(std::int64_t answer)  // NOLINT(google-explicit-constructor): it stands for the answer
        : count_(answer < 0 ? 0 : answer), error_(errorOf(answer)) {}

    /// Whether it succeeded.
    bool ok() const { return error_.number == 0; }
    explicit operator bool() const { return ok(); }  ///< the same

    /// The rows deleted, read, or affected by a raw statement; 0 after failures.
    std::int64_t count() const { return count_; }

    /// Why it failed; `kNone` when it did not. May be a number that the enumeration does not name.
    ErrorNumber number() const { return static_cast<ErrorNumber>(error_.number); }

    /// Number, SQLSTATE and message. The message may quote values of the statement, passwords too.
    const dbaccess::Error& error() const { return error_; }

    /// Why the last operation of this thread failed, when its answer says only that it did.
    static Result lastFailure() {
        const int number = dbaccess::LastError().number;
        return Result(number == 0 ? -1 : -number);
    }

private:
    static dbaccess::Error errorOf(std::int64_t answer) {
        dbaccess::Error error = dbaccess::LastError();
        const int number = answer < 0 ? static_cast<int>(-answer) : 0;
        if (number == 0 || number != error.number) {
            error.number = number;
            error.sqlState = number == 0 ? "" : "HY000";
            error.message = number == static_cast<int>(ErrorNumber::kNotSent)
                                ? "No records were given, or the service is not connected"
                                : "";
        }
        return error;
    }

    std::int64_t count_;
    dbaccess::Error error_;
};

/// The same for a result.
inline bool isInDoubt(const Result& result) {
    return result.number() == ErrorNumber::kServerLost;
}

/// Whether the same call may succeed a little later, as after a lost connection, a lock that
/// another writer held, or on a server that takes no writes for now. False for what is in doubt.
inline bool mayPass(ErrorNumber number) {
    switch (number) {
        case ErrorNumber::kRecordChanged:
        case ErrorNumber::kTooManyConnections:
        case ErrorNumber::kUnknownClusterState:
        case ErrorNumber::kServerShutdown:
        case ErrorNumber::kTooManyUserConnections:
        case ErrorNumber::kLockWaitTimeout:
        case ErrorNumber::kDeadlock:
        case ErrorNumber::kUserLimitReached:
        case ErrorNumber::kOptionPreventsStatement:
        case ErrorNumber::kReadOnlyTransaction:
        case ErrorNumber::kReadOnlyMode:
        case ErrorNumber::kConnectionKilled:
        case ErrorNumber::kStatementTimeout:
        case ErrorNumber::kCannotConnect:
        case ErrorNumber::kUnknownHost:
        case ErrorNumber::kServerGone:
            return true;
        default:
            return false;
    }
}

/// A failure as an exception, for those who ask for it by `check`.
class DBSERVICE_API DatabaseError : public std::runtime_error {
public:
    /// @param doing  what was being done; empty says nothing.
    DatabaseError(const std::string& doing, const dbaccess::Error& error)
        : std::runtime_error((doing.empty() ? "" : doing + ": ") + "error " +
                             std::to_string(error.number) + " (" + error.sqlState + ")"),
          error_(error) {}

    // What `what` tells has the number and SQLSTATE, but not the message, so that it may be logged.

    /// Why it failed. May be a number that the enumeration does not name.
    ErrorNumber number() const { return static_cast<ErrorNumber>(error_.number); }

    /// Number, SQLSTATE and message. The message may quote values of the statement, passwords too.
    const dbaccess::Error& error() const { return error_; }

private:
    dbaccess::Error error_;
};

/// The count of a successful answer or result; throws DatabaseError for a failure.
/// @param doing  what was being done, for `what` of the exception.
inline std::int64_t check(const Result& result, const std::string& doing = std::string()) {
    if (!result.ok()) throw DatabaseError(doing, result.error());
    return result.count();
}

}  // namespace dbservice

#endif
