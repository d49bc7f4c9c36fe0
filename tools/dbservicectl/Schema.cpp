#include "schema/Schema.h"

#include <fmt/format.h>

#include <memory>

#include "dbaccess/error/ErrorNumber.h"
#include "schema/Steps.h"
#include "tools/dbservicectl/Commands.h"
#include "tools/dbservicectl/Diagram.h"

namespace dbservicectl {
namespace {

std::string versionIn(Session& session) {
    schema::RecordedVersion recorded;
    check(schema::ReadVersion(session.access(), session.dbName(), recorded),
          "reading the version of the tables");
    return recorded.version == 0 ? "no version recorded"
                                 : fmt::format("version {}", recorded.version);
}

}  // namespace

void createTables(Session& session) {
    // An index on a large table takes long.
    const std::unique_ptr<dbaccess::DataAccess> access =
        connect(session.target(), "answer-timeout=24h\ncall-timeout=24h");
    std::vector<schema::Step> steps;
    const int result = schema::readMissing(*access, session.dbName(), steps);
    if (result == -dbaccess::kUnknownDatabase) {
        note("create database, and all that belongs into it");
    } else {
        check(result, "reading the tables");
        for (const schema::Step& step : steps)
            note(step.what);
    }
    check(schema::Create(*access, session.dbName()), "creating the tables");
    note(fmt::format("{} has all tables, {}", session.dbName(), versionIn(session)));
}

void checkTables(Session& session) {
    std::vector<std::string> differences;
    check(schema::Check(session.access(), session.dbName(), differences), "reading the tables");
    Output output = session.output({{"Difference"}});
    for (const std::string& difference : differences)
        output.add({difference});
    if (!differences.empty() || session.format() != Format::Table) output.finish();
    if (differences.empty()) {
        note(fmt::format("{} is as expected, {}", session.dbName(), versionIn(session)));
        return;
    }
    throw Failure(fmt::format("differences found: {}", differences.size()),
                  "'dbservicectl schema upgrade' makes what is missing; docs/schema.md tells the "
                  "rest",
                  Exit::Found);
}

/// The same for a database that is there.
void upgradeTables(Session& session) {
    note(fmt::format("{} had {}", session.dbName(), versionIn(session)));
    createTables(session);
}

void printStatements(const std::string& dbName, Maker maker) {
    if (dbName.find('`') != std::string::npos)
        throw Failure("a database's name holds no backtick", "", Exit::WrongUsage);
    const auto engine =
        maker == Maker::Sqlite ? dbaccess::Engine::Embedded : dbaccess::Engine::Server;
    const char* collation = maker == Maker::MySql ? "utf8mb4_0900_bin" : "utf8mb4_nopad_bin";
    for (const std::string& statement : schema::statementsFor(engine, collation, dbName))
        fmt::print("{};\n", statement);
}

void printDiagram() {
    fmt::print("{}", diagram());
}

}  // namespace dbservicectl
