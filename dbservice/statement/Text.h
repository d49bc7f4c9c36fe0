#ifndef DBSERVICE_STATEMENT_TEXT_H
#define DBSERVICE_STATEMENT_TEXT_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Statement texts are written as they go to the database, with {} where a value stands:
//
//     compose("update channel set Num = '{}' where Guid = '{}'", channel.Num, channel.Guid)
//
// A text value is copied as it is, quotes and backslashes included: the contract leaves escaping to
// the callers. A number is written in decimal.

namespace dbservice::statement {

/// A value to stand in a statement: a text, not owned, or a number.
class Value {
public:
    Value(const std::string& text) : text_(text) {}  // NOLINT(google-explicit-constructor)
    Value(const char* text) : text_(text) {}
    Value(std::int32_t number) : number_(number), isNumber_(true) {}
    Value(std::uint32_t number) : number_(number), isNumber_(true) {}

    void appendTo(std::string& text) const;

private:
    std::string_view text_;
    std::int64_t number_ = 0;
    bool isNumber_ = false;
};

/// Appends the pattern with its n-th {} replaced by the n-th value; it has `count` of them.
void appendValues(std::string& text, std::string_view pattern, const Value* values,
                  std::size_t count);

template <class... Values>
void append(std::string& text, std::string_view pattern, const Values&... values) {
    const Value list[] = {Value(values)..., Value("")};
    appendValues(text, pattern, list, sizeof...(values));
}

template <class... Values>
std::string compose(std::string_view pattern, const Values&... values) {
    constexpr std::size_t kUsualSize = 350;
    std::string text;
    text.reserve(kUsualSize);
    append(text, pattern, values...);
    return text;
}

/// Appends what stands between two parts, as "," or " or", unless the text is still empty.
inline void separate(std::string& text, std::string_view separator) {
    if (!text.empty()) text.append(separator);
}

}  // namespace dbservice::statement

#endif
