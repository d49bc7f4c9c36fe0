#ifndef EXAMPLES_DISPLAY_H
#define EXAMPLES_DISPLAY_H

#include <cstddef>
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

/// How far a step of many parts has come: one line, rewritten in place and gone at the end. Writes
/// nothing when standard output is no terminal.
class Progress {
public:
    Progress(std::string label, std::size_t parts);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    /// One more part is done.
    void step();

private:
    const std::string label_;
    const std::size_t parts_;
    const bool shown_;
    std::size_t done_ = 0;
};

}  // namespace demo

#endif
