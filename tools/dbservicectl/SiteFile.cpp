#include "tools/dbservicectl/SiteFile.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <system_error>
#include <utility>

#include "tools/dbservicectl/Failure.h"
#include "tools/dbservicectl/Inserts.h"

namespace dbservicectl {
namespace {

using nlohmann::json;
using schema::Type;

constexpr const char* kFormat = "dbservice site";
constexpr std::int64_t kVersion = 1;

/// The kind of records that a column's value is the key of; null for a column of its own.
const char* kindReferredTo(const Entity& entity, const schema::Column& column) {
    if (entity.isEvent) return nullptr;  // events outlive what they tell of
    for (const Reference& reference : references()) {
        if (reference.table != entity.table || reference.column != column.name) continue;
        const Entity& target = entityOf(std::string(reference.target));
        if (reference.key == tableOf(target).primaryKey) return target.name;
    }
    return nullptr;
}

/// Whether each record must have its own value there.
bool isKey(const schema::Table& table, const schema::Column& column) {
    return column.type == Type::Key || column.name == table.primaryKey;
}

bool isNumberedByDatabase(Type type) {
    return type == Type::SerialNumber || type == Type::RowNumber;
}

/// The least and the largest number of a column.
std::pair<std::int64_t, std::int64_t> rangeOf(Type type) {
    using Whole = std::numeric_limits<std::int64_t>;
    switch (type) {
        case Type::Number:
        case Type::NumberKey:
            return {std::numeric_limits<std::int32_t>::min(),
                    std::numeric_limits<std::int32_t>::max()};
        case Type::SerialNumber:
            return {1, std::numeric_limits<std::uint32_t>::max()};
        default:
            return {Whole::min(), Whole::max()};
    }
}

std::size_t charactersOf(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }));
}

/// What is wrong with a value for a column; empty for nothing. Never says the value itself, which
/// may be a password.
std::string problemOf(const schema::Column& column, const json& value) {
    constexpr std::size_t kShort = 255;
    constexpr std::size_t kLong = 65535;
    if (isNumber(column.type)) {
        const auto [least, most] = rangeOf(column.type);
        const bool tooLarge = value.is_number_unsigned() &&
                              value.get<std::uint64_t>() > static_cast<std::uint64_t>(most);
        if (value.is_number_integer() && !tooLarge && value.get<std::int64_t>() >= least) return "";
        return fmt::format("is not a whole number from {} to {}", least, most);
    }
    if (!value.is_string()) return "is not a text";
    const auto& text = value.get_ref<const std::string&>();
    if (column.type == Type::LongText)
        return text.size() <= kLong
                   ? ""
                   : fmt::format("has {} bytes, and may have {}", text.size(), kLong);
    const std::size_t characters = charactersOf(text);
    return characters <= kShort
               ? ""
               : fmt::format("has {} characters, and may have {}", characters, kShort);
}

/// A file's characters, which knows the line of the one that was read last.
class Characters {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    Characters(const char* at, std::size_t* line) : at_(at), line_(line) {}

    reference operator*() const { return *at_; }
    Characters& operator++() {
        // The parser looks at the character behind a number: its line must not count yet.
        if (last_ == '\n') ++*line_;
        last_ = *at_++;
        return *this;
    }
    Characters operator++(int) {
        const Characters before = *this;
        ++*this;
        return before;
    }
    bool operator==(const Characters& other) const { return at_ == other.at_; }
    bool operator!=(const Characters& other) const { return at_ != other.at_; }

private:
    const char* at_;
    std::size_t* line_;
    char last_ = '\0';
};

/// Takes what the parser finds, checks it and goes on whatever it is.
class SiteReader final : public nlohmann::json_sax<json> {
public:
    explicit SiteReader(std::string name) : name_(std::move(name)) {}

    std::size_t* line() { return &line_; }

