#include "dbaccess/rows/RowBuffer.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <numeric>

#include "dbaccess/reader/LetterCase.h"

namespace dbaccess {
namespace {

// Each chunk is four times as large as the last one, until it is of the largest size. The first is
// enough for the one row that most queries find, and of a size that malloc keeps at hand.
constexpr std::size_t kFirstChunkSize = 1024;
constexpr std::size_t kChunkSize = 65536;

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

void RowBuffer::beginRow() {
    newColumn_ = 0;
    newSize_ = 0;
    if (newRoom_ < width_) addChunk(width_);
    newSize_ = width_;
}

/// What there is of the row moves on to the new chunk.
void RowBuffer::addChunk(std::size_t needed) {
    const std::size_t usual =
        chunks_.empty() ? kFirstChunkSize : std::min(4 * chunks_.back().size, kChunkSize);
    const std::size_t size = std::max(usual, needed);
    if (limit_ != 0 && bytes_ + size > limit_) throw ResultTooLarge();
    Chunk chunk(size);
    bytes_ += size;
    if (newSize_ != 0) std::memcpy(chunk.bytes.get(), newRow_, newSize_);
    if (!chunks_.empty() && chunks_.back().used == 0) chunks_.pop_back();
    newRow_ = chunk.bytes.get();
    newRoom_ = chunk.size;
    chunks_.push_back(std::move(chunk));
}

void RowBuffer::addLongText(std::string_view text) {
    const Length length = text.size();
    char* const place = extend(kLongText, sizeof length + length);
    std::memcpy(place, &length, sizeof length);
    std::memcpy(place + sizeof length, text.data(), length);
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
    value_ = row_ + width_;
    asked_ = 0;
    return true;
}

std::size_t RowBuffer::bytesOf(const Cell& cell) {
    if (cell.mark <= kLongestShortText) return cell.mark;
    switch (cell.mark) {
        case kNull:
            return 0;
        case kSmallNumber:
            return sizeof(std::int8_t);
        case kMediumNumber:
            return sizeof(std::int32_t);
        case kNumber:
        case kUnsigned:
            return sizeof(std::uint64_t);
        default:
            return sizeof(Length) + numberAt<Length>(cell.bytes);
    }
}

/// The index of the column that a row is asked for at this time, to be remembered for the next row;
/// the width when there is none.
std::size_t RowBuffer::find(const std::string& column, std::size_t time) {
    for (std::size_t step = 0; step < width_; ++step) {
        const std::size_t index = (column_ + step) % width_;
        if (!sameIgnoringCase(names_[index], column)) continue;
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
        value_ = row_ + width_;
    }
    for (; column_ < column; ++column_)
        value_ += bytesOf({markAt(column_), value_});
}

/// NULL for a column that is not there. Callers ask for the same columns in the same order, row
/// after row: most often the one that was asked for at this time in the last row is the right one.
RowBuffer::Cell RowBuffer::cellOf(const std::string& column) {
    if (row_ == nullptr) return {};
    const std::size_t time = asked_++;
    std::size_t index = time < order_.size() ? order_[time] : time;
    if (index >= width_ || names_[index] != column) index = find(column, time);
    if (index == width_) return {};
    moveTo(index);
    return {markAt(index), value_};
}

/// Of a cell that is a text.
std::string_view RowBuffer::textOf(const Cell& cell) {
    if (cell.mark != kLongText) return {cell.bytes, cell.mark};
    return {cell.bytes + sizeof(Length), numberAt<Length>(cell.bytes)};
}

/// The low bits of what is wider than 64 bits signed; 0 for NULL.
std::uint64_t RowBuffer::toNumber(const Cell& cell) {
    switch (cell.mark) {
        case kNull:
            return 0;
        case kSmallNumber:
            return static_cast<std::uint64_t>(numberAt<std::int8_t>(cell.bytes));
        case kMediumNumber:
            return static_cast<std::uint64_t>(numberAt<std::int32_t>(cell.bytes));
        case kNumber:
        case kUnsigned:
            return numberAt<std::uint64_t>(cell.bytes);
        default:
            return leadingNumber(textOf(cell));
    }
}

bool RowBuffer::getString(std::string column, std::string& value) {
    const Cell cell = cellOf(column);
    if (cell.mark == kNull) return false;
    if (cell.mark <= kLongText) {
        value.assign(textOf(cell));
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
