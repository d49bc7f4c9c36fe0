#ifndef DBACCESS_STATEMENTREADER_H
#define DBACCESS_STATEMENTREADER_H

#include <cstdint>
#include <string>
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

/// The kind of a statement, from its first words, comments and blanks before them aside.
/// An empty or ill-formed text is a Write: the engine refuses it.
StatementKind kindOf(std::string_view text);

/// Verb and table of a statement, as "insert device", for the log: never anything that could be a
/// value. Only words that stand before the first quote are used; verb alone when the table is not
/// among them; "statement" for a text that begins with no word.
std::string summaryOf(std::string_view text);

/// What tells one session statement's subject from another's, as "names" or "sql_mode", in lower
/// case: a later SET with the same key replaces an earlier one.
std::string sessionKeyOf(std::string_view text);

enum class TokenKind {
    Word,    ///< keyword or unquoted name
    Name,    ///< `quoted name`, source includes the backticks
    Text,    ///< text literal; adjacent literals come as one
    Number,  ///< 12, 1.5, 1e3, 0x1F: the digits as written, no sign
    Sign,    ///< operator or punctuation: one or two characters
    End,     ///< end of the statement
    Bad,     ///< not a statement: see TokenReader::error
};

struct Token {
    TokenKind kind = TokenKind::End;
    std::string_view source;  ///< the token as written; for adjacent literals all of them
    std::string text;         ///< Text only: the value, decoded by MySQL's rules
};

/// Reads a statement token by token by MySQL's lexical rules (default sql_mode: backslash escapes,
/// "..." is text): comments are passed over, literals decoded and checked to be UTF-8, and whatever
/// a server refuses before it understands a statement ends in a Bad token.
/// The text must outlive the reader and its tokens.
class TokenReader {
public:
    explicit TokenReader(std::string_view text) : text_(text) {}

    /// The next token; End (or Bad) again and again once reached.
    Token next();

    /// After a Bad token: 1064 (syntax), 1366 (a literal is not UTF-8) or 1300 (bytes outside
    /// literals are not UTF-8). 0 otherwise.
    int error() const { return error_; }

private:
    std::string_view text_;
    std::size_t position_ = 0;
    int error_ = 0;
};

}  // namespace dbaccess

#endif