    SiteFile finish() {
        if (wellFormed_) {
            if (!hasFormat_) error(1, "", "is no site file: its member \"format\" is missing");
            if (!hasVersion_) error(1, "", "its member \"version\" is missing");
            for (SiteTable& table : file_.tables)
                numberRows(table);
            for (const Pending& reference : pending_)
                if (keys_[reference.kind].count(reference.key) == 0)
                    file_.warnings.push_back(reference.place + "points to nothing in " +
                                             reference.kind);
        }
        return std::move(file_);
    }

    bool null() override { return value(nullptr); }
    bool boolean(bool is) override { return value(is); }
    bool number_integer(number_integer_t number) override { return value(number); }
    bool number_unsigned(number_unsigned_t number) override { return value(number); }
    bool number_float(number_float_t number, const string_t& /*text*/) override {
        return value(number);
    }
    bool string(string_t& text) override { return value(std::move(text)); }
    bool binary(binary_t& /*bytes*/) override { return false; }  // JSON has none

    bool start_object(std::size_t /*elements*/) override {
        ++depth_;
        if (depth_ == kRecord && entity_ != nullptr) {
            beginRecord();
        } else if (depth_ != kRoot) {
            return value(json::object());
        }
        return true;
    }
    bool end_object() override {
        if (depth_ == kRecord && entity_ != nullptr) endRecord();
        --depth_;
        return true;
    }
    bool start_array(std::size_t /*elements*/) override {
        ++depth_;
        return (depth_ == kList && atKind_) || value(json::array());
    }
    bool end_array() override {
        --depth_;
        return true;
    }

    bool key(string_t& name) override {
        keyLine_ = line_;
        if (depth_ == kRoot) member(name);
        if (depth_ == kRecord && entity_ != nullptr) field(name);
        return true;
    }

    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const json::exception& problem) override {
        // Of "[json.exception.parse_error.101] parse error at line 1, column 2: syntax error while
        // ...; last read: '...'" what tells the cause and no text of the file.
        std::string text = problem.what();
        const auto colon =
            text.find(": ");  // none for a number beyond all that JSON's readers take
        text = colon == std::string::npos ? "number out of range" : text.substr(colon + 2);
        error(line_, "", "is no JSON: " + text.substr(0, text.find("; last read")));
        wellFormed_ = false;
        return false;
    }

