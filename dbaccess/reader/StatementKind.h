#ifndef DBSERVICE_DBACCESS_READER_STATEMENTKIND_H
#define DBSERVICE_DBACCESS_READER_STATEMENTKIND_H

#include <string_view>

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

}  // namespace dbaccess

#endif
