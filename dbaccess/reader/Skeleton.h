#ifndef DBSERVICE_DBACCESS_READER_SKELETON_H
#define DBSERVICE_DBACCESS_READER_SKELETON_H

#include <cstddef>
#include <cstdint>
#include <list>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "dbaccess/reader/StatementKind.h"

namespace dbaccess {

/// A literal taken out of a statement: a text, or a whole number.
using Value = std::variant<std::string_view, std::int64_t>;

/// A statement with a `?` in the place of each literal that may be bound: the same for all
/// statements that differ in these values only, so an engine can keep it prepared.
///
/// Text literals and whole numbers are taken out where a value surely means the same: as a whole
/// element of an inserted row, and where something is compared with or set to them, in SET, ON and
/// WHERE. Elsewhere, and from the 30,000th on, they stay: a literal in the list of SELECT names its
/// column, a limit is no value, and definitions take none.
struct Skeleton {
    /// Empty when the statement has none: it is ill-formed, or neither SELECT, INSERT, REPLACE,
    /// UPDATE, DELETE, WITH nor VALUES. For a multi-row insert or replace whose rows all have one
    /// shape it holds one row, to be run once for each row of values.
    std::string text;

    std::vector<Value> values;  ///< row after row; views into the statement or into `decoded`

    /// 0: one run with all values; else values.size() / valuesPerRow runs.
    std::size_t valuesPerRow = 0;

    std::size_t valuesOfRun() const { return valuesPerRow == 0 ? values.size() : valuesPerRow; }

    /// Whether a server may keep it: not what names its columns by `*`, which are others once the
    /// table is altered, not what concerns the session, and no union: MariaDB cuts its texts to the
    /// length of those that were bound at first.
    bool forServers = false;

    StatementKind kind = StatementKind::Write;  ///< of a known statement

    std::list<std::string> decoded;  ///< the texts that stood with escapes
};

/// The longest skeleton that is worth keeping: longer ones are lists of keys, which seldom come
/// again.
constexpr std::size_t kLongestKept = 4096;

/// The statement must outlive the skeleton.
Skeleton skeletonOf(std::string_view statement);

/// The same, if this thread has read a statement of its like, and then with its kind.
std::optional<Skeleton> knownSkeleton(std::string_view statement);

}  // namespace dbaccess

#endif
