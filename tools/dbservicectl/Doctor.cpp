#include <fmt/format.h>

#include <cstdlib>

#include "dbaccess/Stats.h"
#include "dbservice/convenience/Times.h"
#include "schema/Schema.h"
#include "tools/dbservicectl/Commands.h"
#include "tools/dbservicectl/Entities.h"
#include "tools/dbservicectl/Report.h"
#include "tools/dbservicectl/Rows.h"

namespace dbservicectl {
namespace {

void lookAtSchema(Session& session, Report& report) {
    schema::RecordedVersion recorded;
    check(schema::ReadVersion(session.access(), session.dbName(), recorded),
          "reading the version of the tables");
    std::vector<std::string> differences;
    check(schema::Check(session.access(), session.dbName(), differences), "reading the tables");
    report.tell("schema", fmt::format("version {}, expected {}; {} differences", recorded.version,
                                      schema::Version(), differences.size()));
    if (!differences.empty())
        report.problem("schema",
                       differences.size() == 1
                           ? differences.front()
                           : fmt::format("{}, and {} more differences", differences.front(),
                                         differences.size() - 1),
                       "'dbservicectl schema check' names all, 'schema upgrade' makes what is "
                       "missing");
}

/// Times of faces are seconds since 1970, those of alarms texts.
std::string oldest(Session& session, const std::string& table) {
    const bool isAlarm = table == "alarminfo";
    const std::string column = isAlarm ? "BeginTime" : "addTime";
    std::string time = valueOf(session.access(), session.dbName(), "min(" + column + ")",
                               table + " where " + column + (isAlarm ? ">''" : ">0"))
                           .value_or("");
    const std::int64_t seconds = std::strtoll(time.c_str(), nullptr, 10);
    if (time.empty()) return "none";
    if (isAlarm || !dbservice::isTime(seconds)) return time;
    return dbservice::timeText(dbservice::timeOf(seconds)) + " UTC";
}

/// Of this program's own connections: what lies between them and the database shows.
void lookAtPool(Report& report) {
    const std::vector<dbaccess::Stat> stats = dbaccess::Stats();
    const auto of = [&](const char* name) { return dbaccess::StatOf(stats, name); };
    const double calls = of("dbservice.client.operation.count");
    const double lost = of("dbservice.client.connection.lost");
    report.tell("pool",
                fmt::format("{:.0f} connections opened, {:.0f} lost, {:.0f} failed over; {:.0f} "
                            "calls, {:.0f} failed, {:.2f} ms each",
                            of("dbservice.client.connection.opened"), lost,
                            of("dbservice.client.connection.failed_over"), calls,
                            of("dbservice.client.operation.failed"),
                            1000 * of("db.client.operation.duration") / calls));
    if (lost > 0)
        report.problem("pool", "a connection was lost meanwhile",
                       "look into the server's log, and at what lies between");
}

}  // namespace

void examine(Session& session, Depth depth) {
    Report report;
    const bool isThere = session.access().engine() == dbaccess::Engine::Server
                             ? examineServer(session, report)
                             : examineFile(session, depth, report);
    if (isThere) {
        report.look("schema", [&] { lookAtSchema(session, report); });
        for (const Entity& entity : entities())
            if (entity.isEvent)
                report.look(std::string("oldest of ") + entity.name, [&] {
                    report.tell(std::string("oldest of ") + entity.name,
                                oldest(session, entity.table));
                });
    }
    lookAtPool(report);
    report.print(session);
    if (report.problems() != 0)
        throw Failure(fmt::format("problems found: {}", report.problems()), "", Exit::Found);
}

}  // namespace dbservicectl
