#ifndef DBSERVICE_DBACCESS_READER_TOKENREADER_H
#define DBSERVICE_DBACCESS_READER_TOKENREADER_H

#include <array>
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "dbaccess/reader/LetterCase.h"

namespace dbaccess {

enum class TokenKind {
    Word,       ///< keyword or unquoted name
    Name,       ///< `quoted name`, source includes the backticks
    Text,       ///< text literal; adjacent literals come as one
    Number,     ///< 12, 1.5, 1e3, 0x1F: the digits as written, no sign
    Sign,       ///< operator or punctuation, as long as it goes: `<`, `<=`, `<=>`
    Parameter,  ///< `?`, see TokenReader::setParameters
    End,        ///< end of the statement
    Bad,        ///< not a statement: see TokenReader::error
};

struct Token {
    TokenKind kind = TokenKind::End;

    /// The token as written; for adjacent literals all of them and what stands between. Empty, but
    /// in its place in the text, for End (where the statement ends) and Bad (where it goes wrong).
    std::string_view source;

    /// Text only: the value as MySQL's rules decode it.
    std::string_view value() const {
        return decoded ? std::string_view(*decoded) : source.substr(1, source.size() - 2);
    }

    std::optional<std::string> decoded;  ///< the value of a Text that does not stand in its source
};

/// A server's limit for the name of a table or database; what is longer is none.
constexpr std::size_t kLongestName = 64;

inline constexpr std::array<bool, 256> kWordCharacters = [] {
    std::array<bool, 256> all{};
    for (std::size_t i = 0; i < all.size(); ++i) {
        const std::size_t lower = i | 0x20;
        all[i] = (lower >= 'a' && lower <= 'z') || (i >= '0' && i <= '9') || i == '_' || i == '$' ||
                 i >= 0x80;
    }
    return all;
}();

/// Whether words and unquoted names are made of it.
inline bool isWordCharacter(char c) {
    return kWordCharacters[static_cast<unsigned char>(c)];
}

/// Whether it is well-formed, with no character of more than `longestCharacter` bytes.
bool isUtf8(std::string_view text, std::size_t longestCharacter);

/// Equality that is compiled to a few instructions when `b` is a literal.
inline bool sameBytes(std::string_view a, std::string_view b) {
    return a.size() == b.size() &&
           std::char_traits<char>::compare(a.data(), b.data(), b.size()) == 0;
}

/// Whether the token is this word, or one of these, given in lower case, in any letter case.
bool isWord(const Token& token, std::string_view word);
bool isAnyOf(const Token& token, std::initializer_list<std::string_view> words);

inline bool isSign(const Token& token, std::string_view sign) {
    return token.kind == TokenKind::Sign && sameBytes(token.source, sign);
}

/// Whether nothing follows: the end of the statement, or of what can be read of it.
inline bool isEnd(const Token& token) {
    return token.kind == TokenKind::End || token.kind == TokenKind::Bad;
}

/// The name that a Word or Name is: without the backticks around it.
std::string_view nameIn(const Token& token);

/// Reads a statement token by token by MySQL's lexical rules (default sql_mode: backslash escapes,
/// "..." is text): comments are passed over, literals decoded and checked to be UTF-8, and whatever
/// a server refuses before it understands a statement ends in a Bad token. So does the executable
/// comment of servers, which would hide words from the layer.
///
/// The text must outlive the reader and its tokens. A copy of a reader reads ahead.
class TokenReader {
public:
    explicit TokenReader(std::string_view text) : text_(text) {}

    /// The next token; End (or Bad) again and again once reached.
    Token next();

    /// The same for loops: false at the End or a Bad token.
    bool read(Token& token) {
        token = next();
        return !isEnd(token);
    }

    /// Goes on from another place, one where a token begins or blanks and comments do.
    void moveTo(std::size_t position) { position_ = position; }

    /// The character that the next token begins with; NUL at the end, and where no token can be.
    char peek() const;

    /// After a Bad token: 1064 (syntax), 1366 (a literal is not UTF-8) or 1300 (bytes outside
    /// literals are not UTF-8). 0 otherwise.
    int error() const { return error_; }

    /// While on, `;` is a Sign and does not end the statement: for the bodies of triggers.
    void setCompound(bool on) { compound_ = on; }

    /// While on, `?` is a Parameter; otherwise it has no place in a statement.
    void setParameters(bool on) { parameters_ = on; }

private:
    Token take(TokenKind kind, std::size_t end);
    Token bad(int error);
    Token readName(TokenKind kind, std::size_t end);
    Token readNumber();
    Token readText();
    Token readSign();
    Token readEnd();
    std::size_t plainEnd() const;
    bool readLiteral(std::string& value);
    bool readEscape(std::string& value);

    char at(std::size_t position) const { return position < text_.size() ? text_[position] : '\0'; }

    std::string_view text_;
    std::size_t position_ = 0;
    int error_ = 0;
    bool compound_ = false;
    bool parameters_ = false;
};

}  // namespace dbaccess

#endif
