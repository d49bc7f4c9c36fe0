#include "dbaccess/reader/TokenReader.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#include "dbaccess/error/ErrorNumber.h"

namespace dbaccess {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}
bool isControl(char c) {
    return (c >= 0 && c < ' ') || c == '\x7f';
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isHexDigit(char c) {
    return isDigit(c) || ((c | 0x20) >= 'a' && (c | 0x20) <= 'f');
}
bool isNonAscii(char c) {
    return (static_cast<unsigned char>(c) & 0x80) != 0;
}

template <typename Condition>
std::size_t skipWhile(std::string_view text, std::size_t at, Condition condition) {
    while (at < text.size() && condition(text[at]))
        ++at;
    return at;
}

/// Length of the UTF-8 character that the text begins with; 0 when it is ill-formed.
std::size_t characterLength(std::string_view text) {
    const auto byte = [&](std::size_t at) -> unsigned {
        return at < text.size() ? static_cast<unsigned char>(text[at]) : 0;
    };
    const unsigned lead = byte(0);
    if (lead < 0x80) return 1;
    if (lead < 0xC2 || lead > 0xF4) return 0;
    // The second byte's range keeps out overlong forms, surrogates and what lies above U+10FFFF.
    const unsigned lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (byte(1) < lowest || byte(1) > highest) return 0;
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    for (std::size_t i = 2; i < length; ++i)
        if ((byte(i) & 0xC0) != 0x80) return 0;
    return length;
}

/// Where a comment that begins here ends; `at` when none does, kNone when it is ill-formed.
std::size_t commentEnd(std::string_view text, std::size_t at) {
    const auto startsWith = [&](std::string_view mark) {
        return sameBytes(text.substr(at, mark.size()), mark);
    };
    const char first = text[at];
    if (first != '-' && first != '#' && first != '/') return at;
    // Two dashes without a blank behind them are two minus signs. Blanks and `;` at the end of a
    // statement are not there for a server.
    const bool dashes =
        startsWith("--") && (text.find_first_not_of("; \t\n\v\f\r", at + 2) == kNone ||
                             text[at + 2] == ' ' || isControl(text[at + 2]));
    // A NUL ends it like a line's end, and is then no token.
    if (dashes || first == '#')
        return std::min(text.find_first_of(std::string_view("\n\0", 2), at), text.size());
    if (!startsWith("/*")) return at;
    if (startsWith("/*!") || startsWith("/*M!")) return kNone;
    const std::size_t close = text.find("*/", at + 2);
    return close == kNone ? kNone : close + 2;
}

/// Where the blanks and comments that begin here end; kNone when a comment is ill-formed.
std::size_t gapEnd(std::string_view text, std::size_t at) {
    for (;;) {
        at = skipWhile(text, at, isBlank);
        if (at == text.size()) return at;
        const std::size_t end = commentEnd(text, at);
        if (end == at || end == kNone) return end;
        at = end;
    }
}

/// Where the number that begins here ends; as a server reads it, 1e3x is the number 1e3 and x.
std::size_t numberEnd(std::string_view text, std::size_t at) {
    if (text.compare(at, 2, "0x") == 0) {
        const std::size_t end = skipWhile(text, at + 2, isHexDigit);
        if (end > at + 2) return end;
    }
    std::size_t end = skipWhile(text, at, isDigit);
    if (end < text.size() && text[end] == '.') end = skipWhile(text, end + 1, isDigit);
    if (end == text.size() || toLower(text[end]) != 'e') return end;
    const bool sign = end + 1 < text.size() && (text[end + 1] == '+' || text[end + 1] == '-');
    const std::size_t digits = end + (sign ? 2 : 1);
    const std::size_t exponentEnd = skipWhile(text, digits, isDigit);
    return exponentEnd > digits ? exponentEnd : end;
}

}  // namespace

bool isUtf8(std::string_view text, std::size_t longestCharacter) {
    std::size_t at = 0;
    for (std::uint64_t eight = 0; at + sizeof eight <= text.size(); at += sizeof eight) {
        std::memcpy(&eight, text.data() + at, sizeof eight);
        if ((eight & 0x8080808080808080U) != 0) break;
    }
    at = skipWhile(text, at, [](char c) { return !isNonAscii(c); });
    while (at < text.size()) {
        const std::size_t length = characterLength(text.substr(at));
        if (length == 0 || length > longestCharacter) return false;
        at += length;
    }
    return true;
}

bool isWord(const Token& token, std::string_view word) {
    return token.kind == TokenKind::Word && token.source.size() == word.size() &&
           toLower(token.source.front()) == word.front() &&
           std::equal(word.begin(), word.end(), token.source.begin(),
                      [](char expected, char c) { return expected == toLower(c); });
}

bool isAnyOf(const Token& token, std::initializer_list<std::string_view> words) {
    return std::any_of(words.begin(), words.end(),
                       [&](std::string_view word) { return isWord(token, word); });
}

std::string_view nameIn(const Token& token) {
    if (token.kind != TokenKind::Name) return token.source;
    return token.source.substr(1, token.source.size() - 2);
}

Token TokenReader::next() {
    if (error_ != 0) return bad(error_);
    const std::size_t start = gapEnd(text_, position_);
    if (start == kNone) return bad(kSyntaxError);
    position_ = start;
    if (start == text_.size()) return take(TokenKind::End, start);
    const char c = text_[start];
    if (isDigit(c) || (c == '.' && isDigit(at(start + 1)))) return readNumber();
    if (isWordCharacter(c))
        return readName(TokenKind::Word, skipWhile(text_, start, isWordCharacter));
    if (c == '\'' || c == '"') return readText();
    if (c == '`') {
        std::size_t end = text_.find('`', start + 1);
        while (end != kNone && at(end + 1) == '`')
            end = text_.find('`', end + 2);
        return end == kNone ? bad(kSyntaxError) : readName(TokenKind::Name, end + 1);
    }
    return c == ';' && !compound_ ? readEnd() : readSign();
}

