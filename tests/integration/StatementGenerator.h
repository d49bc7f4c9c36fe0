#ifndef TESTS_INTEGRATION_STATEMENTGENERATOR_H
#define TESTS_INTEGRATION_STATEMENTGENERATOR_H

#include <cstddef>
#include <random>
#include <string>
#include <vector>

/// A statement with places for values: {key}, {text}, {number}, {id} and, for a value that stands
/// without quotes, {bare}.
struct StatementForm {
    std::string text;
    std::string table;
    std::vector<std::string> columns;  ///< of its rows; empty: it is no query
    std::string order;                 ///< the column that its rows are ordered by; empty: none
};

/// The forms of all statements of tests/unit/statements.txt, ill-formed ones included, in its
/// order; some more before them, and behind each insert one of three rows.
std::vector<StatementForm> statementForms();

/// Selects all rows of a table.
StatementForm contentOf(const std::string& table);

/// What breaks the UTF-8 of any text that it stands in.
extern const std::vector<std::string> kIllFormedTexts;

/// Puts values into forms, the same ones for the same seed.
class ValueSource {
public:
    /// @param hostile  among the values are such as break out of their quotes, escapes, NUL bytes,
    ///                 ill-formed UTF-8, and lengths and numbers at the limits of columns. Some are
    ///                 escaped, as careful callers do.
    ValueSource(int seed, bool hostile) : random_(static_cast<unsigned>(seed)), hostile_(hostile) {}

    std::string fill(const StatementForm& form);

    /// A number below `count`.
    std::size_t below(std::size_t count) { return random_() % count; }

private:
    std::string valueFor(const std::string& place);
    std::string text();
    std::string hostileText();
    const std::string& oneOf(const std::vector<std::string>& texts) {
        return texts[below(texts.size())];
    }

    std::minstd_rand random_;
    bool hostile_;
};

#endif
