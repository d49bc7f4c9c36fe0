#include "tools/dbservicectl/Arguments.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <functional>
#include <limits>
#include <map>
#include <memory>

#include "base/Version.h"
#include "tools/dbservicectl/Commands.h"
#include "tools/dbservicectl/Rights.h"

namespace dbservicectl {
namespace {

void addCommonOptions(CLI::App& app, CommonOptions& options) {
    const std::string group = "Connection";
    app.add_option("--host", options.target.host,
                   "A server, servers of a cluster, a unix socket's path, or sqlite:DIRECTORY")
        ->group(group);
    app.add_option("--port", options.target.port, "TCP port of servers that name none")
        ->check(CLI::Range(1, 65535))
        ->group(group);
    app.add_option("--user", options.target.user, "Account on the server")->group(group);
    auto* file = app.add_option("--password-file", options.passwordFile,
                                "File whose first line is the account's password")
                     ->check(CLI::ExistingFile)
                     ->group(group);
    app.add_flag("--ask-password", options.askPassword, "Ask for the account's password")
        ->excludes(file)
        ->group(group);
    app.add_option("--database", options.target.dbName, "Name of the database")->group(group);
    const std::map<std::string, Format> formats{
        {"table", Format::Table}, {"json", Format::Json}, {"csv", Format::Csv}};
    app.add_option("--format", options.format, "How lists are written: table, json or csv")
        ->transform(CLI::CheckedTransformer(formats).description(""));
    app.add_flag("--yes", options.yes, "Go on where a command would ask first");
}

void addSchema(CLI::App& app, Session& session) {
    CLI::App* family = app.add_subcommand("schema", "Make and compare the tables");
    family->require_subcommand(1);
    family->add_subcommand("create", "Make the database and the tables, or what of them is missing")
        ->callback([&session] { createTables(session); });
    family->add_subcommand("check", "Show what differs from what is expected; exit code 2 then")
        ->callback([&session] { checkTables(session); });
    family->add_subcommand("upgrade", "Bring the tables of an older version up to date")
        ->callback([&session] { upgradeTables(session); });

    auto maker = std::make_shared<Maker>(Maker::MariaDb);
    const std::map<std::string, Maker> makers{
        {"mariadb", Maker::MariaDb}, {"mysql", Maker::MySql}, {"sqlite", Maker::Sqlite}};
    CLI::App* print = family->add_subcommand(
        "print-sql", "Print the statements that make the tables, without a connection");
    print->add_option("--engine", *maker, "For mariadb (when left out), mysql or sqlite")
        ->transform(CLI::CheckedTransformer(makers).description(""));
    print->callback([&session, maker] { printStatements(session.targetAt("").dbName, *maker); });

    family->add_subcommand("diagram", "Print the tables and their references for Graphviz")
        ->callback(printDiagram);
}

void addDoctor(CLI::App& app, Session& session) {
    CLI::App* command = app.add_subcommand(
        "doctor", "Examine the database and say what is wrong; exit code 2 when anything is");
    auto quick = std::make_shared<bool>(false);
    auto full = std::make_shared<bool>(false);
    CLI::Option* flag =
        command->add_flag("--quick", *quick, "Embedded: do not read the whole file");
    command->add_flag("--full", *full, "Embedded: read all of it, however long that takes")
        ->excludes(flag);
    command->callback([&session, quick, full] {
        examine(session, *quick ? Depth::Quick : *full ? Depth::Full : Depth::Usual);
    });
}

void addGrants(CLI::App& app, Session& session) {
    struct Options {
        std::string kind;
        std::string account;
    };
    auto options = std::make_shared<Options>();
    CLI::App* command =
        app.add_subcommand("grants", "Print the statements that give accounts the least rights");
    std::vector<std::string> names;
    for (const AccountKind& kind : accountKinds())
        names.push_back(kind.name);
    CLI::Option* kind =
        command
            ->add_option("--kind", options->kind,
                         fmt::format("What the account is for: {}; all when left out",
                                     fmt::join(names, ", ")))
            ->check(CLI::IsMember(names).description(""));
    command->add_option("--account", options->account, "The account, USER@HOST")->needs(kind);
    command->callback([&session, options] {
        printGrants(session.targetAt("").dbName, options->kind, options->account);
    });
}

void addList(CLI::App& app, Session& session) {
    auto options = std::make_shared<ListOptions>();
    CLI::App* command = app.add_subcommand("list", "Show the records of one kind");
    auto* kinds = command->add_flag("--kinds", options->kinds, "Show what kinds there are");
    command->add_option("kind", options->entity, "As devices, channels, users, or a table's name")
        ->excludes(kinds);
    command->add_option("--key", options->key, "Only the record with this key");
    command->add_option("--limit", options->limit, "At most so many")->check(CLI::PositiveNumber);
    command->callback([&session, options] { listRecords(session, *options); });
}

void addTree(CLI::App& app, Session& session) {
    CLI::App* command = app.add_subcommand("tree", "Show what hangs under what");
    command->require_subcommand(1);
    for (const TreeName& tree : treeNames())
        command->add_subcommand(tree.name, tree.help)->callback([&session, &tree] {
            showTree(session, tree.name);
        });
}

void addRange(CLI::App& command, EventOptions& options) {
    command.add_option("--from", options.from,
                       "First time: 2026-03-02 08:00 (local) or 2026-03-02T08:00:00+01:00");
    command.add_option("--to", options.to, "First time behind the range");
    auto* page = command.add_option("--page", options.page, "Which page, counted from 1")
                     ->check(CLI::Range(1, std::numeric_limits<int>::max()));
    command.add_option("--page-size", options.pageSize, "Events on a page, usually 100")
        ->check(CLI::Range(1, 100000));
    command.add_flag("--all", options.all, "All pages")->excludes(page);
}

void addEvents(CLI::App& app, Session& session) {
    auto ofAlarms = std::make_shared<EventOptions>();
    CLI::App* alarms = app.add_subcommand("alarms", "Show the alarms that begin in a time range");
    addRange(*alarms, *ofAlarms);
    alarms->add_option("--channel", ofAlarms->channel, "Only alarms of the channel with this key");
    alarms->callback([&session, ofAlarms] { showAlarms(session, *ofAlarms); });

    auto ofFaces = std::make_shared<EventOptions>();
    CLI::App* faces = app.add_subcommand("faces", "Show the faces of a time range");
    faces->add_option("kind", ofFaces->kind, "captures, comparisons or both")
        ->check(CLI::IsMember({"captures", "comparisons", "both"}).description(""));
    addRange(*faces, *ofFaces);
    faces->callback([&session, ofFaces] { showFaces(session, *ofFaces); });
}

void addUser(CLI::App& app, Session& session) {
    auto options = std::make_shared<UserOptions>();
    dbservice::T_UserInfo& user = options->user;
    CLI::App* family = app.add_subcommand("user", "Add users, change their passwords and rights");
    family->require_subcommand(1);
    const auto command = [&](const char* name, const char* what, std::function<void()> run) {
        CLI::App* added = family->add_subcommand(name, what);
        added->add_option("name", user.UserName, "The name to log in with")->required();
        added->callback(std::move(run));
        return added;
    };

    // Passwords are typed, or read from standard input: a command line can be seen by everybody.
    CLI::App* adding = command("add", "Add a user; the password is asked for",
                               [&session, options] { addUser(session, options->user); });
    adding->add_option("--user-id", user.UserId, "The user's id in other systems");
    adding->add_option("--type", user.Type, "The kind of user, a number of the programs' own");
    adding->add_option("--directory-path", user.AdsPath, "Path of a directory account");
    adding->add_option("--directory-sid", user.SId, "Security identifier of a directory account");
    adding->add_option("--directory-name", user.SamacCountName, "Name of a directory account");

    command("passwd", "Change a password, which is asked for",
            [&session, options] { changePassword(session, options->user.UserName); });
    command("login", "Try whether a user may log in; the password is asked for",
            [&session, options] { logIn(session, options->user.UserName); });

    CLI::App* granting = command("rights", "Show a user's rights, or set them",
                                 [&session, options] { changeRights(session, *options); });
    granting
        ->add_option(
            "--set", options->rights,
            "These and no others, with commas: " + fmt::format("{}", fmt::join(rightNames(), ", ")))
        ->delimiter(',')
        ->check(CLI::IsMember(rightNames()).description(""));
}

void addSite(CLI::App& app, Session& session) {
    auto file = std::make_shared<std::string>();
    auto replace = std::make_shared<bool>(false);
    CLI::App* out = app.add_subcommand("export", "Write the whole configuration to a file");
    out->add_option("file", *file, "The file; it gets passwords and is readable to you alone")
        ->required();
    out->callback([&session, file] { exportSite(session, *file); });
    CLI::App* in = app.add_subcommand("import", "Read a configuration from a file, all or nothing");
    in->add_option("file", *file, "What 'export' wrote, or of the same form")->required();
    in->add_flag("--replace", *replace, "Delete the configuration that is there");
    in->callback([&session, file, replace] { importSite(session, *file, *replace); });
}

void addFilling(CLI::App& command, Filling& filling) {
    auto* replace = command.add_flag("--replace", filling.replace, "Delete what is there before");
    command.add_flag("--resume", filling.resume, "Go on where an interrupted run ended")
        ->excludes(replace);
}

void addBackup(CLI::App& app, Session& session) {
    auto path = std::make_shared<std::string>();
    CLI::App* out = app.add_subcommand("backup", "Write the whole database to a file");
    out->add_option("file", *path, "The file; it gets passwords and is readable to you alone")
        ->required();
    out->callback([&session, path] { backUp(session, *path); });

    auto filling = std::make_shared<Filling>();
    auto check = std::make_shared<bool>(false);
    CLI::App* in = app.add_subcommand("restore", "Fill a database from a backup, and compare");
    in->add_option("file", *path, "What 'backup' wrote, from either engine")->required();
    in->add_flag("--check", *check, "Only find out whether the file is whole");
    addFilling(*in, *filling);
    in->callback([&session, path, check, filling] {
        *check ? checkBackup(*path) : restore(session, *path, *filling);
    });
}

void addSide(CLI::App& command, Side& side, const std::string& name, const std::string& what) {
    const std::string option = "--" + name;
    command.add_option(option, side.options.host, "Host of the database " + what)->required();
    command.add_option(option + "-database", side.options.dbName, "Its name");
    command.add_option(option + "-port", side.options.port, "TCP port of servers that name none")
        ->check(CLI::Range(1, 65535));
    command.add_option(option + "-user", side.options.user, "Account there");
    command.add_option(option + "-password-file", side.passwordFile, "File with its password")
        ->check(CLI::ExistingFile);
}

void addCopy(CLI::App& app, Session& session) {
    auto options = std::make_shared<CopyOptions>();
    CLI::App* command =
        app.add_subcommand("copy", "Copy a database to another host or engine, and compare");
    addSide(*command, options->from, "from", "that is read");
    addSide(*command, options->to, "to", "that is filled");
    addFilling(*command, options->filling);
    command->callback([&session, options] { copyDatabase(session, *options); });
}

void addPrune(CLI::App& app, Session& session) {
    auto options = std::make_shared<PruneOptions>();
    CLI::App* command =
        app.add_subcommand("prune", "Delete the alarms and faces from before a time");
    command
        ->add_option("--before", options->before,
                     "Alarms that began, and faces from, before this time: 2026-03-02 08:00")
        ->required();
    command->add_option("--keep-alarm-level", options->keepLevel,
                        "Keep alarms of this level and above, and those without one");
    command->add_flag("--dry-run", options->dryRun, "Only count");
    command
        ->add_option("--chunk", options->chunk,
                     "Most rows looked at by one deleting statement, usually 1000")
        ->check(CLI::Range(1, 1000000));
    command
        ->add_option("--pause", options->pause,
                     "Milliseconds behind each of them, usually as long as it took")
        ->check(CLI::Range(0, 60000));
    command->callback([&session, options] { prune(session, *options); });
}

void addSeed(CLI::App& app, Session& session) {
    auto options = std::make_shared<SeedOptions>();
    CLI::App* command = app.add_subcommand("seed", "Store test data, as for trying out loads");
    const auto most = std::numeric_limits<int>::max();
    command->add_option("--devices", options->devices, "How many, and a server for every 64")
        ->check(CLI::Range(0, 1000000));
    command->add_option("--channels", options->channels, "How many, evenly on the devices")
        ->check(CLI::Range(0, 1000000));
    command->add_option("--alarms", options->alarms, "How many, by chance on the channels")
        ->check(CLI::Range(0, most));
    command
        ->add_option("--faces", options->faces, "How many captures, and a comparison for every 20")
        ->check(CLI::Range(0, most));
    command->add_option("--days", options->days, "Days that the events are spread over, usually 30")
        ->check(CLI::Range(1, 10000));
    command->add_option("--until", options->until, "When they end, usually now: 2026-03-02 08:00");
    command->add_option("--seed", options->seed, "The same number gives the same data");
    command->callback([&session, options] { seed(session, *options); });
}

}  // namespace

int runCommand(int argc, char** argv) {
    CLI::App app("Looks after the database of a video-surveillance management system",
                 "dbservicectl");
    CommonOptions options;
    Session session(options);
    app.require_subcommand(1);
    app.fallthrough();  // the common options may stand behind the command as well
    app.set_version_flag("--version", DBSERVICE_VERSION);
    app.set_help_all_flag("--help-all", "Show the help of all commands");
    addCommonOptions(app, options);
    addSchema(app, session);
    addDoctor(app, session);
    addGrants(app, session);
    addList(app, session);
    addTree(app, session);
    addEvents(app, session);
    addUser(app, session);
    addSite(app, session);
    addBackup(app, session);
    addCopy(app, session);
    addPrune(app, session);
    addSeed(app, session);
    // Behind the commands, which would take it over.
    app.footer(
        "What --host, --user and --database leave open is taken from DBSERVICE_HOST, _USER,\n"
        "_PASSWORD and _DATABASE or from the group [dbservice] of the client's option files.\n"
        "Exit codes: 0 done, 1 failed, 2 differences or problems found, 64 wrong usage,\n"
        "130 interrupted.");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : static_cast<int>(Exit::WrongUsage);  // --help is 0
    }
    return 0;
}

}  // namespace dbservicectl
