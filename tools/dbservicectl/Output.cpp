#include "tools/dbservicectl/Output.h"

#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unilbrk.h>
#include <unistd.h>
#include <unistr.h>
#include <uniwidth.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <numeric>

namespace dbservicectl {
namespace {

constexpr std::size_t kGap = 2;         // between two columns
constexpr std::size_t kLeastWidth = 8;  // of a column that is wrapped

const std::uint8_t* bytesOf(std::string_view text) {
    return reinterpret_cast<const std::uint8_t*>(text.data());
}

std::size_t widthOf(std::string_view text) {
    return static_cast<std::size_t>(std::max(u8_width(bytesOf(text), text.size(), "UTF-8"), 0));
}

std::string csvField(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char c : text)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

std::string shown(const Cell& cell) {
    return cell ? harmless(*cell) : "NULL";
}

/// Each row as lines "name  value", with an empty line between rows.
std::string recordsText(const std::vector<Column>& columns,
                        const std::vector<std::vector<Cell>>& rows, std::size_t width) {
    std::size_t names = 0;
    for (const Column& column : columns)
        names = std::max(names, widthOf(column.name));
    const std::size_t room = std::max(width, names + kGap + kLeastWidth) - names - kGap;
    std::string text;
    for (const std::vector<Cell>& row : rows) {
        if (!text.empty()) text += '\n';
        for (std::size_t i = 0; i < columns.size(); ++i) {
            std::string name = columns[i].name;
            for (const std::string& line : wrapped(shown(row[i]), room)) {
                const std::string blanks(names - widthOf(name) + kGap, ' ');
                text.append(name).append(line.empty() ? "" : blanks + line) += '\n';
                name.clear();
            }
        }
    }
    return text;
}

/// Takes from the widest columns until all fit. False when some would be too narrow to read.
bool fit(std::vector<std::size_t>& widths, std::size_t width) {
    const std::size_t gaps = kGap * (widths.size() - 1);
    while (std::accumulate(widths.begin(), widths.end(), gaps) > width) {
        const auto widest = std::max_element(widths.begin(), widths.end());
        if (*widest <= kLeastWidth) return false;
        --*widest;
    }
    return true;
}

}  // namespace

std::string harmless(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        ucs4_t character = 0;
        const int length = u8_mbtoucr(&character, bytesOf(text) + at, text.size() - at);
        const bool control = length > 0 && uc_width(character, "UTF-8") < 0;
        const std::size_t bytes = length < 0 ? 1 : static_cast<std::size_t>(length);
        if (character == '\n' && length == 1) {
            result += "\\n";
        } else if (character == '\t' && length == 1) {
            result += "\\t";
        } else if (length < 0 || (control && bytes == 1)) {
            result += fmt::format("\\x{:02x}", static_cast<unsigned char>(text[at]));
        } else if (control) {
            result += fmt::format("\\u{:04x}", character);
        } else {
            result.append(text, at, bytes);
        }
        at += bytes;
    }
    return result;
}

std::vector<std::string> wrapped(const std::string& text, std::size_t width) {
    if (widthOf(text) <= width) return {text};
    std::vector<char> breaks(text.size());
    u8_width_linebreaks(bytesOf(text), text.size(), static_cast<int>(width), 0, 0, nullptr, "UTF-8",
                        breaks.data());
    std::vector<std::string> lines{""};
    std::size_t used = 0;
    for (std::size_t at = 0; at < text.size();) {
        ucs4_t character = 0;
        const int length = u8_mbtouc(&character, bytesOf(text) + at, text.size() - at);
        const auto columns = static_cast<std::size_t>(std::max(uc_width(character, "UTF-8"), 0));
        if (breaks[at] == UC_BREAK_POSSIBLE || used + columns > width) {
            lines.emplace_back();
            used = 0;
        }
        lines.back().append(text, at, static_cast<std::size_t>(length));
        used += columns;
        at += static_cast<std::size_t>(length);
    }
    for (std::string& line : lines)
        line.erase(line.find_last_not_of(' ') + 1);
    return lines;
}

std::string tableText(const std::vector<Column>& columns,
                      const std::vector<std::vector<Cell>>& rows, std::size_t width) {
    std::vector<std::vector<std::string>> lines(1);
    for (const Column& column : columns)
        lines.front().push_back(column.name);
    for (const std::vector<Cell>& row : rows) {
        lines.emplace_back();
        for (const Cell& cell : row)
            lines.back().push_back(shown(cell));
    }
    std::vector<std::size_t> widths(columns.size());
    for (const auto& line : lines)
        for (std::size_t i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], widthOf(line[i]));
    if (width != 0 && !fit(widths, width)) return recordsText(columns, rows, width);

    std::string text;
    for (const auto& line : lines) {
        std::vector<std::vector<std::string>> cells;
        std::size_t height = 1;
        for (std::size_t i = 0; i < widths.size(); ++i) {
            cells.push_back(wrapped(line[i], widths[i]));
            height = std::max(height, cells.back().size());
        }
        for (std::size_t part = 0; part < height; ++part) {
            std::string written;
            for (std::size_t i = 0; i < widths.size(); ++i) {
                const std::string cell = part < cells[i].size() ? cells[i][part] : "";
                const std::string blanks(widths[i] - std::min(widthOf(cell), widths[i]), ' ');
                written += columns[i].isNumber ? blanks + cell : cell + blanks;
                written.append(kGap, ' ');
            }
            text += written.erase(written.find_last_not_of(' ') + 1) + '\n';
        }
    }
    return text;
}

std::size_t terminalWidth() {
    winsize size{};
    if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0) return 0;
    return size.ws_col;
}

Output::Output(Format format, std::vector<Column> columns)
    : format_(format), columns_(std::move(columns)) {
    if (format_ != Format::Csv) return;
    std::vector<Cell> names;
    for (const Column& column : columns_)
        names.emplace_back(column.name);
    add(std::move(names));
    count_ = 0;
}

void Output::add(std::vector<Cell> row) {
    if (format_ == Format::Table) {
        rows_.push_back(std::move(row));
    } else if (format_ == Format::Json) {
        writeJson(row);
    } else {
        std::string line;
        for (const Cell& cell : row)
            line += (line.empty() && &cell == row.data() ? "" : ",") + csvField(cell.value_or(""));
        fmt::print("{}\n", line);
    }
    ++count_;
}

void Output::finish() {
    if (format_ == Format::Json) fmt::print("{}\n", count_ == 0 ? "[]" : "\n]");
    if (format_ == Format::Table) {
        fmt::print("{}", tableText(columns_, rows_, terminalWidth()));
        rows_.clear();
    }
    std::fflush(stdout);
}

void Output::writeJson(const std::vector<Cell>& row) const {
    nlohmann::ordered_json object = nlohmann::ordered_json::object();
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        nlohmann::ordered_json& member = object[columns_[i].name];
        if (!row[i]) continue;
        // Numbers stand as they are: the database knows no others than whole ones.
        member = columns_[i].isNumber && !row[i]->empty()
                     ? nlohmann::ordered_json::parse(*row[i], nullptr, false)
                     : nlohmann::ordered_json(*row[i]);
        if (member.is_discarded()) member = *row[i];
    }
    // What is no UTF-8 is shown by replacement characters.
    fmt::print("{}{}", count_ == 0 ? "[\n" : ",\n",
               object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace));
}

}  // namespace dbservicectl
