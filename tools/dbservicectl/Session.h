#ifndef DBSERVICECTL_SESSION_H
#define DBSERVICECTL_SESSION_H

#include <memory>
#include <string>
#include <vector>

#include "dbaccess/DataAccess.h"
#include "dbservice/DBService.h"
#include "tools/dbservicectl/Failure.h"
#include "tools/dbservicectl/Output.h"

namespace dbservicectl {

/// Where a database is and who logs in.
struct Target {
    std::string host;
    unsigned int port = 0;  ///< 0: the usual one
    std::string user;
    std::string password;
    std::string dbName;
};

/// Settings for lists of statements that may take longer than those of a service.
constexpr const char* kLongCalls = "call-timeout=24h";

/// A connected access layer of few connections. Throws a Failure when nothing answers.
/// @param options  further settings, one `key=value` on a line.
std::unique_ptr<dbaccess::DataAccess> connect(const Target& target,
                                              const std::string& options = "");

/// What the options that all commands share say.
struct CommonOptions {
    Target target;
    std::string passwordFile;
    bool askPassword = false;
    bool yes = false;
    Format format = Format::Table;
};

/// What all commands have in common: the options, and the connections that they ask for, which are
/// made when a command first needs them.
class Session {
public:
    /// @param options  outlive it, and are as they shall be before the first command.
    explicit Session(const CommonOptions& options) : options_(options) {}
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();

    /// What the options say; what they leave open, as the environment and the option files do.
    const Target& target();

    /// The same with another host, for commands that name their own: there need not be one
    /// otherwise, nor a database.
    Target targetAt(const std::string& host);

    dbaccess::DataAccess& access();
    dbservice::DBService& service();
    const std::string& dbName() { return target().dbName; }

    Output output(std::vector<Column> columns) const {
        return {options_.format, std::move(columns)};
    }
    Format format() const { return options_.format; }

    /// Asks whether to go on, as "Delete 12000 alarms?"; `--yes` is the answer where nobody can be
    /// asked. Throws a Failure unless the answer is yes.
    void confirm(const std::string& question) const;

private:
    void resolve();

    const CommonOptions& options_;
    bool resolved_ = false;
    Target target_;
    std::unique_ptr<dbaccess::DataAccess> access_;
};

/// Reads a line without showing what is typed, or from standard input when that is no terminal.
std::string readPassword(const std::string& prompt);

/// The first line of a file. Throws a Failure when there is none.
std::string passwordIn(const std::string& file);

/// A note for who watches, on standard error.
void note(const std::string& text);

}  // namespace dbservicectl

#endif
