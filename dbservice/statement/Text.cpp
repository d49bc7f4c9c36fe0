#include "dbservice/statement/Text.h"

#include <cassert>
#include <charconv>

namespace dbservice::statement {

void Value::appendTo(std::string& text) const {
    if (!isNumber_) {
        text.append(text_);
        return;
    }
    char digits[24];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, number_).ptr);
}

void appendValues(std::string& text, std::string_view pattern, const Value* values,
                  std::size_t count) {
    constexpr std::string_view kPlace = "{}";
    for (std::size_t i = 0; i < count; ++i) {
        const auto place = pattern.find(kPlace);
        assert(place != std::string_view::npos);
        text.append(pattern.substr(0, place));
        values[i].appendTo(text);
        pattern.remove_prefix(place + kPlace.size());
    }
    assert(pattern.find(kPlace) == std::string_view::npos);
    text.append(pattern);
}

}  // namespace dbservice::statement
