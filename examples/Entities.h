#ifndef EXAMPLES_ENTITIES_H
#define EXAMPLES_ENTITIES_H

#include <fmt/format.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "dbaccess/LastError.h"
#include "examples/Display.h"
#include "examples/Site.h"

namespace demo {

/// Throws std::runtime_error with the number and the message of the last failed operation.
[[noreturn]] inline void fail(const std::string& what) {
    const dbaccess::Error& error = dbaccess::LastError();
    throw std::runtime_error(
        fmt::format("{}: error {} ({}): {}", what, error.number, error.sqlState, error.message));
}

/// The result of an operation of the service, unless it is an error: `fail`s then.
inline int check(int result, const std::string& what) {
    if (result < 0) fail(what);
    return result;
}

/// The list that a query gave, released when the pointer goes. Null when the query found nothing;
/// `fail`s when it failed, which the service answers with null as well.
template <class List>
auto hold(dbservice::DBService& service, List* list, void (dbservice::DBService::*release)(List*),
          const std::string& what) {
    if (list == nullptr && dbaccess::LastError()) fail(what);
    const auto giveBack = [&service, release](List* given) { (service.*release)(given); };
    return std::unique_ptr<List, decltype(giveBack)>(list, giveBack);
}

// One function per kind of record, in a file of its own. Each deletes by key what an earlier run
// stored, stores the site's records, changes and deletes some, shows them before and after, and
// adds its row to the summary: kind, replaced, stored, changed, deleted. `fail`s at the first error.

void loadServers(dbservice::DBService& service, const Site& site, Table& summary);

}  // namespace demo

#endif
