#ifndef EXAMPLES_LOAD_SITE_DISPLAY_H
#define EXAMPLES_LOAD_SITE_DISPLAY_H

#include <string>
#include <utility>
#include <vector>

namespace demo {

/// Rows of text in aligned columns; columns of numbers are aligned to the right.
class Table {
public:
    explicit Table(std::vector<std::string> headings) : rows_{std::move(headings)} {}

    /// Adds a row of as many cells as there are headings.
    void add(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }

    /// Writes title, headings and rows to standard output.
    void print(const std::string& title) const;

private:
    std::vector<std::vector<std::string>> rows_;
};

/// Says what is being done, in one line that the next call replaces. Nothing is written when
/// standard output is no terminal.
void showProgress(const std::string& doing);

/// Takes that line away, before other output.
void clearProgress();

}  // namespace demo

#endif
