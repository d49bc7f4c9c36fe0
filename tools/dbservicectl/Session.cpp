#include "tools/dbservicectl/Session.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <termios.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iostream>

#include "dbaccess/settings/Settings.h"
#include "tools/dbservicectl/Interrupt.h"

namespace dbservicectl {
namespace {

/// Lets standard output go nowhere while it lives: `DBService::Initialize` writes a line there,
/// which is no data.
class Silence {
public:
    Silence() {
        std::fflush(stdout);
        const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        ::dup2(nowhere, STDOUT_FILENO);
        ::close(nowhere);
    }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;
    ~Silence() {
        std::fflush(stdout);
        ::dup2(saved_, STDOUT_FILENO);
        ::close(saved_);
    }

private:
    int saved_ = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
};

}  // namespace

std::unique_ptr<dbaccess::DataAccess> connect(const Target& target, const std::string& options) {
    auto access = std::make_unique<dbaccess::DataAccess>(target.host, target.port, target.user,
                                                         target.password, options);
    if (access->Initialize(1, 4, true, true)) return access;
    const std::string doing = "connecting to " + target.host;
    if (access->engine() == dbaccess::Engine::Server) throw failureOf(dbaccess::LastError(), doing);
    throw Failure(failureOf(dbaccess::LastError(), doing).what(),
                  "The directory must be there, and this account may use it");
}

Session::~Session() {
    dbservice::DBService::Cleanup();
}

const Target& Session::target() {
    resolve();
    if (target_.host.empty())
        throw Failure("no host is named", "Give --host HOST or --host sqlite:DIRECTORY",
                      Exit::WrongUsage);
    if (target_.dbName.empty())
        throw Failure("no database is named", "Give --database NAME", Exit::WrongUsage);
    return target_;
}

Target Session::targetAt(const std::string& host) {
    resolve();
    Target target = target_;
    target.host = host;
    return target;
}

void Session::resolve() {
    if (resolved_) return;
    dbaccess::Error error;
    const dbaccess::Settings settings = dbaccess::readSettings("", error);
    if (error) throw failureOf(error, "reading the settings");
    const auto choose = [](const std::string& option, const std::string& setting) {
        return option.empty() ? setting : option;
    };
    target_.host = choose(options_.target.host, settings.host);
    target_.port = options_.target.port != 0 ? options_.target.port : settings.port;
    target_.user = choose(options_.target.user, settings.user);
    target_.dbName = choose(options_.target.dbName, settings.database);
    target_.password = settings.password;
    if (!options_.passwordFile.empty()) target_.password = passwordIn(options_.passwordFile);
    if (options_.askPassword) target_.password = readPassword("Password of " + target_.user + ": ");
    resolved_ = true;
}

dbaccess::DataAccess& Session::access() {
    if (!access_) access_ = connect(target());
    return *access_;
}

dbservice::DBService& Session::service() {
    using dbservice::DBService;
    if (DBService* service = DBService::GetDBServiceObject()) return *service;
    dbservice::DB_CONNECTION_PROPERTY settings;
    settings.host = target().host;
    if (target().port != 0) settings.port = static_cast<int>(target().port);
    settings.user = target().user;
    settings.password = target().password;
    settings.dbName = target().dbName;
    settings.accessParamA = 1;
    int result = 0;
    {
        const Silence silence;
        result = DBService::Initialize(settings);
    }
    if (result != 1) throw failureOf(dbaccess::LastError(), "connecting to " + settings.host);
    return *DBService::GetDBServiceObject();
}

void Session::confirm(const std::string& question) const {
    if (options_.yes) return;
    if (::isatty(STDIN_FILENO) != 1)
        throw Failure(question + " Nobody is there to be asked", "Give --yes to go on");
    fmt::print(stderr, "{} [y/N] ", question);
    std::string answer;
    std::getline(std::cin, answer);
    if (answer != "y" && answer != "yes") throw Failure("nothing was changed");
}

std::string readPassword(const std::string& prompt) {
    termios shown{};
    const bool terminal = ::tcgetattr(STDIN_FILENO, &shown) == 0;
    if (terminal) {
        termios hidden = shown;
        hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden);
        fmt::print(stderr, "{}", prompt);
    }
    std::string password;
    watchForInterrupt(WhileReading::End);
    const bool read = static_cast<bool>(std::getline(std::cin, password));
    watchForInterrupt();
    if (terminal) {
        ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &shown);
        fmt::print(stderr, "\n");
    }
    throwIfInterrupted("no password was given");
    if (!read) throw Failure("no password was given");
    return password;
}

std::string passwordIn(const std::string& file) {
    std::ifstream stream(file);
    std::string password;
    if (!std::getline(stream, password)) throw Failure(file + " holds no password");
    return password;
}

void note(const std::string& text) {
    fmt::print(stderr, "{}\n", text);
}

}  // namespace dbservicectl
