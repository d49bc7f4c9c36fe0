#include "dbaccess/Stats.h"

#include "dbaccess/stats/Counters.h"

namespace dbaccess {

Counters counters;

namespace {

struct Figure {
    const char* name;
    const char* unit;
    Counter Counters::*counter;
};

constexpr double kPerNanosecond = 1e-9;

/// All that only grow; docs/diagnostics.md describes them in this order.
constexpr Figure kGrowing[] = {
    {"dbservice.client.connection.acquired", "{connection}", &Counters::acquired},
    {"db.client.connection.wait_time", "s", &Counters::waitTime},
    {"db.client.connection.timeouts", "{timeout}", &Counters::waitTimeouts},
    {"dbservice.client.connection.opened", "{connection}", &Counters::opened},
    {"dbservice.client.connection.lost", "{connection}", &Counters::lost},
    {"dbservice.client.connection.failed_over", "{failover}", &Counters::failedOver},
    {"dbservice.client.operation.count", "{operation}", &Counters::statements},
    {"db.client.operation.duration", "s", &Counters::statementTime},
    {"dbservice.client.operation.failed", "{operation}", &Counters::failed},
    {"dbservice.client.operation.in_doubt", "{operation}", &Counters::inDoubt},
    {"dbservice.client.operation.retried", "{retry}", &Counters::retried},
    {"dbservice.client.statement.kept_hits", "{statement}", &Counters::keptHits},
};

}  // namespace

std::vector<Stat> Stats() {
    const std::int64_t open = counters.open.get();
    const std::int64_t idle = counters.idle.get();
    const auto now = [](const char* name, const char* state, const char* unit, std::int64_t value) {
        return Stat{name, state, unit, false, static_cast<double>(value > 0 ? value : 0)};
    };
    std::vector<Stat> stats{
        now("dbservice.client.connection.open", "", "{connection}", open),
        now("db.client.connection.count", "idle", "{connection}", idle),
        now("db.client.connection.count", "used", "{connection}", open - idle),
        now("db.client.connection.pending_requests", "", "{request}", counters.waiting.get()),
    };
    for (const Figure& figure : kGrowing) {
        const auto count = static_cast<double>((counters.*figure.counter).get());
        const bool time = figure.unit[0] == 's';
        stats.push_back(
            {figure.name, "", figure.unit, true, time ? count * kPerNanosecond : count});
    }
    return stats;
}

void ResetStats() {
    for (const Figure& figure : kGrowing)
        (counters.*figure.counter).clear();
}

void forgetParentsCounts() {
    for (Counter* level : {&counters.open, &counters.idle, &counters.waiting})
        level->clear();
    ResetStats();
}

}  // namespace dbaccess
