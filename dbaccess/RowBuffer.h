#ifndef DBACCESS_ROWBUFFER_H
#define DBACCESS_ROWBUFFER_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dbaccess/ResultSet.h"

namespace dbaccess {

/// The rows of a query, kept as text in chunks: filled once by an engine, read once by the caller.
/// Each row lies in one chunk as its column lengths followed by its bytes, and a chunk is freed when
/// the reader leaves it, so a large result and the records made from it never stand in memory twice.
class RowBuffer final : public ResultSet {
public:
    explicit RowBuffer(std::vector<std::string> columns);

    /// Appends a row: one pointer (null for NULL) and length per column.
    void addRow(const char* const* values, const std::size_t* lengths);

    int rowsCount() const override;
    bool next() override;
    bool getString(std::string column, std::string& value) override;
    bool getInt(std::string column, int* value) override;
    unsigned int getUInt(std::string column) override;
    std::uint64_t getUInt64(std::string column) override;

private:
    struct Chunk {
        std::unique_ptr<char[]> bytes;
        std::size_t used = 0;
        std::size_t size = 0;
    };

    std::optional<std::string_view> find(const std::string& column);
    std::optional<std::uint64_t> number(const std::string& column);
    std::string_view valueAt(std::size_t column, bool& isNull);

    std::vector<std::string> columns_;
    std::deque<Chunk> chunks_;
    std::int64_t rows_ = 0;

    std::size_t readOffset_ = 0;      // in the front chunk: where the next row begins
    const char* lengths_ = nullptr;   // the current row; null before the first and behind the last
    std::size_t cursor_ = 0;          // the column expected to be asked for next
    std::size_t cursorOffset_ = 0;    // where its bytes begin, behind the lengths
};

}  // namespace dbaccess

#endif
