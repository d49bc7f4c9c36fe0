#ifndef DBSERVICE_DBACCESS_READER_STATEMENT_H
#define DBSERVICE_DBACCESS_READER_STATEMENT_H

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "dbaccess/reader/Skeleton.h"
#include "dbaccess/reader/StatementKind.h"

namespace dbaccess {

/// A text as the caller wrote it, and what the layer must know of it. Threads: one at a time.
class Statement {
public:
    explicit Statement(std::string statement)
        : text(std::move(statement)),
          skeleton_(knownSkeleton(text)),
          kind(skeleton_ ? skeleton_->kind : kindOf(text)) {}
    Statement(const Statement&) = delete;  // the skeleton's values lie in the text
    Statement& operator=(const Statement&) = delete;

    /// Made when it is first asked for.
    const Skeleton& skeleton() const {
        if (!skeleton_) skeleton_ = skeletonOf(text);
        return *skeleton_;
    }

    const std::string text;

private:
    mutable std::optional<Skeleton> skeleton_;  // before the kind, which may come with it

public:
    const StatementKind kind;
};

/// Verb and table of a statement, as "insert device", for the log: never anything that could be a
/// value. Only words that stand before the first quote are used; verb alone when the table is not
/// among them; "statement" for a text that does not begin with the verb of a statement.
std::string summaryOf(std::string_view text);

/// What tells one session statement's subject from another's, as "names" or "sql_mode", in lower
/// case: a later SET with the same key replaces an earlier one. A SET of several has all of them,
/// as "names,sql_mode". Empty for what is no SET.
std::string sessionKeyOf(std::string_view text);

}  // namespace dbaccess

#endif
