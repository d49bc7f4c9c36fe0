#include "examples/load_site/Display.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace demo {
namespace {

/// Characters, not bytes, of a UTF-8 text.
std::size_t width(const std::string& text) {
    const auto starts = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; };
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), starts));
}

bool isTerminal() {
    static const bool terminal = ::isatty(STDOUT_FILENO) == 1;
    return terminal;
}

}  // namespace

void showProgress(const std::string& doing) {
    if (!isTerminal()) return;
    clearProgress();
    fmt::print("{} ...", doing);
    std::fflush(stdout);
}

void clearProgress() {
    if (isTerminal()) std::fputs("\r\x1b[K", stdout);
}

void Table::print(const std::string& title) const {
    std::vector<std::string> lines(rows_.size());
    for (std::size_t column = 0; column < rows_.front().size(); ++column) {
        std::size_t widest = 0;
        for (const auto& row : rows_)
            widest = std::max(widest, width(row[column]));
        const std::string& last = rows_.back()[column];
        const bool numbers =
            !last.empty() && last.find_first_not_of("0123456789") == std::string::npos;
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            const std::string& cell = rows_[i][column];
            const std::string blanks(widest - width(cell), ' ');
            lines[i] += "  " + (numbers ? blanks + cell : cell + blanks);
        }
    }
    for (std::string& line : lines)
        line.erase(line.find_last_not_of(' ') + 1);
    clearProgress();
    fmt::print("\n{}\n{}\n", title, fmt::join(lines, "\n"));
}

}  // namespace demo
