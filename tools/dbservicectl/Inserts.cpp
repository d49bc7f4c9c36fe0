#include "tools/dbservicectl/Inserts.h"

#include <fmt/format.h>

#include <charconv>
#include <utility>

#include "dbaccess/EscapeText.h"
#include "tools/dbservicectl/Entities.h"

namespace dbservicectl {
namespace {

constexpr std::size_t kMostRows = 1000;
constexpr std::size_t kFull = std::size_t{256} << 10;  // bytes; with a row more far below 1 MiB

}  // namespace

std::optional<std::int64_t> wholeNumber(const std::string& text) {
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [read, error] = std::from_chars(text.data(), end, number);
    const bool usual = error == std::errc() && read == end && std::to_string(number) == text;
    return usual ? std::optional(number) : std::nullopt;
}

std::string literalOf(schema::Type type, const Cell& value) {
    if (!value) return "NULL";
    if (isNumber(type) && wholeNumber(*value)) return *value;
    return "'" + dbaccess::EscapeText(*value) + "'";
}

Inserts::Inserts(const schema::Table& table, Send send)
    : columns_(schema::columnsOf(table)), send_(std::move(send)) {
    std::string names;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        names += (i == 0 ? "" : ",") + columns_[i].name;
        if (columns_[i].name == table.primaryKey) keyAt_ = i;
        if (columns_[i].type == schema::Type::NextId) idAt_ = i;
    }
    afterwards_ = fmt::format("update {} set Id=0 where {} in (", table.name, table.primaryKey);
    head_ = std::string("insert into ") + table.name + "(" + names + ") values";
}

void Inserts::add(const std::vector<Cell>& row) {
    statement_ += rows_ == 0 ? head_ : ",";
    for (std::size_t i = 0; i < columns_.size(); ++i)
        statement_ += (i == 0 ? "(" : ",") + literalOf(columns_[i].type, row[i]);
    statement_ += ')';
    if (idAt_ && row[*idAt_] == "0")
        keys_ += (keys_.empty() ? "" : ",") + literalOf(columns_[keyAt_].type, row[keyAt_]);
    if (++rows_ == kMostRows || statement_.size() >= kFull) finish();
}

void Inserts::finish() {
    if (rows_ != 0) send_(std::exchange(statement_, {}), std::exchange(rows_, 0));
    if (!keys_.empty()) send_(afterwards_ + std::exchange(keys_, {}) + ')', 0);
}

}  // namespace dbservicectl
