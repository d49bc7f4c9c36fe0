#include "dbaccess/rows/RowBuffer.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <numeric>

#include "dbaccess/reader/LetterCase.h"

namespace dbaccess {
namespace {

constexpr std::size_t kFirstChunkSize = 4096;  // enough for the one row that most queries find
constexpr std::size_t kChunkSize = 65536;

bool sameName(const std::string& a, const std::string& b) {
    return a == b || sameIgnoringCase(a, b);
}

/// The leading whole number of a text; its low bits when it is wider than 64 bits signed.
std::uint64_t leadingNumber(std::string_view text) {
    const bool negative = !text.empty() && text.front() == '-';
    if (negative) text.remove_prefix(1);
    std::uint64_t magnitude = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), magnitude);
    if (parsed.ec == std::errc::result_out_of_range) {
        magnitude = std::numeric_limits<std::uint64_t>::max();
    }
    return negative ? 0 - magnitude : magnitude;
}

}  // namespace

RowBuffer::RowBuffer(std::vector<std::string> columns)
    : RowBuffer(std::make_shared<const std::vector<std::string>>(std::move(columns))) {}

std::size_t RowBuffer::bytesOf(Mark mark) {
    if (mark < kUnsigned) return mark;
    return mark == kNull ? 0 : sizeof(std::uint64_t);
}

void RowBuffer::beginRow() {
    newColumn_ = 0;
    newSize_ = 0;
    if (newRoom_ < headerSize()) addChunk(headerSize());
    newSize_ = headerSize();
}

/// Makes room for the next column's bytes at the end of the row that is being added.
char* RowBuffer::extend(Mark mark, std::size_t bytes) {
    const std::size_t needed = newSize_ + bytes;
    if (newRoom_ < needed) addChunk(needed);
    std::memcpy(newRow_ + newColumn_++ * sizeof mark, &mark, sizeof mark);
    char* const place = newRow_ + newSize_;
    newSize_ = needed;
    return place;
}

/// What there is of the row moves on to the new chunk.
void RowBuffer::addChunk(std::size_t needed) {
    Chunk chunk(std::max(chunks_.empty() ? kFirstChunkSize : kChunkSize, needed));
    if (newSize_ != 0) std::memcpy(chunk.bytes.get(), newRow_, newSize_);
    if (!chunks_.empty() && chunks_.back().used == 0) chunks_.pop_back();
    newRow_ = chunk.bytes.get();
    newRoom_ = chunk.size;
    chunks_.push_back(std::move(chunk));
}

void RowBuffer::addText(std::string_view text) {
    char* const place = extend(static_cast<Mark>(text.size()), text.size());
    if (!text.empty()) std::memcpy(place, text.data(), text.size());
}

void RowBuffer::addNumber(std::int64_t number) {
    std::memcpy(extend(kNumber, sizeof number), &number, sizeof number);
}

void RowBuffer::addUnsigned(std::uint64_t number) {
    std::memcpy(extend(kUnsigned, sizeof number), &number, sizeof number);
}

void RowBuffer::endRow() {
    chunks_.back().used += newSize_;
    newRow_ += newSize_;
    newRoom_ -= newSize_;
    ++rows_;
}

int RowBuffer::rowsCount() const {
    constexpr std::size_t kMost = std::numeric_limits<int>::max();
    return static_cast<int>(std::min(rows_, kMost));
}

bool RowBuffer::next() {
    if (row_ != nullptr) {
        moveTo(width_);
        nextRow_ = static_cast<std::size_t>(value_ - chunks_.front().bytes.get());
    }
    while (!chunks_.empty() && nextRow_ == chunks_.front().used) {
        chunks_.pop_front();
        nextRow_ = 0;
    }
    row_ = nullptr;
    if (chunks_.empty()) return false;

    row_ = chunks_.front().bytes.get() + nextRow_;
    column_ = 0;
    value_ = row_ + headerSize();
    asked_ = 0;
    return true;
}

RowBuffer::Mark RowBuffer::markAt(std::size_t column) const {
    Mark mark = 0;
    std::memcpy(&mark, row_ + column * sizeof mark, sizeof mark);
    return mark;
}

/// The index of the column that a row is asked for at this time, to be remembered for the next row;
/// the width when there is none.
std::size_t RowBuffer::find(const std::string& column, std::size_t time) {
    for (std::size_t step = 0; step < width_; ++step) {
        const std::size_t index = (column_ + step) % width_;
        if (!sameName((*columns_)[index], column)) continue;
        if (order_.empty()) {
            order_.resize(width_);
            std::iota(order_.begin(), order_.end(), 0);
        }
        if (time < width_) order_[time] = index;
        return index;
    }
    return width_;
}

/// Goes on to the value of a column, or to the end of the row.
void RowBuffer::moveTo(std::size_t column) {
    if (column < column_) {
        column_ = 0;
        value_ = row_ + headerSize();
    }
    for (; column_ < column; ++column_)
        value_ += bytesOf(markAt(column_));
}

/// NULL for a column that is not there. Callers ask for the same columns in the same order, row
/// after row: most often the one that was asked for at this time in the last row is the right one.
RowBuffer::Cell RowBuffer::cellOf(const std::string& column) {
    if (row_ == nullptr) return {};
    const std::size_t time = asked_++;
    std::size_t index = time < order_.size() ? order_[time] : time;
    if (index >= width_ || !sameName((*columns_)[index], column)) index = find(column, time);
    if (index == width_) return {};
    moveTo(index);
    return {markAt(index), value_};
}

/// The low bits of what is wider than 64 bits signed; 0 for NULL.
std::uint64_t RowBuffer::toNumber(const Cell& cell) {
    if (cell.mark < kUnsigned) return leadingNumber({cell.bytes, cell.mark});
    std::uint64_t number = 0;
    if (cell.mark != kNull) std::memcpy(&number, cell.bytes, sizeof number);
    return number;
}

bool RowBuffer::getString(std::string column, std::string& value) {
    const Cell cell = cellOf(column);
    if (cell.mark == kNull) return false;
    if (cell.mark < kUnsigned) {
        value.assign(cell.bytes, cell.mark);
    } else if (cell.mark == kUnsigned) {
        value = std::to_string(toNumber(cell));
    } else {
        value = std::to_string(static_cast<std::int64_t>(toNumber(cell)));
    }
    return true;
}

bool RowBuffer::getInt(std::string column, int* value) {
    const Cell cell = cellOf(column);
    if (cell.mark == kNull || value == nullptr) return false;
    *value = static_cast<int>(static_cast<std::uint32_t>(toNumber(cell)));
    return true;
}

unsigned int RowBuffer::getUInt(std::string column) {
    return static_cast<unsigned int>(getUInt64(std::move(column)));
}

std::uint64_t RowBuffer::getUInt64(std::string column) {
    return toNumber(cellOf(column));
}

}  // namespace dbaccess
