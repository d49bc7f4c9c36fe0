#ifndef DBSERVICE_DBACCESS_ROWS_ROWBUFFER_H
#define DBSERVICE_DBACCESS_ROWS_ROWBUFFER_H

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

/// The rows of a query as text: filled once by an engine, then read once by the caller.
///
/// A row lies in one chunk, its column lengths before its bytes. A chunk is freed when the reader
/// leaves it, so that a large result and the records made from it never stand in memory twice.
class RowBuffer final : public ResultSet {
public:
    explicit RowBuffer(std::vector<std::string> columns);

    /// Appends a row: one pointer (null for NULL) and one length for each column.
    void addRow(const char* const* values, const std::size_t* lengths);

    /// The column names, in order.
    const std::vector<std::string>& columns() const { return columns_; }

    int rowsCount() const override;
    bool next() override;
    bool getString(std::string column, std::string& value) override;
    bool getInt(std::string column, int* value) override;
    unsigned int getUInt(std::string column) override;
    std::uint64_t getUInt64(std::string column) override;

private:
    struct Chunk {
        explicit Chunk(std::size_t capacity) : bytes(new char[capacity]), size(capacity) {}

        std::unique_ptr<char[]> bytes;
        std::size_t used = 0;
        std::size_t size;
    };

    char* reserve(std::size_t bytes);
    std::size_t headerSize() const { return columns_.size() * sizeof(std::uint32_t); }
    std::uint32_t lengthAt(std::size_t column) const;
    std::optional<std::size_t> indexOf(const std::string& column) const;
    std::optional<std::string_view> valueOf(const std::string& column);

    const std::vector<std::string> columns_;
    std::deque<Chunk> chunks_;
    std::size_t rows_ = 0;

    std::size_t nextRow_ = 0;              // where in the first chunk the next row begins
    const char* row_ = nullptr;            // the current row; null outside the rows
    std::size_t expected_ = 0;             // the column likely to be asked for next ...
    const char* expectedValue_ = nullptr;  // ... and where its bytes are
};

}  // namespace dbaccess

#endif
