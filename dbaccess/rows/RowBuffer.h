#ifndef DBSERVICE_DBACCESS_ROWS_ROWBUFFER_H
#define DBSERVICE_DBACCESS_ROWS_ROWBUFFER_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <list>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "dbaccess/ResultSet.h"
#include "dbaccess/rows/ColumnNames.h"
#include "dbaccess/rows/RecordFields.h"

namespace dbaccess {

/// Thrown when a result takes more memory than it may. Whoever is ready for a lack of memory is
/// ready for this.
class ResultTooLarge : public std::bad_alloc {
public:
    const char* what() const noexcept override { return "result too large"; }
};

/// The rows of a query, of texts and whole numbers: filled once by an engine, then read once by the
/// caller.
///
/// A row lies in one chunk, a mark of a byte for each column (its length, or what else it is)
/// before the bytes of all. A chunk is freed when the reader leaves it, so that a large result and
/// the records made from it never stand in memory twice.
class RowBuffer final : public ResultSet {
public:
    using Columns = std::shared_ptr<const ColumnNames>;

    explicit RowBuffer(Columns columns)
        : columns_(std::move(columns)), names_(columns_->all().data()), width_(columns_->count()) {}
    explicit RowBuffer(std::vector<std::string> columns);

    /// Adding beyond so many bytes throws ResultTooLarge; 0: any number.
    void limitTo(std::size_t bytes) { limit_ = bytes; }

    /// Appends a row: a begin, one value for each column in order, an end. Without its end a row is
    /// not there.
    void beginRow();
    void addNull() { extend(kNull, 0); }
    void addText(std::string_view text) {
        if (text.size() > kLongestShortText) return addLongText(text);
        char* const place = extend(static_cast<Mark>(text.size()), text.size());
        if (!text.empty()) std::memcpy(place, text.data(), text.size());
    }
    void addNumber(std::int64_t number) {
        const auto small = static_cast<std::int8_t>(number);
        if (small == number) return add(kSmallNumber, small);
        const auto medium = static_cast<std::int32_t>(number);
        return medium == number ? add(kMediumNumber, medium) : add(kNumber, number);
    }
    void addUnsigned(std::uint64_t number) { add(kUnsigned, number); }
    void endRow();

    const ColumnNames& columns() const { return *columns_; }

    /// The memory that the rows take.
    std::size_t bytes() const { return bytes_; }

    /// As `readFields`.
    void read(const Field* fields, std::size_t count);

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

    // The length of a text, or one of these.
    using Mark = std::uint8_t;
    static constexpr Mark kNull = 0xFF;
    static constexpr Mark kSmallNumber = 0xFE;   // of a byte
    static constexpr Mark kMediumNumber = 0xFD;  // of 4
    static constexpr Mark kNumber = 0xFC;
    static constexpr Mark kUnsigned = 0xFB;
    static constexpr Mark kLongText = 0xFA;  // its length stands before it, as a Length
    static constexpr std::size_t kLongestShortText = 0xF9;
    using Length = std::size_t;

    struct Cell {
        Mark mark = kNull;
        const char* bytes = nullptr;
    };

    template <class Number>
    static Number numberAt(const char* bytes) {
        Number number;
        std::memcpy(&number, bytes, sizeof number);
        return number;
    }

    static std::size_t sizeOf(Cell cell);
    static std::string_view textOf(Cell cell);
    static std::uint64_t numberOf(Cell cell);
    static bool copy(Cell cell, std::string& value);
    static bool copy(Cell cell, int& value);
    static void copy(Cell cell, const Field& field);

    /// Makes room for the next column's bytes at the end of the row that is being added.
    char* extend(Mark mark, std::size_t bytes) {
        const std::size_t needed = newSize_ + bytes;
        if (newRoom_ < needed) addChunk(needed);
        newRow_[newColumn_++] = static_cast<char>(mark);
        char* const place = newRow_ + newSize_;
        newSize_ = needed;
        return place;
    }
    template <class Number>
    void add(Mark mark, Number number) {
        std::memcpy(extend(mark, sizeof number), &number, sizeof number);
    }
    void addLongText(std::string_view text);
    void addChunk(std::size_t needed);

    void toFirst() {
        column_ = 0;
        value_ = row_ + width_;
    }
    Cell cellAt(std::size_t column, const char* bytes) const {
        return {static_cast<Mark>(row_[column]), bytes};
    }
    void moveTo(std::size_t column);
    Cell cellOf(const std::string& column);
    FieldPlaces placesOf(const Field* fields, std::size_t count) const;
    bool readAt(const FieldPlaces& places, const Field* fields, std::size_t count);

    const Columns columns_;
    const std::string* const names_;
    const std::size_t width_;  // how many
    std::list<Chunk> chunks_;
    std::size_t rows_ = 0;
    std::size_t bytes_ = 0;  // of all chunks
    std::size_t limit_ = 0;

    char* newRow_ = nullptr;     // the row being added, in the last chunk
    std::size_t newRoom_ = 0;    // from there to the end of the chunk
    std::size_t newColumn_ = 0;  // its next one
    std::size_t newSize_ = 0;    // of what there is of it

    std::size_t nextRow_ = 0;      // where in the first chunk the next row begins
    const char* row_ = nullptr;    // the current row; null outside the rows
    std::size_t column_ = 0;       // one of its columns ...
    const char* value_ = nullptr;  // ... and where its bytes are
    std::size_t likely_ = 0;       // the column asked for next, if they are read in order
};

}  // namespace dbaccess

#endif
