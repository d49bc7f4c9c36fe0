#include "dbaccess/sqlite/SqliteText.h"

#include <algorithm>
#include <utility>

#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/reader/TokenReader.h"
#include "dbaccess/sqlite/OrChain.h"

namespace dbaccess::sqlite {
namespace {

/// The words at which the writing of what follows changes.
enum class Keyword { None, Or, Case, End, Where, OtherClause };

Keyword keywordOf(const Token& token) {
    constexpr std::pair<std::string_view, Keyword> kKeywords[] = {
        {"or", Keyword::Or},
        {"where", Keyword::Where},
        {"case", Keyword::Case},
        {"end", Keyword::End},
        {"select", Keyword::OtherClause},
        {"order", Keyword::OtherClause},
        {"group", Keyword::OtherClause},
        {"having", Keyword::OtherClause},
        {"limit", Keyword::OtherClause},
        {"union", Keyword::OtherClause},
        {"except", Keyword::OtherClause},
        {"intersect", Keyword::OtherClause},
        {"returning", Keyword::OtherClause},
    };
    const char first = toLower(token.source.front());
    for (const auto& [word, keyword] : kKeywords)
        if (first == word.front() && isWord(token, word)) return keyword;
    return Keyword::None;
}

const char* messageOf(int error) {
    switch (error) {
        case kEmptyQuery:
            return "Query was empty";
        case kIncorrectValue:
            return "Incorrect string value: not UTF-8";
        case kInvalidUtf8:
            return "Invalid utf8mb4 character string";
        default:
            return "You have an error in your SQL syntax";
    }
}

std::string hexOf(std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string hex;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        hex += kDigits[byte >> 4];
        hex += kDigits[byte & 0xF];
    }
    return hex;
}

/// The text as a literal of SQLite, which has no escapes and cannot hold a NUL.
std::string quoted(std::string_view text) {
    if (text.find('\0') != std::string_view::npos) return "CAST(x'" + hexOf(text) + "' AS TEXT)";
    std::string literal = "'";
    for (const char c : text) {
        literal += c;
        if (c == '\'') literal += c;
    }
    literal += '\'';
    return literal;
}

/// Writes one statement anew, token by token. `token_` is always the next to be written.
class Rewriter {
public:
    /// @param skeleton  `?` stands for values; in a statement it is a syntax error.
    Rewriter(std::string_view statement, bool skeleton)
        : statement_(statement), reader_(statement) {
        reader_.setParameters(skeleton);
        token_ = reader_.next();
    }

    SqliteText run();

private:
    bool running() const { return result_.error == 0 && !isEnd(token_); }

    void readVerb();
    void finish();
    void fail(int error);
    std::size_t placeOfToken() const;

    void writeToken();
    void writeWord();
    void writeSign();
    void writeOr(std::string_view piece);
    void enterClause();

    void put(std::string_view piece);
    void advance();
    bool needsBlank() const;

    std::string_view statement_;
    TokenReader reader_;

    Token token_;
    std::string_view previous_;  // the token before it, as written in the statement
    TokenKind previousKind_ = TokenKind::End;

