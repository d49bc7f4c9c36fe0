#ifndef DBSERVICE_DBACCESS_READER_LETTERCASE_H
#define DBSERVICE_DBACCESS_READER_LETTERCASE_H

#include <algorithm>
#include <string>
#include <string_view>

namespace dbaccess {

/// Letter case as names and keywords are compared: of ASCII letters only, whatever the locale.
inline char toLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
}

inline std::string lowered(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), toLower);
    return result;
}

inline bool sameIgnoringCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return toLower(x) == toLower(y);
           });
}

}  // namespace dbaccess

#endif
