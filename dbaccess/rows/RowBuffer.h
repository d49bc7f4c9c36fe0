#ifndef DBSERVICE_DBACCESS_ROWS_ROWBUFFER_H
#define DBSERVICE_DBACCESS_ROWS_ROWBUFFER_H

#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "dbaccess/ResultSet.h"

namespace dbaccess {

/// The rows of a query, of texts and whole numbers: filled once by an engine, then read once by the
/// caller.
///
/// A row lies in one chunk, a mark for each column (its length, or what else it is) before the
/// bytes of all. A chunk is freed when the reader leaves it, so that a large result and the records
/// made from it never stand in memory twice.
class RowBuffer final : public ResultSet {
public:
    using Columns = std::shared_ptr<const std::vector<std::string>>;

    explicit RowBuffer(Columns columns) : columns_(std::move(columns)), width_(columns_->size()) {}
    explicit RowBuffer(std::vector<std::string> columns);

    /// Appends a row: a begin, one value for each column in order, an end. Without its end a row is
    /// not there.
    void beginRow();
    void addNull() { extend(kNull, 0); }
    void addText(std::string_view text);
    void addNumber(std::int64_t number);
    void addUnsigned(std::uint64_t number);
    void endRow();

    /// The column names, in order.
    const std::vector<std::string>& columns() const { return *columns_; }

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

    using Mark = std::uint32_t;
    static constexpr Mark kNull = 0xFFFFFFFF;
    static constexpr Mark kNumber = 0xFFFFFFFE;
    static constexpr Mark kUnsigned = 0xFFFFFFFD;

    struct Cell {
        Mark mark = kNull;
        const char* bytes = nullptr;
    };

    static std::size_t bytesOf(Mark mark);
    static std::uint64_t toNumber(const Cell& cell);
    char* extend(Mark mark, std::size_t bytes);
    void addChunk(std::size_t needed);
    std::size_t headerSize() const { return width_ * sizeof(Mark); }
    Mark markAt(std::size_t column) const;
    std::size_t find(const std::string& column, std::size_t time);
    void moveTo(std::size_t column);
    Cell cellOf(const std::string& column);

    const Columns columns_;
    const std::size_t width_;  // how many
    std::list<Chunk> chunks_;
    std::size_t rows_ = 0;

    char* newRow_ = nullptr;     // the row being added, in the last chunk
    std::size_t newRoom_ = 0;    // from there to the end of the chunk
    std::size_t newColumn_ = 0;  // its next one
    std::size_t newSize_ = 0;    // of what there is of it

    std::size_t nextRow_ = 0;         // where in the first chunk the next row begins
    const char* row_ = nullptr;       // the current row; null outside the rows
    std::size_t column_ = 0;          // one of its columns ...
    const char* value_ = nullptr;     // ... and where its bytes are
    std::size_t asked_ = 0;           // how often this row was asked for a column
    std::vector<std::size_t> order_;  // the column of each time; empty: as they stand
};

}  // namespace dbaccess

#endif
