#include "dbaccess/sqlite/SqliteText.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <utility>

#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/reader/TokenReader.h"
#include "dbaccess/sqlite/OrChain.h"

namespace dbaccess::sqlite {
namespace {

constexpr std::size_t kMaxValues = 30000;  // of a text; SQLite takes 32766
constexpr std::size_t kMaxReserved = 250000;

/// The words at which the writing of what follows changes.
enum class Keyword { None, Or, Case, End, Values, Where, Operands, OtherClause };

Keyword keywordOf(const Token& token) {
    constexpr std::pair<std::string_view, Keyword> kKeywords[] = {
        {"or", Keyword::Or},
        {"where", Keyword::Where},
        {"set", Keyword::Operands},
        {"on", Keyword::Operands},
        {"values", Keyword::Values},
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

bool isComparison(std::string_view sign) {
    return sign == "=" || sign == "<" || sign == ">" || sign == "<=" || sign == ">=" ||
           sign == "<>" || sign == "!=";
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

/// The whole number of these digits; none for decimals and what 64 bits do not hold.
std::optional<std::int64_t> wholeNumber(std::string_view digits, bool negative) {
    std::uint64_t magnitude = 0;
    const char* end = digits.data() + digits.size();
    const auto parsed = std::from_chars(digits.data(), end, magnitude);
    const std::uint64_t most = std::numeric_limits<std::int64_t>::max();
    if (parsed.ec != std::errc() || parsed.ptr != end || magnitude > most + (negative ? 1 : 0))
        return {};
    return static_cast<std::int64_t>(negative ? 0 - magnitude : magnitude);
}

/// Writes one statement anew, token by token. `token_` is always the next to be written.
class Rewriter {
public:
    /// @param splitRows  write a multi-row insert as one row, or give up when that cannot be.
    Rewriter(std::string_view statement, bool splitRows)
        : statement_(statement),
          reader_(statement),
          splitRows_(splitRows),
          token_(reader_.next()) {}

    /// False when it gave up.
    bool run();
    SqliteText take() { return std::move(result_); }

private:
    bool running() const { return result_.error == 0 && !givenUp_ && !isEnd(token_); }

    void readVerb();
    void finish();
    void fail(int error);
    std::size_t placeOfToken() const;

    void writeToken();
    void writeWord();
    void writeSign();
    void writeOr(std::string_view piece);
    void enterClause(bool bindsOperands);

    void writeRows();
    void compareRows(std::size_t begin, std::size_t lengthInStatement);
    std::size_t writeRow();
    void writeElement();
    bool bindElement();
    bool bindOperand();
    void bind(Value value);
    bool full() const { return result_.values.size() - runStart_ >= kMaxValues; }

    void put(std::string_view piece);
    void advance();
    bool needsBlank() const;

    std::string_view statement_;
    TokenReader reader_;
    const bool splitRows_;
    bool givenUp_ = false;

    Token token_;
    std::string_view previous_;  // the token before it, as written in the statement
    TokenKind previousKind_ = TokenKind::End;

    bool inserts_ = false;        // INSERT or REPLACE, its rows not yet read
    bool compound_ = false;       // CREATE TRIGGER
    bool binds_ = false;          // no definition
    bool bindsOperands_ = false;  // within a clause whose compared values are bound
    int depth_ = 0;               // open parentheses
    int cases_ = 0;               // open CASE expressions
    OrChain chain_;
    std::size_t runStart_ = 0;  // the first value of this run of the text
    SqliteText result_;
};

bool Rewriter::run() {
    readVerb();
    while (running())
        writeToken();
    if (!givenUp_) finish();
    return !givenUp_;
}

void Rewriter::readVerb() {
    if (token_.kind == TokenKind::Bad) return;
    if (token_.kind == TokenKind::End) {
        // A server runs a text that has a comment, if nothing else; without one the text is empty.
        if (statement_.find_first_not_of(" \t\n\v\f\r;") == std::string_view::npos)
            fail(kEmptyQuery);
        return;
    }
    inserts_ = isAnyOf(token_, {"insert", "replace"});
    binds_ = inserts_ || isAnyOf(token_, {"select", "update", "delete", "with", "values"});
    // What else SQLite knows (ATTACH, PRAGMA, VACUUM, EXPLAIN, ...) a server does not know or
    // understands otherwise.
    if (!binds_ && !isAnyOf(token_, {"create", "alter", "drop"})) return fail(kSyntaxError);
    TokenReader ahead = reader_;
    const Token second = ahead.next();
    if (isWord(second, "or") && binds_) return fail(kSyntaxError);  // SQLite's INSERT OR ...
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
            return bindOperand() ? put("?") : put(quoted(token_.text));
        default:
            return bindOperand() ? put("?") : put(token_.source);
    }
}

void Rewriter::writeWord() {
    // A name to servers, but a parameter or a number to SQLite.
    const char first = token_.source.front();
    if (first == '$' || (first >= '0' && first <= '9')) return fail(kSyntaxError);
    if (previous_ == ".") return put(token_.source);  // a column, whatever its name

    const Keyword keyword = keywordOf(token_);
    if (keyword == Keyword::Or) return writeOr(token_.source);
    if (keyword == Keyword::Case) ++cases_;
    if (keyword == Keyword::End && cases_ > 0) {
        --cases_;
    } else if (keyword == Keyword::End && compound_ && previous_ == ";") {
        reader_.setCompound(false);
    }
    if (keyword == Keyword::OtherClause) enterClause(false);
    if (keyword == Keyword::Operands || keyword == Keyword::Where) enterClause(binds_);
    put(token_.source);
    if (keyword == Keyword::Where && depth_ == 0) chain_.begin(result_.text.size());
    if (keyword == Keyword::Values && inserts_ && depth_ == 0) writeRows();
}

void Rewriter::enterClause(bool bindsOperands) {
    if (depth_ == 0) chain_.end(result_.text);
    bindsOperands_ = bindsOperands;
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
    if (sign == ";") enterClause(false);
    if (sign != "||" && sign != "&&") return put(sign);
    token_.kind = TokenKind::Word;
    return sign == "||" ? writeOr("OR") : put("AND");
}

/// The rows behind VALUES.
void Rewriter::writeRows() {
    inserts_ = false;
    if (!isSign(token_, "(")) return;
    const std::size_t place = placeOfToken();
    const std::size_t begin = writeRow();
    if (splitRows_ && isSign(token_, ",")) return compareRows(begin, placeOfToken() - place);
    while (running() && isSign(token_, ",")) {
        put(",");
        writeRow();
    }
}

/// Reads the rows behind the first for their values and only compares them with it.
void Rewriter::compareRows(std::size_t begin, std::size_t lengthInStatement) {
    const std::string first = result_.text.substr(begin);
    const std::size_t end = result_.text.size();
    result_.valuesPerRow = result_.values.size();
    const std::size_t rows = statement_.size() / lengthInStatement + 1;
    result_.values.reserve(std::min(result_.valuesPerRow * rows, kMaxReserved));
    while (running() && isSign(token_, ",")) {
        put(",");
        const std::size_t next = writeRow();
        givenUp_ = givenUp_ || result_.text.compare(next, std::string::npos, first) != 0;
        result_.text.resize(end);
    }
    givenUp_ = givenUp_ || result_.valuesPerRow == 0 || token_.kind != TokenKind::End;
}

/// Returns where in the text the row begins.
std::size_t Rewriter::writeRow() {
    if (splitRows_) runStart_ = result_.values.size();
    if (!isSign(token_, "(")) {
        givenUp_ = splitRows_;
        return result_.text.size();
    }
    writeSign();
    const std::size_t begin = result_.text.size() - 1;
    writeElement();
    while (running() && isSign(token_, ",")) {
        put(",");
        writeElement();
    }
    if (running()) writeSign();
    return begin;
}

void Rewriter::writeElement() {
    if (bindElement()) return;
    const int depth = depth_;
    while (running() && (depth_ > depth || !(isSign(token_, ",") || isSign(token_, ")")))) {
        // What is computed may depend on the rows before it: they must not be there yet.
        if (isSign(token_, "(")) givenUp_ = splitRows_;
        writeToken();
    }
}

/// Binds an element that is one literal, a number's sign with it.
bool Rewriter::bindElement() {
    const bool sign = isSign(token_, "-") || isSign(token_, "+");
    if (full() || !(sign || token_.kind == TokenKind::Text || token_.kind == TokenKind::Number))
        return false;
    TokenReader ahead = reader_;
    const std::string_view digits = sign ? ahead.next().source : token_.source;
    const Token behind = ahead.next();
    if (!isSign(behind, ",") && !isSign(behind, ")")) return false;
    if (token_.kind == TokenKind::Text) {
        bind(std::move(token_.text));
    } else if (const auto number = wholeNumber(digits, isSign(token_, "-"))) {
        bind(*number);
    } else {
        return false;
    }
    put("?");
    if (sign) advance();
    return true;
}

/// Binds a literal that something is compared with or set to.
bool Rewriter::bindOperand() {
    if (!bindsOperands_ || full() || !isComparison(previous_)) return false;
    if (token_.kind == TokenKind::Text) {
        bind(std::move(token_.text));
        return true;
    }
    const auto number = wholeNumber(token_.source, false);
    if (number) bind(*number);
    return number.has_value();
}

void Rewriter::bind(Value value) {
    result_.values.push_back(std::move(value));
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

SqliteText toSqlite(std::string_view statement) {
    Rewriter splitting(statement, true);
    if (splitting.run()) return splitting.take();
    Rewriter whole(statement, false);
    whole.run();
    return whole.take();
}

}  // namespace dbaccess::sqlite
