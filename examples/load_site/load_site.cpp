// Keeps a site in a database: creates what is missing, stores what the site's file describes,
// changes and deletes some of it, and shows what then is there.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <chrono>
#include <exception>
#include <filesystem>
#include <fstream>
#include <memory>

#include "dbaccess/DataAccess.h"
#include "examples/load_site/Loading.h"
#include "schema/Schema.h"

namespace {

constexpr int kFailure = 1;
constexpr int kWrongUsage = 2;

using dbservice::DB_CONNECTION_PROPERTY;
using dbservice::DBService;

struct Options {
    std::string siteFile = DEFAULT_SITE_FILE;
    std::string directory = "run-data";
    std::string passwordFile;
    DB_CONNECTION_PROPERTY settings;
};

void addOptions(CLI::App& app, Options& options) {
    app.option_defaults()->always_capture_default();
    app.add_option("--site", options.siteFile, "The site's description")->check(CLI::ExistingFile);
    auto* data = app.add_option("--data", options.directory,
                                "Use the embedded engine, its files in this directory");
    auto* server = app.add_option("--server", options.settings.host, "Use the server at this host");
    app.add_option("--port", options.settings.port, "TCP port of the server")
        ->check(CLI::Range(1, 65535))
        ->needs(server);
    app.add_option("--user", options.settings.user, "Account on the server")->needs(server);
    app.add_option("--password-file", options.passwordFile, "File with the account's password")
        ->check(CLI::ExistingFile)
        ->needs(server);
    // Without a name it cannot be given on the command line, where other users could read it.
    app.add_option("", options.settings.password)->envname("DBSERVICE_PASSWORD");
    options.settings.dbName = "site";
    app.add_option("--database", options.settings.dbName, "Name of the database");
    server->excludes(data);
    app.footer(
        "Without --password-file the password is read from DBSERVICE_PASSWORD.\n"
        "Exit codes: 0 done, 1 failure, 2 wrong usage.");
}

/// The settings that the options ask for.
DB_CONNECTION_PROPERTY settingsOf(const Options& options) {
    DB_CONNECTION_PROPERTY settings = options.settings;
    if (settings.host.empty()) {
        std::filesystem::create_directories(options.directory);
        settings.host = "sqlite:" + options.directory;
    }
    if (!options.passwordFile.empty()) {
        std::ifstream stream(options.passwordFile);
        if (!std::getline(stream, settings.password))
            throw std::runtime_error(options.passwordFile + " holds no password");
    }
    return settings;
}

/// A connection to the database, of which all is created that is missing.
std::unique_ptr<dbaccess::DataAccess> connect(const DB_CONNECTION_PROPERTY& settings) {
    auto access = std::make_unique<dbaccess::DataAccess>(
        settings.host, static_cast<unsigned int>(settings.port), settings.user, settings.password);
    if (!access->Initialize(1, 1, true, true))
        check(dbservice::Result::lastFailure(), "Connecting to " + settings.host);
    dbservice::check(schema::Create(*access, settings.dbName),
                     "Creating database " + settings.dbName);
    return access;
}

void run(const Options& options) {
    const demo::Site site = demo::readSite(options.siteFile);
    const DB_CONNECTION_PROPERTY settings = settingsOf(options);
    const auto start = std::chrono::steady_clock::now();
    demo::showProgress("Creating what is missing in database " + settings.dbName);
    const auto access = connect(settings);
    demo::clearProgress();
    if (DBService::Initialize(settings) != 1)
        check(dbservice::Result::lastFailure(), "Connecting to " + settings.host);
    DBService& service = *DBService::GetDBServiceObject();
    demo::Table summary({"What", "Replaced", "Stored", "Changed", "Deleted"});
    demo::loadServers(service, site, summary);
    demo::loadUsers(service, site, summary);
    demo::loadRecording(service, site, summary);
    demo::loadDevices(service, site, summary);
    demo::loadLayouts(service, site, summary);
    demo::loadMaps(service, *access, site, summary);
    demo::loadEvents(service, site, summary);
    summary.print(site.name);
    DBService::Cleanup();
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    fmt::print("\n{:.3f} s in database {} at {}\n", time.count(), settings.dbName, settings.host);
}

int fail(const std::string& why) {
    demo::clearProgress();
    fmt::print(stderr, "load_site: {}\n", why);
    DBService::Cleanup();
    return kFailure;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        CLI::App app("Loads a site into a database and shows it");
        Options options;
        addOptions(app, options);
        try {
            app.parse(argc, argv);
        } catch (const CLI::ParseError& error) {
            return app.exit(error) == 0 ? 0 : kWrongUsage;  // --help is 0
        }
        run(options);
        return 0;
    } catch (const dbservice::DatabaseError& error) {
        return fail(fmt::format("{}: {}", error.what(), error.error().message));
    } catch (const std::exception& error) {
        return fail(error.what());
    }
}
