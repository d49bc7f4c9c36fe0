#ifndef DBSERVICE_DBACCESS_READER_STATEMENT_H
#define DBSERVICE_DBACCESS_READER_STATEMENT_H

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "dbaccess/reader/Skeleton.h"

namespace dbaccess {

/// What the layer must know of a statement before it sends it.
enum class StatementKind {
    Read,     ///< changes nothing (select, show, ...): may be sent again after a lost connection
    Write,    ///< everything else: sent once
    Session,  ///< SET of the session: every connection of the pool takes it over
    Transaction,  ///< begin, commit, lock tables, ...: refused, see DataAccess
    Definition,   ///< create, drop, ...: a Write that commits by itself, so not for a list
    Use,          ///< use NAME: refused, each call names its database
};

/// The kind of a statement, from its first words, comments and blanks before them aside. An empty
/// or ill-formed text is a Write: the engine refuses it.
StatementKind kindOf(std::string_view text);

/// A text as the caller wrote it, and what the layer must know of it. Threads: one at a time.
class Statement {
public:
    explicit Statement(std::string statement) : text(std::move(statement)), kind(kindOf(text)) {}
    Statement(const Statement&) = delete;  // the skeleton's values lie in the text
    Statement& operator=(const Statement&) = delete;

    /// Made when it is first asked for.
    const Skeleton& skeleton() const {
        if (!skeleton_) skeleton_ = skeletonOf(text);
        return *skeleton_;
    }

    const std::string text;
    const StatementKind kind;

private:
    mutable std::optional<Skeleton> skeleton_;
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
