#ifndef DBSERVICE_DBACCESS_POOL_STATEMENTRUNNER_H
#define DBSERVICE_DBACCESS_POOL_STATEMENTRUNNER_H

#include <memory>
#include <string>
#include <vector>

#include "dbaccess/pool/Connection.h"
#include "dbaccess/pool/Pool.h"

namespace dbaccess {

/// Runs statements on pooled connections, and runs them again where that cannot make a write take
/// effect twice.
///
/// Threads: any number at once.
class StatementRunner {
public:
    explicit StatementRunner(std::unique_ptr<Connector> connector,
                             std::chrono::milliseconds callTimeout = Timeouts().call)
        : callTimeout_(callTimeout), pool_(std::move(connector)) {}

    /// As Pool::open.
    bool open(const PoolSettings& settings, Error& error) { return pool_.open(settings, error); }

    /// @param begin  of the call, whose time is limited.
    Outcome run(const std::string& dbName, const Statement& statement,
                TimePoint begin = Clock::now());

    /// Runs all in one transaction; affectedRows is their sum.
    Outcome run(const std::string& dbName, const std::vector<Statement>& statements,
                TimePoint begin = Clock::now());

private:
    const std::chrono::milliseconds callTimeout_;
    Pool pool_;
};

}  // namespace dbaccess

#endif
