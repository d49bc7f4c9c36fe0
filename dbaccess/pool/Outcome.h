#ifndef DBSERVICE_DBACCESS_POOL_OUTCOME_H
#define DBSERVICE_DBACCESS_POOL_OUTCOME_H

#include <cstdint>
#include <memory>
#include <utility>

#include "dbaccess/LastError.h"
#include "dbaccess/rows/RowBuffer.h"

namespace dbaccess {

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

}  // namespace dbaccess

#endif