private:
    // What stands within so many braces and brackets.
    static constexpr int kRoot = 1;
    static constexpr int kList = 2;
    static constexpr int kRecord = 3;

    struct Pending {
        std::string place;
        std::string kind;
        std::string key;
    };

    void error(std::size_t line, const std::string& where, const std::string& what) {
        file_.errors.push_back(placeOf(line, where) + what);
    }

    std::string placeOf(std::size_t line, const std::string& where) const {
        return fmt::format("{}:{}: {}{}", name_, line, harmless(where), where.empty() ? "" : ": ");
    }

    std::string recordName() const { return fmt::format("{}[{}]", entity_->name, index_); }

    /// Of the outermost object.
    void member(const std::string& name) {
        member_ = name;
        entity_ = nullptr;
        atKind_ = false;
        if (!members_.insert(name).second) error(line_, name, "stands there twice");
        if (name == "format" || name == "version") return;
        atKind_ = true;
        const auto found = std::find_if(entities().begin(), entities().end(),
                                        [&](const Entity& entity) { return name == entity.name; });
        if (found == entities().end()) return error(line_, name, "is no kind of record");
        entity_ = &*found;
        columns_ = schema::columnsOf(tableOf(*entity_));
        file_.tables.push_back({entity_, {}});
        index_ = 0;
    }

    void beginRecord() {
        recordLine_ = line_;
        row_.assign(columns_.size(), {});
        seen_.assign(columns_.size(), false);
        column_.reset();
    }

    void field(const std::string& name) {
        const auto found = std::find_if(columns_.begin(), columns_.end(), [&](const auto& column) {
            return column.name == name && !isRowNumber(column.type);
        });
        column_.reset();
        const std::string where = recordName() + "." + name;
        if (found == columns_.end()) return error(line_, where, "is no field");
        const auto at = static_cast<std::size_t>(found - columns_.begin());
        if (seen_[at]) return error(line_, where, "stands there twice");
        seen_[at] = true;
        column_ = at;
    }

    void endRecord() {
        const schema::Table& table = tableOf(*entity_);
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            if (seen_[i] || !isKey(table, columns_[i]) || isNumberedByDatabase(columns_[i].type))
                continue;
            error(recordLine_, recordName() + "." + columns_[i].name, "is missing");
        }
        file_.tables.back().rows.push_back(std::move(row_));
        ++index_;
    }

    /// Whatever stands where a value may stand.
    bool value(json value) {
        const bool nested = value.is_structured();
        const int depth = nested ? depth_ - 1 : depth_;
        if (depth == 0) {
            error(line_, "", "is no site file: it is no object");
            wellFormed_ = false;
        } else if (depth == kRoot) {
            memberValue(value);
        } else if (depth == kList && entity_ != nullptr) {
            error(line_, recordName(), "is no record");
            ++index_;
        } else if (depth == kRecord && column_) {
            fieldValue(value);
        }
        return wellFormed_;
    }

    void memberValue(const json& value) {
        if (atKind_) {
            error(keyLine_, member_, "is no list of records");
            entity_ = nullptr;
        } else if (member_ == "format") {
            hasFormat_ = true;
            if (value != kFormat)
                error(keyLine_, member_, fmt::format("is another one than \"{}\"", kFormat));
        } else {
            hasVersion_ = true;
            if (value == kVersion) return;
            const bool newer = value.is_number_integer() && value > kVersion;
            error(keyLine_, member_,
                  newer ? fmt::format("is newer than {}, which this program reads", kVersion)
                        : fmt::format("is not {}", kVersion));
        }
    }

    void fieldValue(const json& value) {
        const std::size_t at = *std::exchange(column_, std::nullopt);
        const schema::Column& column = columns_[at];
        const std::string where = recordName() + "." + column.name;
        const bool key = isKey(tableOf(*entity_), column);
        if (value.is_null()) {  // as if it were not there, where that may be
            if (key && !isNumberedByDatabase(column.type)) error(keyLine_, where, "is missing");
            return;
        }
        const std::string problem = problemOf(column, value);
        if (!problem.empty()) return error(keyLine_, where, problem);
        std::string text = value.is_string() ? value.get<std::string>() : value.dump();
        if (key) addKey(column.name, where, text);
        if (const char* kind = kindReferredTo(*entity_, column); kind && !text.empty())
            pending_.push_back({placeOf(keyLine_, where), kind, text});
        row_[at] = std::move(text);
    }

    void addKey(const std::string& column, const std::string& where, const std::string& key) {
        if (key.empty()) return error(keyLine_, where, "is empty");
        const bool primary = column == tableOf(*entity_).primaryKey;
        auto& keys = keys_[entity_->name + (primary ? "" : "." + column)];
        const auto [known, added] = keys.emplace(key, keyLine_);
        if (!added) error(keyLine_, where, fmt::format("stands in line {} already", known->second));
    }

    /// Records that name no number get the next ones, in their order, as on every engine.
    void numberRows(SiteTable& table) {
        const std::vector<schema::Column> columns = schema::columnsOf(tableOf(*table.entity));
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (columns[i].type != Type::NextId) continue;
            std::int64_t largest = 0;
            for (const std::vector<Cell>& row : table.rows)
                if (row[i]) largest = std::max<std::int64_t>(largest, std::stoll(*row[i]));
            for (std::vector<Cell>& row : table.rows) {
                if (row[i]) continue;
                if (largest == std::numeric_limits<std::int64_t>::max())
                    return error(1, table.entity->name,
                                 "no number is left for records without " + columns[i].name);
                row[i] = std::to_string(++largest);
            }
        }
    }

    const std::string name_;
    SiteFile file_;
    std::map<std::string, std::map<std::string, std::size_t>>
        keys_;  // lines by kind (for another key, and column) and key
    std::vector<Pending> pending_;
    std::set<std::string> members_;
    bool hasFormat_ = false;
    bool hasVersion_ = false;
    bool wellFormed_ = true;

    std::size_t line_ = 1;  // of what was read last
    int depth_ = 0;
    std::size_t keyLine_ = 1;
    std::string member_;
    bool atKind_ = false;             // not at "format" or "version"
    const Entity* entity_ = nullptr;  // null: what is none is passed over
    std::vector<schema::Column> columns_;
    std::size_t index_ = 0;
    std::size_t recordLine_ = 1;
    std::optional<std::size_t> column_;  // whose value comes next
    std::vector<Cell> row_;
    std::vector<bool> seen_;
};

