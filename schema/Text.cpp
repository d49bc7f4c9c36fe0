#include "schema/Text.h"

#include <algorithm>

#include "dbaccess/reader/LetterCase.h"

namespace schema {
namespace {

constexpr std::string_view kBlanks = " \t\r\n\v\f";

bool isBlank(char c) {
    return kBlanks.find(c) != std::string_view::npos;
}

}  // namespace

std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

std::string oneLine(std::string text) {
    std::replace_if(text.begin(), text.end(), isBlank, ' ');
    return text;
}

std::string plain(std::string_view text) {
    std::string result = dbaccess::lowered(text);
    const auto isLeftOut = [](char c) { return isBlank(c) || c == '"' || c == '`'; };
    result.erase(std::remove_if(result.begin(), result.end(), isLeftOut), result.end());
    return result;
}

std::vector<std::string> split(std::string_view list) {
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    int depth = 0;
    char quote = '\0';
    for (std::size_t at = 0; at < list.size(); ++at) {
        const char c = list[at];
        if (quote != '\0') {
            if (c == quote) quote = '\0';
            continue;
        }
        if (c == '\'' || c == '"' || c == '`') quote = c;
        if (c == '(') ++depth;
        if (c == ')') --depth;
        if (c != ',' || depth != 0) continue;
        pieces.emplace_back(trimmed(list.substr(begin, at - begin)));
        begin = at + 1;
    }
    pieces.emplace_back(trimmed(list.substr(begin)));
    return pieces;
}

}  // namespace schema
