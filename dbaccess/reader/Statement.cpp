#include "dbaccess/reader/Statement.h"

#include "dbaccess/reader/TokenReader.h"

namespace dbaccess {
namespace {

/// Where a statement names its table.
enum class TablePlace {
    None,
    First,  ///< behind the verb, as in UPDATE device
    Later,  ///< behind FROM, INTO, TABLE or ON
};

struct Verb {
    std::string_view word;
    StatementKind kind;
    TablePlace table = TablePlace::None;
    StatementKind (*refine)(TokenReader& reader) = nullptr;  ///< decides from the words behind
};

/// What one assignment of a SET sets.
struct Subject {
    std::string name;     ///< in lower case, a user variable's with its @
    bool global = false;  ///< more than the session's own
};

Subject readSubject(TokenReader& reader, Token token) {
    Subject subject;
    if (isSign(token, "@")) {
        subject.name = "@";
        token = reader.next();
    } else {
        if (isSign(token, "@@")) token = reader.next();
        subject.global = isAnyOf(token, {"global", "persist", "persist_only"});
        if (subject.global || isAnyOf(token, {"session", "local"})) token = reader.next();
        if (isSign(token, ".")) token = reader.next();
    }
    subject.name.append(nameIn(token));
    // A transaction has two characteristics; SET CHARACTER SET sets what SET NAMES sets.
    if (isWord(token, "transaction")) subject.name.append(" ").append(reader.next().source);
    if (isAnyOf(token, {"character", "charset"})) subject.name = "names";
    subject.name = lowered(subject.name);
    return subject;
}

/// Calls `use` with each subject of a SET whose first word has been read.
/// @return  false when the text is ill-formed.
template <typename Use>
bool readSubjects(TokenReader& reader, Use use) {
    for (Token token;;) {
        use(readSubject(reader, reader.next()));
        int depth = 0;
        do {
            if (!reader.read(token)) return token.kind == TokenKind::End;
            if (isSign(token, "(")) ++depth;
            if (isSign(token, ")")) --depth;
        } while (depth != 0 || !isSign(token, ","));
    }
}

StatementKind kindOfSet(TokenReader& reader) {
    bool autocommit = false;
    bool global = false;
    bool commits = false;  // by itself
    const bool complete = readSubjects(reader, [&](const Subject& subject) {
        autocommit = autocommit || (subject.name == "autocommit" && !subject.global);
        global = global || subject.global || subject.name == "statement";
        commits = commits || subject.name == "password" || subject.name == "default";
    });
    if (autocommit) return StatementKind::Transaction;
    if (commits) return StatementKind::Definition;
    return complete && !global ? StatementKind::Session : StatementKind::Write;
}

/// Of WITH: that of the statement behind the named queries.
StatementKind kindOfWith(TokenReader& reader) {
    int depth = 0;
    for (Token token; reader.read(token);) {
        if (isSign(token, "(")) ++depth;
        if (isSign(token, ")")) --depth;
        if (depth != 0) continue;
        if (isAnyOf(token, {"select", "values", "table"})) return StatementKind::Read;
        if (isAnyOf(token, {"insert", "replace", "update", "delete"})) return StatementKind::Write;
    }
    return StatementKind::Write;
}

StatementKind kindOfStart(TokenReader& reader) {
    return isWord(reader.next(), "transaction") ? StatementKind::Transaction
                                                : StatementKind::Definition;
}

/// ANALYZE with a statement runs it.
StatementKind kindOfAnalyze(TokenReader& reader) {
    return isAnyOf(reader.next(), {"table", "local", "no_write_to_binlog"})
               ? StatementKind::Definition
               : StatementKind::Write;
}

/// FLUSH TABLES may keep a lock, which would stay on the connection.
StatementKind kindOfFlush(TokenReader& reader) {
    for (Token token; reader.read(token);)
        if (isAnyOf(token, {"lock", "export"})) return StatementKind::Transaction;
    return StatementKind::Definition;
}

using Kind = StatementKind;
using Table = TablePlace;

constexpr Verb kVerbs[] = {
    {"select", Kind::Read, Table::Later},
    {"insert", Kind::Write, Table::Later},
    {"replace", Kind::Write, Table::Later},
    {"update", Kind::Write, Table::First},
    {"delete", Kind::Write, Table::Later},
    {"show", Kind::Read},
    {"describe", Kind::Read, Table::First},
    {"desc", Kind::Read, Table::First},
    {"explain", Kind::Read},
    {"with", Kind::Write, Table::None, kindOfWith},
    {"values", Kind::Read},
    {"table", Kind::Read, Table::First},
    {"call", Kind::Definition},  // a procedure may commit
    {"do", Kind::Write},
    {"load", Kind::Write},
    {"handler", Kind::Write},
    {"kill", Kind::Write},
    {"set", Kind::Session, Table::None, kindOfSet},
    {"use", Kind::Use},
    {"begin", Kind::Transaction},
    {"start", Kind::Transaction, Table::None, kindOfStart},
    {"commit", Kind::Transaction},
    {"rollback", Kind::Transaction},
    {"savepoint", Kind::Transaction},
    {"release", Kind::Transaction},
    {"lock", Kind::Transaction},
    {"unlock", Kind::Transaction},
    {"backup", Kind::Transaction},
    {"xa", Kind::Transaction},
    {"create", Kind::Definition, Table::Later},
    {"alter", Kind::Definition, Table::Later},
    {"drop", Kind::Definition, Table::Later},
    {"rename", Kind::Definition, Table::Later},
    {"truncate", Kind::Definition, Table::First},
    {"grant", Kind::Definition},
    {"revoke", Kind::Definition},
    {"analyze", Kind::Definition, Table::Later, kindOfAnalyze},
    {"optimize", Kind::Definition, Table::Later},
    {"repair", Kind::Definition, Table::Later},
    {"check", Kind::Definition, Table::Later},
    {"cache", Kind::Definition},
    {"flush", Kind::Definition, Table::None, kindOfFlush},
    {"reset", Kind::Definition},
    {"install", Kind::Definition},
    {"uninstall", Kind::Definition},
    {"stop", Kind::Definition},
    {"change", Kind::Definition},
};

/// The verb that the statement begins with, null when it is none. A query may stand in parentheses.
const Verb* readVerb(TokenReader& reader) {
    Token token = reader.next();
    while (isSign(token, "("))
        token = reader.next();
    for (const Verb& verb : kVerbs)
        if (isWord(token, verb.word)) return &verb;
    return nullptr;
}

/// The table's name, without its database; empty when it does not stand before the first quote.
std::string_view readTable(TokenReader& reader, TablePlace place) {
    bool found = place == TablePlace::First;
    for (Token token = reader.next();; token = reader.next()) {
        if (token.kind != TokenKind::Word && token.kind != TokenKind::Number &&
            token.kind != TokenKind::Sign)
            return {};
        if (isAnyOf(token, {"from", "into", "table", "on"})) {
            found = true;
        } else if (isSign(token, "(")) {
            found = false;  // a query in the place of a table
        } else if (found && token.kind == TokenKind::Word &&
                   !isAnyOf(token, {"if", "not", "exists", "ignore", "low_priority"})) {
            TokenReader ahead = reader;
            return isSign(ahead.next(), ".") ? ahead.next().source : token.source;
        }
    }
}

}  // namespace

StatementKind kindOf(std::string_view text) {
    TokenReader reader(text);
    const Verb* verb = readVerb(reader);
    if (verb == nullptr) return StatementKind::Write;
    return verb->refine == nullptr ? verb->kind : verb->refine(reader);
}

std::string summaryOf(std::string_view text) {
    TokenReader reader(text);
    const Verb* verb = readVerb(reader);
    if (verb == nullptr) return "statement";
    std::string summary(verb->word);
    if (verb->table == TablePlace::None) return summary;
    const std::string_view table = readTable(reader, verb->table);
    if (!table.empty() && table.size() <= kLongestName) summary.append(" ").append(table);
    return summary;
}

std::string sessionKeyOf(std::string_view text) {
    TokenReader reader(text);
    if (!isWord(reader.next(), "set")) return {};
    std::string key;
    readSubjects(reader, [&](const Subject& subject) {
        if (!key.empty()) key += ',';
        key += subject.name;
    });
    return key;
}

}  // namespace dbaccess
