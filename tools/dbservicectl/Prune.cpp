#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <optional>
#include <thread>

#include "dbservice/Convenience.h"
#include "tools/dbservicectl/Commands.h"
#include "tools/dbservicectl/Interrupt.h"
#include "tools/dbservicectl/LocalTime.h"
#include "tools/dbservicectl/Progress.h"
#include "tools/dbservicectl/Rows.h"

namespace dbservicectl {
namespace {

using Clock = std::chrono::steady_clock;

/// Row numbers of one counting statement: short enough for any statement's time limit.
constexpr std::uint64_t kCounted = 50000;

// How long a deleting statement is to take, for which a writer may have to wait.
constexpr auto kShort = std::chrono::milliseconds(5);
constexpr auto kLong = std::chrono::milliseconds(15);

/// A table of events, whose rows are numbered in the order of adding.
struct Events {
    const char* table;
    const char* name;  ///< as "alarms"
    const char* number;
    std::string tooOld;
    std::string undated;  ///< without a time that can be compared
};

/// Row numbers behind the first up to the last.
struct Range {
    std::uint64_t behind;
    std::uint64_t last;
};

/// What counting found.
struct Found {
    std::uint64_t tooOld = 0;
    std::uint64_t undated = 0;
    std::vector<Range> ranges;  ///< those with rows that are too old
};

std::vector<Events> eventsBefore(dbservice::Time before, std::optional<int> keepLevel) {
    // Texts of other forms, or empty ones, would stand anywhere in the order of texts.
    const std::string dated = "BeginTime like '____-__-__ __:__:__'";
    std::string alarms = dated + " and BeginTime<'" + dbservice::timeText(before) + "'";
    if (keepLevel) alarms += " and AlarmLevel<" + std::to_string(*keepLevel);
    // Numbers from 2^31 on are stored negative.
    const std::string faces =
        "addTime>0 and addTime<" + std::to_string(dbservice::timeNumber(before));
    return {{"alarminfo", "alarms", "SN", alarms, "BeginTime is null or not " + dated},
            {"facecapture", "face captures", "RowNo", faces, "addTime is null or addTime=0"},
            {"facecompare", "face comparisons", "RowNo", faces, "addTime is null or addTime=0"}};
}

std::string in(const Events& events, const Range& range) {
    return fmt::format("{0}>{1} and {0}<={2}", events.number, range.behind, range.last);
}

std::uint64_t numberOf(const Cell& cell) {
    return cell ? std::stoull(*cell) : 0;
}

/// Looks through a table in statements that are short however large it is.
Found count(Session& session, const Events& events) {
    Found found;
    const auto bound = [&](const char* function) {
        return numberOf(valueOf(session.access(), session.dbName(),
                                fmt::format("{}({})", function, events.number), events.table));
    };
    const std::uint64_t last = bound("max");
    std::uint64_t behind = std::max<std::uint64_t>(bound("min"), 1) - 1;
    Progress progress(fmt::format("Counting {}", events.name), last - std::min(behind, last));
    for (const std::uint64_t begin = behind; behind < last;) {
        const Range range{behind, std::min(behind + kCounted, last)};
        throwIfInterrupted("nothing was deleted");
        forEachRow(session.access(), session.dbName(),
                   fmt::format("select sum(case when {} then 1 else 0 end) as TooOld,"
                               "sum(case when {} then 1 else 0 end) as Undated from {} where {}",
                               events.tooOld, events.undated, events.table, in(events, range)),
                   {{"TooOld"}, {"Undated"}}, [&](const std::vector<Cell>& row) {
                       const std::uint64_t tooOld = numberOf(row[0]);
                       if (tooOld != 0) found.ranges.push_back(range);
                       found.tooOld += tooOld;
                       found.undated += numberOf(row[1]);
                   });
        behind = range.last;
        progress.at(behind - begin);
    }
    return found;
}

/// Deletes what counting found, in statements as long as the machine's speed allows, with a pause
/// behind each for those who wait to write.
/// @param longest  raised to the time of the longest statement.
std::uint64_t remove(Session& session, const PruneOptions& options, const Events& events,
                     const Found& found, Clock::duration& longest) {
    std::uint64_t deleted = 0;
    std::uint64_t size = std::min<std::uint64_t>(options.chunk, 100);
    Progress progress(fmt::format("Deleting {}", events.name), found.tooOld);
    for (const Range& range : found.ranges) {
        for (std::uint64_t behind = range.behind; behind < range.last;) {
            const std::string howFar = fmt::format("{} of {} {} deleted; run it again to go on",
                                                   deleted, found.tooOld, events.name);
            throwIfInterrupted(howFar);
            const Range chunk{behind, std::min(behind + size, range.last)};
            const Clock::time_point begin = Clock::now();
            const dbservice::Result result = dbservice::writeSettled(
                [&] {
                    return session.access().Execute(
                        session.dbName(),
                        fmt::format("delete from {} where {} and {}", events.table,
                                    in(events, chunk), events.tooOld));
                },
                std::chrono::seconds(30));
            if (!result) throw failureOf(result.error(), howFar + ": deleting", Message::LeftOut);
            deleted += static_cast<std::uint64_t>(result.count());
            progress.at(deleted);
            behind = chunk.last;
            const Clock::duration took = Clock::now() - begin;
            longest = std::max(longest, took);
            if (took < kShort) size = std::min(2 * size, options.chunk);
            if (took > kLong) size = std::max<std::uint64_t>(size / 2, 1);
            if (result.count() != 0)
                std::this_thread::sleep_for(
                    options.pause ? std::chrono::milliseconds(*options.pause) : took);
        }
    }
    return deleted;
}

}  // namespace

void prune(Session& session, const PruneOptions& options) {
    const dbservice::Time before = timeIn(options.before);
    if (before >= std::chrono::system_clock::now())
        throw Failure(fmt::format("'{}' is not over yet", options.before),
                      "Events that are to come are not deleted", Exit::WrongUsage);
    if (dbservice::secondsOf(before) < 1)
        throw Failure(fmt::format("'{}' is before 1970", options.before), "", Exit::WrongUsage);
    const std::vector<Events> tables = eventsBefore(before, options.keepLevel);
    std::vector<Found> found;
    std::string question;
    for (const Events& events : tables) {
        found.push_back(count(session, events));
        question +=
            fmt::format("{}{} {}", question.empty() ? "" : ", ", found.back().tooOld, events.name);
        if (found.back().undated != 0)
            note(fmt::format("{} {} have no time that can be compared, and stay",
                             found.back().undated, events.name));
    }
    const bool isNone =
        std::all_of(found.begin(), found.end(), [](const Found& of) { return of.tooOld == 0; });
    if (!options.dryRun && !isNone)
        session.confirm(fmt::format("Delete {} from before {}?", question, localText(before)));

    Output output = session.output({{"Table"}, {"TooOld", true}, {"Deleted", true}});
    std::uint64_t deleted = 0;
    Clock::duration longest{};
    for (std::size_t i = 0; i < tables.size(); ++i) {
        const std::uint64_t here =
            options.dryRun ? 0 : remove(session, options, tables[i], found[i], longest);
        output.add({tables[i].table, std::to_string(found[i].tooOld), std::to_string(here)});
        deleted += here;
    }
    output.finish();
    if (deleted == 0) return;
    note(fmt::format("The longest statement took {} ms",
                     std::chrono::duration_cast<std::chrono::milliseconds>(longest).count()));
    if (session.access().engine() == dbaccess::Engine::Embedded)
        note("The file keeps its size; what comes next takes the room that is free in it");
}

}  // namespace dbservicectl
