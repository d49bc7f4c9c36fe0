#include "tools/dbservicectl/BackupFile.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <limits>
#include <memory>
#include <nlohmann/json.hpp>
#include <system_error>
#include <utility>

#include "tools/dbservicectl/Entities.h"
#include "tools/dbservicectl/Failure.h"
#include "tools/dbservicectl/Inserts.h"

namespace dbservicectl {
namespace {

using nlohmann::json;

constexpr const char* kFormat = "dbservice backup";
constexpr int kVersion = 1;
constexpr std::uint64_t kRowsBetweenChecks = 1000;
constexpr std::size_t kLongestLine = std::size_t{16} << 20;  // rows are below 3 MB

std::string textOf(const std::string& value) {
    try {
        return json(value).dump();
    } catch (const json::type_error&) {
        return "{\"hex\":\"" + hexOf(value) + "\"}";
    }
}

bool isDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
}

/// The value that stands in a row's line; false when it is none.
bool readCell(json& value, Cell& cell) {
    if (value.is_null()) {
        cell.reset();
        return true;
    }
    if (value.is_string()) {
        cell = std::move(value.get_ref<std::string&>());
        return true;
    }
    if (value.is_number_integer()) {
        cell = value.dump();
        return true;
    }
    if (!value.is_object() || value.size() != 1 || !value.contains("hex") ||
        !value["hex"].is_string())
        return false;
    const std::string hex = value["hex"];
    if (hex.size() % 2 != 0 || !std::all_of(hex.begin(), hex.end(), isDigit)) return false;
    cell.emplace();
    for (std::size_t i = 0; i < hex.size(); i += 2)
        *cell += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
    return true;
}

/// Reads the lines of a backup, and judges each.
class Reader {
public:
    explicit Reader(const std::string& path) : path_(path), file_(std::fopen(path.c_str(), "rbe")) {
        if (!file_)
            throw Failure("reading " + path + ": " + std::generic_category().message(errno));
    }

    BackupInfo readHeader() {
        const bool there = nextLine();
        const json header = json::parse(line_, nullptr, false);
        if (!there || !header.is_object() || header.value("format", json()) != kFormat)
            fail("is no backup of this program");
        const json version = header.value("version", json());
        if (version.is_number_integer() && version > kVersion)
            fail(fmt::format("is a backup of version {}, and this program reads up to {}",
                             version.dump(), kVersion));
        if (version != kVersion) fail("is a backup of no version");
        const auto text = [&](const char* name) {
            const json value = header.value(name, json());
            return value.is_string() ? value.get<std::string>() : "";
        };
        checksum_.add(line_ + "\n");
        const json serial = header.value("lastSerial", json());
        const bool fits =
            serial.is_number_unsigned() && serial <= std::numeric_limits<std::uint32_t>::max();
        return {text("library"),
                text("made"),
                text("engine"),
                text("database"),
                fits ? serial.get<std::uint32_t>() : 0,
                0};
    }

    /// Goes on to the next row. @return false at the end, which is as it should be.
    bool nextRow(std::vector<Cell>& row) {
        for (;;) {
            if (!nextLine()) fail(cutOff());
            json value = json::parse(line_, nullptr, false);
            if (value.is_object() && value.contains("sha256")) {
                check(value);
                if (value.value("end", json()) == true) break;
            } else if (value.is_object() && value.contains("table")) {
                beginTable(value);
            } else {
                readRow(value, row);
                checksum_.add(line_ + "\n");
                ++rows_;
                return true;
            }
            checksum_.add(line_ + "\n");
        }
        if (nextLine() || !line_.empty()) fail(at() + "something stands behind its end");
        return false;
    }

    const schema::Table& table() const { return *table_; }

private:
    struct Close {
        void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
    };

    [[noreturn]] void fail(const std::string& what) const {
        throw Failure(path_ + ": " + what, "", Exit::Found);
    }

    std::string at() const { return fmt::format("line {}: ", number_); }

    std::string cutOff() const {
        return fmt::format("is cut off: it ends in line {}, without its last line", number_);
    }

