#include "dbaccess/reader/Skeleton.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>
#include <utility>

#include "dbaccess/reader/TokenReader.h"

namespace dbaccess {
namespace {

constexpr std::size_t kMaxValues = 30000;  // of a text; SQLite takes 32766, servers 65535
constexpr std::size_t kMaxReserved = 250000;

bool isComparison(std::string_view sign) {
    return sign == "=" || sign == "<" || sign == ">" || sign == "<=" || sign == ">=" ||
           sign == "<>" || sign == "!=";
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

constexpr int kNoList = -1;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Reads plain literals by their bytes alone, which takes far less than reading tokens does: texts
/// without escapes and whole numbers without a sign.
class PlainLiterals {
public:
    /// Appends the values that it reads.
    PlainLiterals(std::string_view statement, std::size_t position, std::vector<Value>& values)
        : statement_(statement), position_(position), values_(values) {}

    std::size_t position() const { return position_; }
    /// Takes the literal that begins here. False when it is none, or the bytes do not tell.
    bool take() {
        const char first = at(position_);
        return first == '\'' ? takeText() : isDigit(first) && takeNumber();
    }

    /// Takes what reads like the pattern, in which each `?` is the place of a literal.
    bool takeLike(std::string_view pattern) {
        for (;;) {
            const std::size_t place = std::min(pattern.find('?'), pattern.size());
            if (!sameBytes(statement_.substr(position_, place), pattern.substr(0, place)))
                return false;
            position_ += place;
            if (place == pattern.size()) return true;
            if (!take()) return false;
            pattern.remove_prefix(place + 1);
        }
    }

private:
    bool takeText();
    bool takeNumber();
    char at(std::size_t position) const {
        return position < statement_.size() ? statement_[position] : '\0';
    }

    const std::string_view statement_;
    std::size_t position_;
    std::vector<Value>& values_;
};

bool PlainLiterals::takeText() {
    const std::size_t begin = position_ + 1;
    const std::size_t end = statement_.find('\'', begin);
    if (end == std::string_view::npos) return false;
    const std::string_view text = statement_.substr(begin, end - begin);
    // Another literal may stand behind blanks: the two are one.
    const char next = at(std::min(statement_.find_first_not_of(" \n", end + 1), statement_.size()));
    if (next == '\'' || next == '"' || isWordCharacter(at(end + 1)) ||
        text.find('\\') != std::string_view::npos || !isUtf8(text, 4))
        return false;
    values_.emplace_back(text);
    position_ = end + 1;
    return true;
}

bool PlainLiterals::takeNumber() {
    constexpr std::size_t kMostDigits = 18;  // more may not fit: then it is no plain number
    std::size_t end = position_;
    std::int64_t number = 0;
    for (; isDigit(at(end)) && end - position_ < kMostDigits; ++end)
        number = number * 10 + (at(end) - '0');
    if (isWordCharacter(at(end)) || at(end) == '.' || (position_ > 0 && at(position_ - 1) == '.') ||
        at(end) == '\'')
        return false;
    values_.emplace_back(number);
    position_ = end;
    return true;
}

/// Takes the literals out of one statement. What lies between them is copied as it is.
class Extractor {
public:
    /// @param splitRows  reduce a multi-row insert to one row, or give up when that cannot be.
    Extractor(std::string_view statement, bool splitRows)
        : statement_(statement),
          reader_(statement),
          splitRows_(splitRows),
          token_(reader_.next()) {}

    /// False when it gave up.
    bool run();
    Skeleton take() { return std::move(result_); }

private:
    bool running() const { return !givenUp_ && !isEnd(token_); }

    bool readVerb();
    void readWord();
    void readSign();
    void readRows();
    void compareRows(std::size_t begin, std::size_t lengthInStatement);
    bool takeRowLike(std::string_view row);
    std::size_t readRow();
    void readElement();
    bool takeElement();
    void takeOperand();
    bool takeNumber(std::string_view from, std::string_view digits, bool negative);
    void takeText();
    void putPlace(std::string_view from);
    void copyTo(std::size_t end);
    void advance();

    bool full() const { return result_.values.size() - runStart_ >= kMaxValues; }
    std::size_t placeOf(std::string_view source) const {
        return static_cast<std::size_t>(source.data() - statement_.data());
    }

    std::string_view statement_;
    TokenReader reader_;
    const bool splitRows_;
    bool givenUp_ = false;

    Token token_;                 // the next to be read
    std::string_view previous_;   // the one before it, as written
    std::size_t copied_ = 0;      // up to where the statement is in the text
    bool rowsToCome_ = false;     // INSERT or REPLACE, its rows not yet read
    bool takesOperands_ = false;  // within a clause whose compared values are taken
    int depth_ = 0;               // open parentheses
    int listDepth_ = kNoList;     // of the outermost list of columns that it is in
    std::size_t runStart_ = 0;    // the first value of this run of the text
    Skeleton result_;
};

bool Extractor::run() {
    if (!readVerb()) return true;
    while (running()) {
        if (token_.kind == TokenKind::Word && previous_ != ".") {
            readWord();
        } else if (token_.kind == TokenKind::Sign) {
            readSign();
        } else {
            takeOperand();
        }
    }
    if (givenUp_) return false;
    if (token_.kind == TokenKind::Bad) {
        result_ = {};
    } else {
        copyTo(placeOf(token_.source));
    }
    return true;
}

/// False for a statement that takes no values.
bool Extractor::readVerb() {
    rowsToCome_ = isAnyOf(token_, {"insert", "replace"});
    result_.forServers = rowsToCome_ || isAnyOf(token_, {"select", "update", "delete"});
    return result_.forServers || isAnyOf(token_, {"with", "values"});
}

void Extractor::readWord() {
    if (isAnyOf(token_, {"where", "set", "on"})) {
        takesOperands_ = true;
    } else if (isAnyOf(token_, {"select", "returning"})) {
        takesOperands_ = false;
        if (listDepth_ == kNoList) listDepth_ = depth_;
    } else if (isWord(token_, "from")) {
        if (listDepth_ == depth_) listDepth_ = kNoList;
    } else if (isAnyOf(token_, {"order", "group", "having", "limit"})) {
        takesOperands_ = false;
    } else if (isAnyOf(token_, {"union", "except", "intersect"})) {
        takesOperands_ = false;
        result_.forServers = false;
    } else if (isAnyOf(token_, {"row_count", "found_rows", "procedure"})) {
        result_.forServers = false;
    }
    // The values of the rows are all that there are: no statement has others before them.
    const bool rows = rowsToCome_ && depth_ == 0 && result_.values.empty() &&
                      isAnyOf(token_, {"values", "value"});
    advance();
    if (rows) readRows();
}

void Extractor::readSign() {
    const char sign = token_.source.front();
    if (sign == '(') ++depth_;
    if (sign == ')' && --depth_ < listDepth_) listDepth_ = kNoList;
    if (sign == '@' || (sign == '*' && previous_ != "(")) result_.forServers = false;
    advance();
}

/// The rows behind VALUES.
void Extractor::readRows() {
    rowsToCome_ = false;
    if (!isSign(token_, "(")) return;
    const std::size_t place = placeOf(token_.source);
    const std::size_t begin = readRow();
    if (splitRows_ && isSign(token_, ","))
        return compareRows(begin, placeOf(token_.source) - place);
    while (running() && isSign(token_, ",")) {
        advance();
        readRow();
    }
}

/// Reads the rows behind the first for their values and only compares them with it.
void Extractor::compareRows(std::size_t begin, std::size_t lengthInStatement) {
    const std::string first = result_.text.substr(begin);
    const std::size_t end = result_.text.size();
    result_.valuesPerRow = result_.values.size();
    const std::size_t rows = statement_.size() / lengthInStatement + 1;
    result_.values.reserve(std::min(result_.valuesPerRow * rows, kMaxReserved));
    // A `?` in a name or comment is no place of a value.
    const bool plain = static_cast<std::size_t>(std::count(first.begin(), first.end(), '?')) ==
                       result_.valuesPerRow;
    while (running() && isSign(token_, ",")) {
        if (plain && takeRowLike(first)) continue;
        advance();
        copied_ = placeOf(token_.source);
        const std::size_t next = readRow();
        givenUp_ = givenUp_ || result_.text.compare(next, std::string::npos, first) != 0;
        result_.text.resize(end);
    }
    givenUp_ = givenUp_ || result_.valuesPerRow == 0 || token_.kind != TokenKind::End;
    copied_ = placeOf(token_.source);
}

/// Takes a row that differs from another one in plain values only, with the comma before it.
bool Extractor::takeRowLike(std::string_view row) {
    const std::size_t values = result_.values.size();
    PlainLiterals literals(statement_, placeOf(token_.source) + 1, result_.values);
    if (!literals.takeLike(row)) {
        result_.values.resize(values);
        return false;
    }
    reader_.moveTo(literals.position());
    advance();
    return true;
}

/// Returns where in the text the row begins.
std::size_t Extractor::readRow() {
    if (splitRows_) runStart_ = result_.values.size();
    copyTo(placeOf(token_.source));
    const std::size_t begin = result_.text.size();
    if (!isSign(token_, "(")) {
        givenUp_ = splitRows_;
        return begin;
    }
    do {
        advance();
        readElement();
    } while (running() && isSign(token_, ","));
    if (!running()) return begin;
    copyTo(placeOf(token_.source) + 1);
    advance();
    return begin;
}

void Extractor::readElement() {
    if (takeElement()) return;
    const int depth = depth_;
    while (running() && (depth_ > depth || !(isSign(token_, ",") || isSign(token_, ")")))) {
        // What is computed may depend on the rows before it: they must not be there yet.
        if (isSign(token_, "(")) givenUp_ = splitRows_;
        token_.kind == TokenKind::Sign ? readSign() : advance();
    }
}

/// Takes an element that is one literal, a number's sign with it.
bool Extractor::takeElement() {
    const bool sign = isSign(token_, "-") || isSign(token_, "+");
    if (full() || !(sign || token_.kind == TokenKind::Text || token_.kind == TokenKind::Number))
        return false;
    TokenReader ahead = reader_;
    const std::string_view number = sign ? ahead.next().source : token_.source;
    const char behind = ahead.peek();
    if (behind != ',' && behind != ')') return false;
    if (token_.kind == TokenKind::Text) {
        takeText();
        return true;
    }
    if (!takeNumber(token_.source, number, isSign(token_, "-"))) return false;
    copied_ = placeOf(number) + number.size();
    if (sign) advance();
    advance();
    return true;
}

/// Takes a literal that something is compared with or set to; not in a list of columns, where the
/// text of a subquery is the column's name.
void Extractor::takeOperand() {
    const bool operand =
        takesOperands_ && listDepth_ == kNoList && !full() && isComparison(previous_);
    if (operand && token_.kind == TokenKind::Text) return takeText();
    if (operand && token_.kind == TokenKind::Number &&
        takeNumber(token_.source, token_.source, false))
        copied_ = placeOf(token_.source) + token_.source.size();
    advance();
}

bool Extractor::takeNumber(std::string_view from, std::string_view digits, bool negative) {
    const auto number = wholeNumber(digits, negative);
    if (!number) return false;
    putPlace(from);
    result_.values.emplace_back(*number);
    return true;
}

void Extractor::takeText() {
    putPlace(token_.source);
    copied_ = placeOf(token_.source) + token_.source.size();
    if (token_.decoded) {
        result_.decoded.push_back(std::move(*token_.decoded));
        result_.values.emplace_back(std::string_view(result_.decoded.back()));
    } else {
        result_.values.emplace_back(token_.value());
    }
    advance();
}

/// Puts a `?` in the place of the literal that begins at `from`.
void Extractor::putPlace(std::string_view from) {
    copyTo(placeOf(from));
    result_.text += '?';
}

/// Copies the statement up to here. A word that stands close behind a literal gets a blank: ?5 and
/// ?and are something else.
void Extractor::copyTo(std::size_t end) {
    const bool behindPlace = copied_ > 0 && !result_.text.empty() && result_.text.back() == '?';
    if (behindPlace && copied_ < end && isWordCharacter(statement_[copied_])) result_.text += ' ';
    result_.text.append(statement_, copied_, end - copied_);
    copied_ = end;
}

void Extractor::advance() {
    previous_ = token_.source;
    token_ = reader_.next();
}

Skeleton read(std::string_view statement) {
    Extractor splitting(statement, true);
    if (splitting.run()) return splitting.take();
    Extractor whole(statement, false);
    whole.run();
    return whole.take();
}

constexpr std::size_t kMostKnown = 64;
constexpr std::size_t kUsualValues = 24;  // of a row, at most

/// Blanks, and signs that begin neither a comment nor a literal.
constexpr std::array<bool, 256> kPlainSigns = [] {
    std::array<bool, 256> all{};
    for (const char sign : std::string_view(" ,()=.<>*+\n"))
        all[static_cast<unsigned char>(sign)] = true;
    return all;
}();

/// What a thread knows of statements that look alike: they have the same bytes but for their plain
/// literals, and those are of the same kinds.
struct Known {
    std::string pattern;   // those bytes, with a `?` for each literal
    std::size_t size = 0;  // of the skeleton, with which the pattern begins
    std::string kinds;     // of the literals
    bool forServers = false;
    StatementKind kind = StatementKind::Write;
};

char markOf(const Value& value) {
    return std::holds_alternative<std::int64_t>(value) ? 'n' : 't';
}

/// Guesses what is known of a statement by the bytes alone: every plain literal is taken out. Most
/// statements come again with other values, and reading their words takes longer than all else. The
/// guess is right when the reader, who goes by the words, takes out the same: what it decides
/// depends on nothing else.
class Guess {
public:
    explicit Guess(std::string_view statement) : statement_(statement) {}

    /// False when the bytes do not tell: there are comments, escapes, other quotes, or the like.
    bool run();
    bool isRight(const Skeleton& skeleton) const {
        return skeleton.valuesPerRow == 0 && skeleton.values.size() == values_.size() &&
               skeleton.text == std::string_view(text_).substr(0, size_);
    }
    Known known(bool forServers) const;

private:
    bool skipWord();
    bool skipSign();
    bool takeLiteral();

    const std::string_view statement_;
    std::size_t position_ = 0;
    std::size_t copied_ = 0;
    std::string text_;
    std::size_t size_ = 0;  // of the skeleton
    std::vector<Value> values_;
};

Known Guess::known(bool forServers) const {
    std::string kinds;
    for (const Value& value : values_)
        kinds += markOf(value);
    return {text_, size_, kinds, forServers, kindOf(statement_)};
}

bool Guess::run() {
    bool plain = true;
    while (plain && position_ < statement_.size() && statement_[position_] != ';') {
        const char c = statement_[position_];
        if (c == '\'' || isDigit(c)) {
            plain = takeLiteral();
        } else {
            plain = isWordCharacter(c) ? skipWord() : skipSign();
        }
    }
    text_.append(statement_, copied_, position_ - copied_);
    size_ = text_.size();
    text_.append(statement_, position_);
    return plain && (position_ == statement_.size() ||
                     statement_.find_first_not_of(' ', position_ + 1) == std::string_view::npos);
}

bool Guess::skipWord() {
    const std::size_t begin = position_;
    while (position_ < statement_.size() && isWordCharacter(statement_[position_]))
        ++position_;
    const bool opensText = position_ < statement_.size() && statement_[position_] == '\'';
    const std::string_view word = statement_.substr(begin, position_ - begin);
    return !opensText &&  // N'text'
           std::all_of(word.begin(), word.end(), [](char c) { return (c & 0x80) == 0; });
}

bool Guess::skipSign() {
    const char c = statement_[position_++];
    const char next = position_ < statement_.size() ? statement_[position_] : '\0';
    return kPlainSigns[static_cast<unsigned char>(c)] || (c == '-' && next != '-') ||
           (c == '!' && next == '=');
}

bool Guess::takeLiteral() {
    PlainLiterals literals(statement_, position_, values_);
    if (!literals.take()) return false;
    text_.append(statement_, copied_, position_ - copied_) += '?';
    copied_ = position_ = literals.position();
    return true;
}

/// What a thread knows, the last used first.
class KnownStatements {
public:
    /// The skeleton of a statement that looks like a known one.
    std::optional<Skeleton> find(std::string_view statement) {
        std::optional<Skeleton> skeleton(std::in_place);
        std::vector<Value>& values = skeleton->values;
        values.reserve(kUsualValues);
        for (auto known = all_.begin(); known != all_.end(); ++known) {
            PlainLiterals literals(statement, 0, values);
            if (literals.takeLike(known->pattern) && literals.position() == statement.size() &&
                areOf(known->kinds, values)) {
                all_.splice(all_.begin(), all_, known);
                skeleton->text.assign(known->pattern, 0, known->size);
                skeleton->forServers = known->forServers;
                skeleton->kind = known->kind;
                return skeleton;
            }
            values.clear();
        }
        skeleton.reset();
        return skeleton;
    }

    void add(Known known) {
        if (all_.size() == kMostKnown) all_.pop_back();
        all_.push_front(std::move(known));
    }

private:
    static bool areOf(const std::string& kinds, const std::vector<Value>& values) {
        return std::equal(kinds.begin(), kinds.end(), values.begin(), values.end(),
                          [](char kind, const Value& value) { return markOf(value) == kind; });
    }

    std::list<Known> all_;
};

KnownStatements& knownStatements() {
    thread_local KnownStatements known;
    return known;
}

}  // namespace

std::optional<Skeleton> knownSkeleton(std::string_view statement) {
    if (statement.size() > kLongestKept) return {};
    return knownStatements().find(statement);
}

Skeleton skeletonOf(std::string_view statement) {
    if (std::optional<Skeleton> known = knownSkeleton(statement)) return std::move(*known);
    Skeleton skeleton = read(statement);
    if (statement.size() > kLongestKept) return skeleton;
    Guess guess(statement);
    if (guess.run() && guess.isRight(skeleton))
        knownStatements().add(guess.known(skeleton.forServers));
    return skeleton;
}

}  // namespace dbaccess
