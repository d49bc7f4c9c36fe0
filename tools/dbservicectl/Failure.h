#ifndef DBSERVICECTL_FAILURE_H
#define DBSERVICECTL_FAILURE_H

#include <cstdint>
#include <stdexcept>
#include <string>

#include "dbaccess/LastError.h"

namespace dbservicectl {

/// How the program ends; its man page and docs/operations.md tell the same.
enum class Exit {
    Done = 0,
    Failed = 1,
    Found = 2,  ///< `schema check` found differences, `doctor` problems
    WrongUsage = 64,
    Interrupted = 130,  ///< by Ctrl-C or SIGTERM; what was said to be done is done
};

/// Why the program ends. The text has no period at its end; what to do next stands on its own line.
class Failure : public std::runtime_error {
public:
    explicit Failure(const std::string& what, const std::string& next = "",
                     Exit exit = Exit::Failed)
        : std::runtime_error(what), next_(next), exit_(exit) {}

    const std::string& next() const { return next_; }  ///< empty when there is nothing to advise
    Exit exit() const { return exit_; }

private:
    std::string next_;
    Exit exit_;
};

/// Whether the database's own message may be shown: it may quote the statement's values.
enum class Message { Shown, LeftOut };

/// The failure of what was being done, as "creating database vms", with the advice for its number.
Failure failureOf(const dbaccess::Error& error, const std::string& doing,
                  Message message = Message::Shown);

/// Returns the answer of an operation unless it is negative, which is thrown as a Failure with what
/// `dbaccess::LastError` says.
std::int64_t check(std::int64_t answer, const std::string& doing, Message message = Message::Shown);

}  // namespace dbservicectl

#endif