/// Numbers by their value, texts by their bytes.
void sortByKey(SiteTable& table) {
    const schema::Table& definition = tableOf(*table.entity);
    const std::vector<schema::Column> columns = schema::columnsOf(definition);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].name != definition.primaryKey) continue;
        const auto keyOf = [&](const std::vector<Cell>& row) {
            const std::string text = row[i].value_or("");
            return std::pair(isNumber(columns[i].type) ? wholeNumber(text) : std::nullopt, text);
        };
        std::sort(table.rows.begin(), table.rows.end(),
                  [&](const auto& left, const auto& right) { return keyOf(left) < keyOf(right); });
    }
}

std::string valueText(const SiteTable& table, const std::vector<schema::Column>& columns,
                      const std::vector<Cell>& row, std::size_t at) {
    if (isNumber(columns[at].type) && wholeNumber(*row[at])) return *row[at];
    try {
        return json(*row[at]).dump();
    } catch (const json::type_error&) {
        const schema::Table& definition = tableOf(*table.entity);
        std::string key;
        for (std::size_t i = 0; i < columns.size(); ++i)
            if (columns[i].name == definition.primaryKey) key = row[i].value_or("");
        throw Failure(fmt::format("{}.{} of '{}' is not UTF-8", definition.name, columns[at].name,
                                  harmless(key)));
    }
}

std::string recordText(const SiteTable& table, const std::vector<schema::Column>& columns,
                       const std::vector<Cell>& row) {
    std::string text;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!row[i] || isRowNumber(columns[i].type)) continue;
        text += fmt::format("{}            \"{}\": {}", text.empty() ? "" : ",\n", columns[i].name,
                            valueText(table, columns, row, i));
    }
    return "        {\n" + text + "\n        }";
}

}  // namespace

SiteFile readSiteFile(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream || std::filesystem::is_directory(path))
        throw Failure("reading " + path + ": " +
                      std::generic_category().message(stream ? EISDIR : errno));
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    SiteReader reader(std::filesystem::path(path).filename());
    const char* const begin = text.data();
    json::sax_parse(Characters(begin, reader.line()),
                    Characters(begin + text.size(), reader.line()), &reader);
    return reader.finish();
}

std::string siteText(std::vector<SiteTable> tables) {
    std::string text =
        fmt::format("{{\n    \"format\": \"{}\",\n    \"version\": {}", kFormat, kVersion);
    for (SiteTable& table : tables) {
        sortByKey(table);
        const std::vector<schema::Column> columns = schema::columnsOf(tableOf(*table.entity));
        std::string records;
        for (const std::vector<Cell>& row : table.rows)
            records += (records.empty() ? "\n" : ",\n") + recordText(table, columns, row);
        text += fmt::format(",\n    \"{}\": [{}{}]", table.entity->name, records,
                            records.empty() ? "" : "\n    ");
    }
    return text + "\n}\n";
}

}  // namespace dbservicectl
