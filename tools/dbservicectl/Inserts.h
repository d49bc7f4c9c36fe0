#ifndef DBSERVICECTL_INSERTS_H
#define DBSERVICECTL_INSERTS_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "schema/Tables.h"
#include "tools/dbservicectl/Output.h"

namespace dbservicectl {

/// The 64-bit number that a text is in its usual form; none for any other text, which a database
/// that was made by hand may hold in a column of numbers.
std::optional<std::int64_t> wholeNumber(const std::string& text);

/// A value as it stands in a statement, whatever is in it.
std::string literalOf(schema::Type type, const Cell& value);

/// Makes inserts of many rows out of single rows. None of them is longer than what every server
/// takes, so that none runs long either.
class Inserts {
public:
    using Send = std::function<void(std::string statement, std::size_t rows)>;

    /// @param send  is called with each insert, once it is full.
    Inserts(const schema::Table& table, Send send);

    /// @param row  the values of all columns of the table, in their order. NULL as the row's
    ///             number or `Id`: the database gives it one.
    void add(const std::vector<Cell>& row);

    /// Sends what is left.
    void finish();

private:
    std::vector<schema::Column> columns_;
    Send send_;
    std::string head_;
    std::string afterwards_;  // an update of the rows with these keys
    std::string keys_;        // of rows whose `Id` is 0: inserts take that for none
    std::size_t keyAt_ = 0;   // among the columns
    std::optional<std::size_t> idAt_;
    std::string statement_;
    std::size_t rows_ = 0;
};

}  // namespace dbservicectl

#endif