    bool compound_ = false;  // CREATE TRIGGER
    int depth_ = 0;          // open parentheses
    int cases_ = 0;          // open CASE expressions
    OrChain chain_;
    SqliteText result_;
};

SqliteText Rewriter::run() {
    readVerb();
    while (running())
        writeToken();
    finish();
    return std::move(result_);
}

void Rewriter::readVerb() {
    if (token_.kind == TokenKind::Bad) return;
    if (token_.kind == TokenKind::End) {
        // A server runs a text that has a comment, if nothing else; without one the text is empty.
        if (statement_.find_first_not_of(" \t\n\v\f\r;") == std::string_view::npos)
            fail(kEmptyQuery);
        return;
    }
    const bool definition = isAnyOf(token_, {"create", "alter", "drop"});
    // What else SQLite knows (ATTACH, PRAGMA, VACUUM, EXPLAIN, ...) a server does not know or
    // understands otherwise.
    if (!definition &&
        !isAnyOf(token_, {"select", "insert", "replace", "update", "delete", "with", "values"}))
        return fail(kSyntaxError);
    TokenReader ahead = reader_;
    const Token second = ahead.next();
    if (isWord(second, "or") && !definition) return fail(kSyntaxError);  // SQLite's INSERT OR ...
    compound_ = isWord(token_, "create") && isWord(second, "trigger");
    reader_.setCompound(compound_);
}

void Rewriter::finish() {
    if (result_.error == 0 && token_.kind == TokenKind::Bad) fail(reader_.error());
    if (result_.error == 0 && depth_ != 0) fail(kSyntaxError);
    if (result_.error == 0) chain_.end(result_.text);
}

/// The message names the place only: what stands there could be a value.
void Rewriter::fail(int error) {
    result_.error = error;
    result_.errorMessage = messageOf(error) + (", at byte " + std::to_string(placeOfToken()));
}

std::size_t Rewriter::placeOfToken() const {
    return static_cast<std::size_t>(token_.source.data() - statement_.data());
}

void Rewriter::writeToken() {
    switch (token_.kind) {
        case TokenKind::Word:
            return writeWord();
        case TokenKind::Sign:
            return writeSign();
        case TokenKind::Text:
            return put(quoted(token_.value()));
        default:
            return put(token_.source);
    }
}

void Rewriter::writeWord() {
    // A name to servers, but a parameter or a number to SQLite.
    const char first = token_.source.front();
    if (first == '$' || (first >= '0' && first <= '9'))
        return put('`' + std::string(token_.source) + '`');
    if (previous_ == ".") return put(token_.source);  // a column, whatever its name

    const Keyword keyword = keywordOf(token_);
    if (keyword == Keyword::Or) return writeOr(token_.source);
    if (keyword == Keyword::Case) ++cases_;
    if (keyword == Keyword::End && cases_ > 0) {
        --cases_;
    } else if (keyword == Keyword::End && compound_ && previous_ == ";") {
        reader_.setCompound(false);
    }
    if (keyword == Keyword::OtherClause || keyword == Keyword::Where) enterClause();
    put(token_.source);
    if (keyword == Keyword::Where && depth_ == 0) chain_.begin(result_.text.size());
}

void Rewriter::enterClause() {
    if (depth_ == 0) chain_.end(result_.text);
}

void Rewriter::writeOr(std::string_view piece) {
    put(piece);
    if (depth_ == 0 && cases_ == 0) chain_.add(result_.text.size() - piece.size());
}

void Rewriter::writeSign() {
    const std::string_view sign = token_.source;
    if (sign == "(") ++depth_;
    if (sign == ")") --depth_;
    // An unbalanced ) could pair with the parentheses of a grouped chain. SQLite would take a
    // variable for a parameter.
    if (depth_ < 0 || sign == "@" || sign == "@@" || sign == ":=") return fail(kSyntaxError);
    if (sign == ";") enterClause();
    if (sign != "||" && sign != "&&") return put(sign);
    token_.kind = TokenKind::Word;
    return sign == "||" ? writeOr("OR") : put("AND");
}

/// Writes the token as the piece.
void Rewriter::put(std::string_view piece) {
    if (needsBlank()) result_.text += ' ';
    result_.text += piece;
    advance();
}

void Rewriter::advance() {
    previous_ = token_.source;
    previousKind_ = token_.kind;
    token_ = reader_.next();
}

/// A blank stays where blanks or a comment were, and comes where two pieces would become another
/// thing: 'a'5 the parameter ?5, - - a comment, x'41' a blob.
bool Rewriter::needsBlank() const {
    if (previous_.data() + previous_.size() != token_.source.data()) return !result_.text.empty();
    const auto tight = [](std::string_view sign) {
        return sign == "(" || sign == ")" || sign == "," || sign == "." || sign == ";";
    };
    if (previousKind_ != TokenKind::Sign) return token_.kind != TokenKind::Sign;
    return token_.kind == TokenKind::Sign && !tight(previous_) && !tight(token_.source);
}

}  // namespace

SqliteText toSqlite(const Statement& statement) {
    if (!statement.skeleton().text.empty()) {
        SqliteText text = toSqlite(statement.skeleton());
        if (text.error == 0) return text;
    }
    return Rewriter(statement.text, false).run();
}

SqliteText toSqlite(const Skeleton& skeleton) {
    return Rewriter(skeleton.text, true).run();
}

}  // namespace dbaccess::sqlite
