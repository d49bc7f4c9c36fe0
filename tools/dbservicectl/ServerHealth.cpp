#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>

#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/pool/HostText.h"
#include "schema/Tables.h"
#include "tools/dbservicectl/Report.h"
#include "tools/dbservicectl/Rights.h"
#include "tools/dbservicectl/Rows.h"

namespace dbservicectl {
namespace {

// The thresholds; docs/operations.md names them.
constexpr double kMostClockSeconds = 2;
constexpr std::uint64_t kLeastPacket = 16ULL << 20U;  // what an embedded database takes
constexpr std::uint64_t kMostConnectionsPercent = 80;

using Values = std::map<std::string, std::string>;

std::uint64_t numberOf(const std::string& text) {
    return std::strtoull(text.c_str(), nullptr, 10);
}

class ServerExam {
public:
    ServerExam(Session& session, Report& report) : session_(session), report_(report) {}

    void run() {
        variables_ = read("show variables");
        status_ = read("show status");
        lookAtVersion();
        lookAtNode();
        lookAtTls();
        lookAtPacket();
        lookAtConnections();
        report_.tell("account", valueOf(session_.access(), "", "current_user()").value_or(""));
        report_.look("clock", [&] { lookAtClock(); });
    }

    void runOnDatabase() {
        report_.look("character set", [&] { lookAtCharacterSet(); });
        report_.look("account", [&] { lookAtRights(); });
        report_.look("tables", [&] { lookAtTables(); });
    }

private:
    Values read(const std::string& statement) {
        Values values;
        forEachRow(
            session_.access(), "", statement, {{"Variable_name"}, {"Value"}},
            [&](std::vector<Cell> row) { values[row[0].value_or("")] = row[1].value_or(""); });
        return values;
    }

    /// Empty for a variable that this server does not have.
    const std::string& variable(const std::string& name) { return variables_[name]; }
    bool isOn(const std::string& name) { return variable(name) == "ON"; }

    void lookAtVersion() {
        const std::string& version = variable("version");
        const bool isMariaDb = version.find("MariaDB") != std::string::npos;
        std::array<int, 3> is{};
        static_cast<void>(std::sscanf(version.c_str(), "%d.%d.%d", &is[0], &is[1], &is[2]));
        report_.tell("engine", isMariaDb ? "MariaDB server" : "MySQL server");
        report_.tell("version", version);
        const std::array<int, 3> least =
            isMariaDb ? std::array<int, 3>{10, 11, 0} : std::array<int, 3>{8, 0, 17};
        if (is < least)
            report_.problem("version", "older than what the tables were tried on",
                            fmt::format("update the server to {}.{}.{} or newer", least[0],
                                        least[1], least[2]));
    }

    void lookAtNode() {
        report_.tell("server", variable("hostname") + ":" + variable("port"));
        for (const char* mode : {"read_only", "super_read_only", "offline_mode"})
            if (isOn(mode) || variable(mode) == "1")
                report_.problem("server", fmt::format("takes no writes: {} is on", mode),
                                fmt::format("name another server, or 'set global {}=0'", mode));
        if (!isOn("wsrep_on")) return;
        const std::string& addresses = variable("wsrep_cluster_address");
        const std::uint64_t size = numberOf(status_["wsrep_cluster_size"]);
        const auto named =
            static_cast<std::uint64_t>(std::count(addresses.begin(), addresses.end(), ',') + 1);
        report_.tell(
            "cluster",
            fmt::format("{} nodes, {}, {}, ready: {}", size, status_["wsrep_cluster_status"],
                        status_["wsrep_local_state_comment"], status_["wsrep_ready"]));
        if (status_["wsrep_ready"] != "ON" || status_["wsrep_cluster_status"] != "Primary")
            report_.problem("cluster", "this node takes no statements",
                            "see to its connection to the others; without a majority of nodes, "
                            "start those that are down");
        else if (status_["wsrep_local_state_comment"] != "Synced")
            report_.problem("cluster", "this node may be behind the others",
                            "wait until it has caught up, or end its desync");
        if (size < named)
            report_.problem("cluster", fmt::format("{} of {} nodes are there", size, named),
                            "start the others");
    }

    void lookAtTls() {
        const std::string& cipher = status_["Ssl_cipher"];
        report_.tell("TLS", cipher.empty() ? "none" : status_["Ssl_version"] + " " + cipher);
        const Target& target = session_.target();
        const auto servers = dbaccess::parseHost(target.host, target.port).servers;
        const bool isLocal = std::all_of(servers.begin(), servers.end(), [](const auto& server) {
            return !server.socket.empty() || server.name == "localhost" || server.name == "::1" ||
                   server.name.rfind("127.", 0) == 0;
        });
        if (cipher.empty() && !isLocal)
            report_.problem("TLS", "passwords and records go over the network in clear",
                            "set ssl-ca or ssl-mode (docs/settings.md)");
    }

    void lookAtPacket() {
        const std::uint64_t limit = numberOf(variable("max_allowed_packet"));
        report_.tell("packet limit", fmt::format("{} bytes", limit));
        if (limit < kLeastPacket)
            report_.problem("packet limit", "long lists are refused with error 1153",
                            "set max_allowed_packet=16M or more on the server");
    }

