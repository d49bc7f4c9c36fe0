#ifndef DBSERVICECTL_COMMANDS_H
#define DBSERVICECTL_COMMANDS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/dbservicectl/Loader.h"
#include "tools/dbservicectl/Report.h"
#include "tools/dbservicectl/Session.h"

// The commands, each in the file of its family, and what their options say. They end by a Failure
// when they cannot do their work. Arguments.cpp has the options themselves.

namespace dbservicectl {

// Schema.cpp

/// Who makes the tables that are printed.
enum class Maker { MariaDb, MySql, Sqlite };

void createTables(Session& session);
void upgradeTables(Session& session);
void checkTables(Session& session);
void printStatements(const std::string& dbName, Maker maker);
void printDiagram();

// Grants.cpp, Doctor.cpp

void printGrants(const std::string& dbName, const std::string& kind, const std::string& account);
void examine(Session& session, Depth depth);

// List.cpp, Tree.cpp, Events.cpp

struct ListOptions {
    std::string entity;
    std::string key;
    int limit = 0;
    bool kinds = false;
};

void listRecords(Session& session, const ListOptions& options);

struct TreeName {
    const char* name;
    const char* help;
};

const std::vector<TreeName>& treeNames();
void showTree(Session& session, const std::string& name);

struct EventOptions {
    std::string from;
    std::string to;
    std::string channel;
    std::string kind = "both";
    std::int64_t page = 1;
    int pageSize = 100;
    bool all = false;

    /// How many are read at a time: one more than are shown tells whether there are others.
    int atOnce() const { return all ? 1000 : pageSize + 1; }
};

void showAlarms(Session& session, const EventOptions& options);
void showFaces(Session& session, const EventOptions& options);

// User.cpp

struct UserOptions {
    dbservice::T_UserInfo user;
    std::vector<std::string> rights;  // to be set; none are only shown
};

void addUser(Session& session, dbservice::T_UserInfo user);
void changePassword(Session& session, const std::string& name);
void logIn(Session& session, const std::string& name);
void changeRights(Session& session, const UserOptions& options);
std::vector<std::string> rightNames();

// Site.cpp, Backup.cpp, Copy.cpp

void exportSite(Session& session, const std::string& path);
void importSite(Session& session, const std::string& path, bool replace);

void backUp(Session& session, const std::string& path);
void checkBackup(const std::string& path);
void restore(Session& session, const std::string& path, const Filling& filling);

/// One side of a copy: what its options leave open is as for all commands.
struct Side {
    Target options;
    std::string passwordFile;
};

struct CopyOptions {
    Side from;
    Side to;
    Filling filling;
};

void copyDatabase(Session& session, const CopyOptions& options);

// Prune.cpp, Seed.cpp

struct PruneOptions {
    std::string before;
    std::optional<int> keepLevel;
    bool dryRun = false;
    std::uint64_t chunk = 1000;
    std::optional<int> pause;
};

void prune(Session& session, const PruneOptions& options);

struct SeedOptions {
    int devices = 0;
    int channels = 0;
    std::int64_t alarms = 0;
    std::int64_t faces = 0;
    std::uint64_t seed = 1;
    int days = 30;
    std::string until;
};

void seed(Session& session, const SeedOptions& options);

}  // namespace dbservicectl

#endif
