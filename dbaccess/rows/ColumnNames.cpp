#include "dbaccess/rows/ColumnNames.h"

#include "dbaccess/reader/LetterCase.h"

namespace dbaccess {

std::size_t ColumnNames::find(std::string_view name, std::size_t first) const {
    const std::size_t count = names_.size();
    for (std::size_t step = 0; step < count; ++step) {
        const std::size_t column = (first + step) % count;
        if (sameIgnoringCase(names_[column], name)) return column;
    }
    return count;
}

void ColumnNames::keep(std::unique_ptr<const FieldPlaces>& places) const {
    const FieldPlaces* none = nullptr;
    if (places_.compare_exchange_strong(none, places.get())) static_cast<void>(places.release());
}

}  // namespace dbaccess