    void lookAtConnections() {
        const std::uint64_t open = numberOf(status_["Threads_connected"]);
        const std::uint64_t most = numberOf(variable("max_connections"));
        report_.tell("connections", fmt::format("{} of {}, at most {} so far", open, most,
                                                status_["Max_used_connections"]));
        if (open * 100 > most * kMostConnectionsPercent)
            report_.problem("connections", "nearly all are in use",
                            "raise max_connections, or lower accessParamB of the programs");
    }

    void lookAtClock() {
        using std::chrono::duration;
        using std::chrono::system_clock;
        const auto before = system_clock::now();
        const Cell answer = valueOf(session_.access(), "",
                                    "timestampdiff(microsecond,'1970-01-01',utc_timestamp(6))");
        const duration<double> onTheWay = system_clock::now() - before;
        const duration<double> here = before.time_since_epoch() + onTheWay / 2;
        const double off = static_cast<double>(numberOf(answer.value_or("0"))) / 1e6 - here.count();
        const std::string& zone = variable("time_zone");
        report_.tell("clock", fmt::format("{:.3f} s {} this machine's, time zone {}", std::abs(off),
                                          off < 0 ? "behind" : "ahead of",
                                          zone == "SYSTEM" ? variable("system_time_zone") : zone));
        if (std::abs(off) - onTheWay.count() / 2 > kMostClockSeconds)
            report_.problem("clock", "the server and this machine disagree on the time",
                            "let both follow the same time server");
    }

    void lookAtCharacterSet() {
        const Cell set = valueOf(session_.access(), session_.dbName(), "@@character_set_database");
        report_.tell("character set", fmt::format("database {}, connection {}", set.value_or(""),
                                                  variable("character_set_connection")));
        if (set != "utf8mb4")
            report_.problem(
                "character set", "columns that are added get another one than utf8mb4",
                fmt::format("alter database `{}` character set utf8mb4", session_.dbName()));
    }

    void lookAtRights() {
        for (const std::string& right : runningAccount().rights) {
            std::vector<std::string> tables;
            for (const schema::Table& table : schema::tables())
                if (isMissing(right, table)) tables.emplace_back(table.name);
            if (tables.empty()) continue;
            report_.problem("account",
                            fmt::format("{} is missing on {} of {} tables, {} is the first", right,
                                        tables.size(), schema::tables().size(), tables.front()),
                            "'dbservicectl grants --kind running' prints what to run");
        }
    }

    /// Asks the server, which knows about roles and patterns: EXPLAIN takes the rights of the
    /// statement and runs nothing.
    bool isMissing(const std::string& right, const schema::Table& table) {
        const std::string name = table.name;
        const std::string key = table.primaryKey;
        const Values forms{{"SELECT", "select * from " + name + " limit 0"},
                           {"INSERT", "insert into " + name + "(" + key + ") values('1')"},
                           {"UPDATE", "update " + name + " set " + key + "='1' where 1=0"},
                           {"DELETE", "delete from " + name + " where 1=0"}};
        dbaccess::DataAccess& access = session_.access();
        dbaccess::ResultSet* rows = access.Query(session_.dbName(), "explain " + forms.at(right));
        dbaccess::DataAccess::ReleaseResulitSet(rows);
        if (rows != nullptr) return false;
        const int number = dbaccess::LastError().number;
        if (number == dbaccess::kTableAccessDenied || number == dbaccess::kDatabaseAccessDenied)
            return true;
        // That a table is missing, or not to be written, is told by others.
        if (number >= 2000 && number < 3000)
            throw failureOf(dbaccess::LastError(), "looking at the account's rights");
        return false;
    }

    void lookAtTables() {
        std::uint64_t all = 0;
        // MySQL would show figures of yesterday without the hint.
        forEachRow(session_.access(), session_.dbName(),
                   "select /*+ SET_VAR(information_schema_stats_expiry=0) */ TABLE_NAME, "
                   "TABLE_ROWS, DATA_LENGTH+INDEX_LENGTH as Bytes from information_schema.TABLES "
                   "where TABLE_SCHEMA=database() and TABLE_ROWS>0 order by TABLE_NAME",
                   {{"TABLE_NAME"}, {"TABLE_ROWS"}, {"Bytes"}}, [&](std::vector<Cell> row) {
                       const std::uint64_t bytes = numberOf(row[2].value_or("0"));
                       all += bytes;
                       report_.tell("table " + row[0].value_or(""),
                                    fmt::format("rows: about {}, {}", row[1].value_or("0"),
                                                sizeText(bytes)));
                   });
        report_.tell("tables", sizeText(all));
    }

    Session& session_;
    Report& report_;
    Values variables_;
    Values status_;
};

}  // namespace

bool examineServer(Session& session, Report& report) {
    ServerExam exam(session, report);
    exam.run();
    // Every part of it would fail alike.
    if (!report.look("database", [&] { valueOf(session.access(), session.dbName(), "1"); }))
        return false;
    exam.runOnDatabase();
    return true;
}

}  // namespace dbservicectl
