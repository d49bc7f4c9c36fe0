// Loading records of any kind into the service: running its operations, whatever their form, with
// every failure an exception.
#ifndef EXAMPLES_LOAD_SITE_LOADING_H
#define EXAMPLES_LOAD_SITE_LOADING_H

#include <fmt/format.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "dbaccess/DataAccess.h"
#include "dbservice/Convenience.h"
#include "examples/load_site/Display.h"
#include "examples/load_site/Site.h"

namespace demo {

/// Does what sends passwords. The message of a failure, which may quote them, is left out.
template <class Work>
void discreetly(const Work& work) {
    try {
        work();
    } catch (const DatabaseError& error) {
        throw std::runtime_error(error.what());
    }
}

// The three forms of writing operations, as functions of records.

/// One that takes a record.
template <class Record>
auto each(DBService& service, int (DBService::*operation)(const Record&)) {
    return [&service, operation](const Record& record) { return (service.*operation)(record); };
}

/// One, of the service or of a DAO, that takes all records at once.
template <class Record, class Owner>
auto all(Owner& owner, int (Owner::*operation)(const Record*, int)) {
    return [&owner, operation](const Record* first, int count) {
        return (owner.*operation)(first, count);
    };
}

/// One that takes the key of a record.
template <class Record, class Key>
auto byKey(DBService& service, int (DBService::*operation)(Key), std::string Record::*key) {
    return [&service, operation, key](const Record& record) {
        return (service.*operation)(record.*key);
    };
}

/// The update of kinds that cannot be changed.
struct NoUpdate {};

/// Runs an operation for all records, at once or one by one, unless there is none. Returns the sum
/// of its results.
template <class Record, class Operation>
std::int64_t run(const std::string& doing, const std::vector<Record>& records,
                 const Operation& operation) {
    if (records.empty()) return 0;
    if constexpr (std::is_same_v<Operation, NoUpdate>) {
        throw std::runtime_error(doing + ": there is no operation for it");
    } else if constexpr (std::is_invocable_v<Operation, const Record*, int>) {
        showProgress(doing);
        return check(operation(records.data(), static_cast<int>(records.size())), doing);
    } else {
        std::int64_t sum = 0;
        for (std::size_t i = 0; i < records.size(); ++i) {
            const std::string one = fmt::format("{}, number {}", doing, i + 1);
            showProgress(one);
            sum += check(operation(records[i]), one);
        }
        return sum;
    }
}

/// Deletes by their keys the records of one kind that an earlier run stored, stores them, changes
/// and deletes some, and adds a row to the summary: kind, replaced, stored, changed, deleted.
template <class Record, class Insert, class Update, class Delete>
void load(Table& summary, const std::string& kind, const Plan<Record>& plan, const Insert& insert,
          const Update& update, const Delete& remove) {
    const std::int64_t replaced = run(kind + ": deleting", plan.stored, remove);
    run(kind + ": storing", plan.stored, insert);
    run(kind + ": changing", plan.changed, update);
    const std::int64_t deleted = run(kind + ": deleting", plan.deleted, remove);
    summary.add({kind, fmt::to_string(replaced), fmt::to_string(plan.stored.size()),
                 fmt::to_string(plan.changed.size()), fmt::to_string(deleted)});
}

/// A cell of a tree's row.
inline std::string indented(std::size_t depth, const std::string& text) {
    return std::string(2 * depth, ' ') + text;
}

/// Visits the records below a parent, each with its depth and before those below itself.
template <class Records, class Record, class Visit>
void walk(const Records& records, std::string Record::*key, std::string Record::*parent,
          const std::string& below, std::size_t depth, const Visit& visit) {
    for (const Record& record : records) {
        if (record.*parent != below || (record.*key).empty()) continue;
        visit(record, depth);
        walk(records, key, parent, record.*key, depth + 1, visit);
    }
}

/// The name of the channel with this key as it was read; empty when there is none.
std::string cameraName(DBService& service, const std::string& guid);

/// All schedules, each with what it is for.
std::vector<std::pair<std::string, T_Schedules>> schedules(DBService& service);

// One function per family of records, in a file of its own: `load`s its kinds and shows what then
// is in the database.

void loadServers(DBService& service, const Site& site, Table& summary);
void loadUsers(DBService& service, const Site& site, Table& summary);
void loadRecording(DBService& service, const Site& site, Table& summary);
/// Shows the recording of each channel as well: comes behind `loadRecording`.
void loadDevices(DBService& service, const Site& site, Table& summary);
void loadLayouts(DBService& service, const Site& site, Table& summary);
/// @param access  for the DAOs that the service does not make by itself.
void loadMaps(DBService& service, dbaccess::DataAccess& access, const Site& site, Table& summary);
void loadEvents(DBService& service, const Site& site, Table& summary);

}  // namespace demo

#endif
