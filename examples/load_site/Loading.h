// Loading records of any kind into the service: running its operations, whatever their form, with
// every failure an exception.
#ifndef EXAMPLES_LOAD_SITE_LOADING_H
#define EXAMPLES_LOAD_SITE_LOADING_H

#include <fmt/format.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "dbaccess/DataAccess.h"
#include "examples/load_site/Display.h"
#include "examples/load_site/Site.h"

namespace demo {

/// What a failure may tell.
enum class Detail {
    Full,        ///< number, SQLSTATE and the engine's message, which quotes values of statements
    NumberOnly,  ///< number and SQLSTATE: where statements hold passwords
};

/// Throws std::runtime_error with what became of the last operation.
[[noreturn]] inline void fail(const std::string& what, Detail detail = Detail::Full) {
    const dbaccess::Error& error = dbaccess::LastError();
    std::string text = fmt::format("{}: error {} ({})", what, error.number, error.sqlState);
    if (detail == Detail::Full) text += ": " + error.message;
    throw std::runtime_error(text);
}

/// The result of an operation of the service, unless it is an error: `fail`s then.
inline int check(int result, const std::string& what, Detail detail = Detail::Full) {
    if (result < 0) fail(what, detail);
    return result;
}

/// What a query of the service, or of one of its DAOs, gave; released when the pointer goes. Null
/// when it found nothing; `fail`s when it failed, which gives null as well.
template <class Owner, class Result>
auto hold(Owner& owner, Result* result, void (Owner::*release)(Result*), const std::string& what,
          Detail detail = Detail::Full) {
    if (result == nullptr && dbaccess::LastError()) fail(what, detail);
    const auto giveBack = [&owner, release](Result* given) { (owner.*release)(given); };
    return std::unique_ptr<Result, decltype(giveBack)>(result, giveBack);
}

/// Copies of the records that a query gave; the list is released. `fail`s as `hold`.
template <class Owner, class List>
auto records(Owner& owner, List* list, void (Owner::*release)(List*), const std::string& what,
             Detail detail = Detail::Full) {
    const auto held = hold(owner, list, release, what, detail);
    using Record = std::remove_reference_t<decltype(*held->items)>;
    return held ? std::vector<Record>(held->items, held->items + held->count)
                : std::vector<Record>();
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
int run(const std::string& doing, const std::vector<Record>& records, const Operation& operation,
        Detail detail) {
    if (records.empty()) return 0;
    if constexpr (std::is_same_v<Operation, NoUpdate>) {
        throw std::runtime_error(doing + ": there is no operation for it");
    } else if constexpr (std::is_invocable_v<Operation, const Record*, int>) {
        showProgress(doing);
        return check(operation(records.data(), static_cast<int>(records.size())), doing, detail);
    } else {
        int sum = 0;
        for (std::size_t i = 0; i < records.size(); ++i) {
            const std::string one = fmt::format("{}, number {}", doing, i + 1);
            showProgress(one);
            sum += check(operation(records[i]), one, detail);
        }
        return sum;
    }
}

/// Deletes by their keys the records of one kind that an earlier run stored, stores them, changes
/// and deletes some, and adds a row to the summary: kind, replaced, stored, changed, deleted.
template <class Record, class Insert, class Update, class Delete>
void load(Table& summary, const std::string& kind, const Plan<Record>& plan, const Insert& insert,
          const Update& update, const Delete& remove, Detail detail = Detail::Full) {
    const int replaced = run(kind + ": deleting", plan.stored, remove, detail);
    run(kind + ": storing", plan.stored, insert, detail);
    run(kind + ": changing", plan.changed, update, detail);
    const int deleted = run(kind + ": deleting", plan.deleted, remove, detail);
    summary.add({kind, fmt::to_string(replaced), fmt::to_string(plan.stored.size()),
                 fmt::to_string(plan.changed.size()), fmt::to_string(deleted)});
}

/// A cell of a tree's row.
inline std::string indented(std::size_t depth, const std::string& text) {
    return std::string(2 * depth, ' ') + text;
}

/// Visits the records below a parent, each with its depth and before those below itself.
template <class Record, class Visit>
void walk(const std::vector<Record>& records, std::string Record::*key, std::string Record::*parent,
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