char TokenReader::peek() const {
    const std::size_t start = error_ != 0 ? kNone : gapEnd(text_, position_);
    return start == kNone ? '\0' : at(start);
}

Token TokenReader::take(TokenKind kind, std::size_t end) {
    Token token;
    token.kind = kind;
    token.source = text_.substr(position_, end - position_);
    position_ = end;
    return token;
}

Token TokenReader::bad(int error) {
    error_ = error;
    return take(TokenKind::Bad, position_);
}

Token TokenReader::readName(TokenKind kind, std::size_t end) {
    const std::string_view name = text_.substr(position_, end - position_);
    if (name.find('\0') != kNone) return bad(kSyntaxError);
    // Servers keep names in a character set without 4-byte characters.
    return isUtf8(name, 3) ? take(kind, end) : bad(kInvalidUtf8);
}

Token TokenReader::readNumber() {
    const std::size_t digitsEnd = skipWhile(text_, position_, isDigit);
    const std::size_t end = numberEnd(text_, position_);
    // Digits that letters follow are a name.
    if (end == digitsEnd && end < text_.size() && isWordCharacter(text_[end]))
        return readName(TokenKind::Word, skipWhile(text_, end, isWordCharacter));
    return take(TokenKind::Number, end);
}

Token TokenReader::readText() {
    const std::size_t start = position_;
    const std::size_t plain = plainEnd();
    if (plain != kNone) {
        const std::string_view value = text_.substr(start + 1, plain - start - 2);
        return isUtf8(value, 4) ? take(TokenKind::Text, plain) : bad(kIncorrectValue);
    }
    std::string value;
    std::size_t end = start;
    for (std::size_t quote = start; at(quote) == '\'' || at(quote) == '"';) {
        position_ = quote;
        const bool closed = readLiteral(value);
        end = position_;
        position_ = start;
        if (!closed) return bad(kSyntaxError);
        quote = gapEnd(text_, end);
    }
    if (!isUtf8(value, 4)) return bad(kIncorrectValue);
    Token token = take(TokenKind::Text, end);
    token.decoded = std::move(value);
    return token;
}

/// Where a literal ends that has nothing to decode and stands alone; kNone for others.
std::size_t TokenReader::plainEnd() const {
    const char quote = text_[position_];
    const std::size_t close =
        skipWhile(text_, position_ + 1, [quote](char c) { return c != quote && c != '\\'; });
    if (at(close) != quote) return kNone;
    const std::size_t next = gapEnd(text_, close + 1);
    return next == kNone || at(next) == '\'' || at(next) == '"' ? kNone : close + 1;
}

/// Appends the value of one literal. False when it is not closed.
bool TokenReader::readLiteral(std::string& value) {
    const char quote = text_[position_++];
    while (position_ < text_.size()) {
        const std::size_t end =
            skipWhile(text_, position_, [quote](char c) { return c != quote && c != '\\'; });
        value.append(text_, position_, end - position_);
        position_ = end;
        if (at(end) == '\\') {
            if (!readEscape(value)) return false;
            continue;
        }
        if (end == text_.size()) return false;
        ++position_;
        if (at(position_) != quote) return true;
        value += text_[position_++];  // a doubled quote
    }
    return false;
}

/// Appends what a backslash and the character behind it mean. False at the end of the text.
bool TokenReader::readEscape(std::string& value) {
    constexpr std::string_view kLetters = "ntr0bZ";
    constexpr std::string_view kMeanings("\n\t\r\0\b\x1a", 6);
    if (position_ + 1 == text_.size()) return false;
    const char c = text_[position_ + 1];
    position_ += 2;
    if (c == '%' || c == '_') value += '\\';  // kept for patterns, where it has its meaning
    const std::size_t letter = kLetters.find(c);
    value += letter == kNone ? c : kMeanings[letter];
    return true;
}

Token TokenReader::readSign() {
    constexpr std::array<std::string_view, 11> kLong = {"<=>", "<=", ">=", "<>", "!=", "||",
                                                        "&&",  ":=", "<<", ">>", "@@"};
    const std::string_view rest = text_.substr(position_);
    const char first = rest.front();
    if (first == '?' && parameters_) return take(TokenKind::Parameter, position_ + 1);
    if (std::string_view(",()=.;+-*/%^~{}").find(first) != kNone)
        return take(TokenKind::Sign, position_ + 1);
    for (const std::string_view sign : kLong)
        if (rest.compare(0, sign.size(), sign) == 0)
            return take(TokenKind::Sign, position_ + sign.size());
    return std::string_view("<>!&|@").find(first) == kNone ? bad(kSyntaxError)
                                                           : take(TokenKind::Sign, position_ + 1);
}

/// At a `;`: only more of them, blanks and comments may follow.
Token TokenReader::readEnd() {
    // Two minus signs cannot end a statement, and without what follows they would be a comment.
    if (position_ >= 2 && text_[position_ - 1] == '-' && text_[position_ - 2] == '-')
        return bad(kSyntaxError);
    std::size_t rest = position_;
    while (rest != kNone && at(rest) == ';')
        rest = gapEnd(text_, rest + 1);
    return rest == text_.size() ? take(TokenKind::End, position_) : bad(kSyntaxError);
}

}  // namespace dbaccess
