// A text of any bytes, escaped, is read back as it was: by the statement reader, as a value of a
// skeleton, and from an embedded database. What is not UTF-8 is refused by its own number.
#include "dbaccess/EscapeText.h"

#include "tests/fuzz/Fuzz.h"

void dbaccess::tryInput(const std::string& input) {
    static const std::unique_ptr<Connection> connection = openDatabase("select 1");
    const std::string first = input.substr(0, input.size() / 2);
    const std::string second = input.substr(first.size());
    const std::string a = '\'' + EscapeText(first) + '\'';
    const std::string b = '\'' + EscapeText(second) + '\'';
    const int error = isUtf8(first, 4) && isUtf8(second, 4) ? 0 : kIncorrectValue;

    const std::string list = a + ',' + b;
    TokenReader reader(list);
    std::string read;
    for (Token token; reader.read(token);)
        read += token.kind == TokenKind::Text ? token.value() : token.source;
    require(reader.error() == error, "what is not UTF-8 is 1366");
    require(error != 0 || read == first + ',' + second, "the reader gives the texts back");

    const std::string both = a + "=" + a + " and " + b + "=" + b;
    const Statement statement("select " + a + "as a from(select 1)x where " + both);
    const Outcome outcome = connection->run("fuzz", statement);
    require(outcome.error.number == error, "the engine knows the text");
    if (error != 0) return;
    require(statement.skeleton().values == std::vector<Value>({Value(first), Value(second)}),
            "the skeleton has the texts");
    require(outcome.rows->next() && outcome.rows->getString("a", read) && read == first,
            "the engine finds a row by the texts, and gives the first one back");
}
