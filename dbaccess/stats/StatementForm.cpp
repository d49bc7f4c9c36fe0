#include "dbaccess/stats/StatementForm.h"

#include "dbaccess/reader/TokenReader.h"

namespace dbaccess {
std::string formOf(std::string_view statement) {
    std::string form;
    TokenReader reader(statement);
    const char* end = nullptr;  // of the token before
    Token token;
    while (reader.read(token)) {
        if (form.size() >= kLongestForm) return form + "...";
        if (end != nullptr && token.source.data() != end) form += ' ';
        end = token.source.data() + token.source.size();
        if (token.kind == TokenKind::Text || token.kind == TokenKind::Number) {
            form += '?';
            if (token.source.find('\\') != std::string_view::npos) return form + "...";
        } else {
            form.append(token.source.substr(0, kLongestForm));
        }
    }
    return token.kind == TokenKind::Bad ? form + "..." : form;
}

}  // namespace dbaccess
