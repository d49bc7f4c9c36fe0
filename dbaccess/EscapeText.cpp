#include "dbaccess/EscapeText.h"

namespace dbaccess {

std::string EscapeText(const std::string& text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (const char c : text) {
        if (c == '\'' || c == '\\') escaped += c;
        escaped += c;
    }
    return escaped;
}

}  // namespace dbaccess