    /// @return false at the end of the file, with what stands behind the last line break.
    bool nextLine() {
        line_.clear();
        ++number_;
        for (int c = 0; (c = ::getc_unlocked(file_.get())) != '\n';) {
            if (c == EOF) {
                if (std::ferror(file_.get()) != 0) fail(std::generic_category().message(errno));
                return false;
            }
            line_ += static_cast<char>(c);
            if (line_.size() > kLongestLine) fail(at() + "is too long for one of a backup");
        }
        return true;
    }

    void check(const json& value) {
        const bool same =
            value["sha256"] == checksum_.text() && value.value("rows", json()) == rows_;
        if (!same)
            fail(fmt::format("was changed between line {} and line {}: the checksum is another one",
                             checkedUpTo_, number_));
        checkedUpTo_ = number_;
    }

    void beginTable(const json& value) {
        const json& name = value["table"];
        const json columns = value.value("columns", json());
        table_ = nullptr;
        for (const schema::Table& table : schema::tables())
            if (name == table.name) table_ = &table;
        if (table_ == nullptr || !columns.is_array()) fail(at() + "names a table that is unknown");
        const std::vector<schema::Column> known = schema::columnsOf(*table_);
        width_ = known.size();
        places_.clear();
        for (const json& column : columns) {
            const auto found = std::find_if(known.begin(), known.end(), [&](const auto& candidate) {
                return column == candidate.name;
            });
            if (found == known.end()) fail(at() + "names a column that is unknown");
            places_.push_back(static_cast<std::size_t>(found - known.begin()));
        }
    }

    void readRow(json& value, std::vector<Cell>& row) {
        bool well = table_ != nullptr && value.is_array() && value.size() == places_.size();
        row.assign(width_, {});
        for (std::size_t i = 0; well && i < places_.size(); ++i)
            well = readCell(value[i], row[places_[i]]);
        if (!well) fail(at() + "was changed: it is no line of a backup");
    }

    const std::string path_;
    std::unique_ptr<std::FILE, Close> file_;
    std::string line_;
    std::uint64_t number_ = 0;
    std::uint64_t checkedUpTo_ = 1;  // a line's number
    Sha256 checksum_;
    std::uint64_t rows_ = 0;
    const schema::Table* table_ = nullptr;
    std::size_t width_ = 0;
    std::vector<std::size_t> places_;  // of the file's columns among the table's
};

}  // namespace

BackupWriter::BackupWriter(NewFile& file, const BackupInfo& info) : file_(file) {
    const nlohmann::ordered_json header{{"format", kFormat},
                                        {"version", kVersion},
                                        {"library", info.library},
                                        {"made", info.made},
                                        {"engine", info.engine},
                                        {"database", info.database},
                                        {"lastSerial", info.lastSerial}};
    writeLine(header.dump());
}

void BackupWriter::begin(const schema::Table& table) {
    columns_ = schema::columnsOf(table);
    nlohmann::ordered_json line{{"table", table.name}};
    for (const schema::Column& column : columns_)
        line["columns"].push_back(column.name);
    writeLine(line.dump());
}

void BackupWriter::add(const std::vector<Cell>& row) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
        line += line.empty() ? '[' : ',';
        const bool plain = isNumber(columns_[i].type) && row[i] && wholeNumber(*row[i]);
        line += !row[i] ? "null" : plain ? *row[i] : textOf(*row[i]);
    }
    writeLine(line + ']');
    ++rows_;
    if (++unchecked_ == kRowsBetweenChecks) writeCheck(false);
}

void BackupWriter::finish() {
    writeCheck(true);
}

void BackupWriter::writeLine(const std::string& line) {
    checksum_.add(line + "\n");
    file_.write(line + "\n");
}

void BackupWriter::writeCheck(bool last) {
    unchecked_ = 0;
    writeLine(fmt::format(R"({{"rows":{},"sha256":"{}"{}}})", rows_, checksum_.text(),
                          last ? R"(,"end":true)" : ""));
}

BackupInfo readBackup(
    const std::string& path,
    const std::function<void(const schema::Table& table, const std::vector<Cell>& row)>& take) {
    Reader reader(path);
    BackupInfo info = reader.readHeader();
    for (std::vector<Cell> row; reader.nextRow(row); ++info.rows)
        take(reader.table(), row);
    return info;
}

}  // namespace dbservicectl
