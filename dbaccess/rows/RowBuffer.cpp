#include "dbaccess/rows/RowBuffer.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <typeinfo>

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

void readByNames(ResultSet& row, const Field* fields, std::size_t count) {
    for (const Field* field = fields; field != fields + count; ++field) {
        if (auto* const text = std::get_if<std::string*>(&field->place)) {
            row.getString(field->column, **text);
        } else if (auto* const number = std::get_if<int*>(&field->place)) {
            row.getInt(field->column, *number);
        } else if (auto* const whole = std::get_if<unsigned int*>(&field->place)) {
            **whole = row.getUInt(field->column);
        } else if (auto* const wide = std::get_if<std::uint64_t*>(&field->place)) {
            **wide = row.getUInt64(field->column);
        }
    }
}

}  // namespace

inline std::size_t RowBuffer::sizeOf(Cell cell) {
    static constexpr std::size_t kSizes[] = {8, 8, 4, 1, 0};  // from kUnsigned to kNull
    if (cell.mark <= kLongestShortText) return cell.mark;
    if (cell.mark == kLongText) return sizeof(Length) + numberAt<Length>(cell.bytes);
    return kSizes[cell.mark - kUnsigned];
}

/// Of a cell that is a text.
inline std::string_view RowBuffer::textOf(Cell cell) {
    if (cell.mark != kLongText) return {cell.bytes, cell.mark};
    return {cell.bytes + sizeof(Length), numberAt<Length>(cell.bytes)};
}

/// The low bits of what is wider than 64 bits signed; 0 for NULL.
inline std::uint64_t RowBuffer::numberOf(Cell cell) {
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

/// False for NULL, which leaves the value.
inline bool RowBuffer::copy(Cell cell, std::string& value) {
    if (cell.mark <= kLongText) {
        value.assign(textOf(cell));
    } else if (cell.mark == kUnsigned) {
        value = std::to_string(numberOf(cell));
    } else if (cell.mark != kNull) {
        value = std::to_string(static_cast<std::int64_t>(numberOf(cell)));
    }
    return cell.mark != kNull;
}

inline bool RowBuffer::copy(Cell cell, int& value) {
    if (cell.mark == kNull) return false;
    value = static_cast<int>(static_cast<std::uint32_t>(numberOf(cell)));
    return true;
}

/// Does with a cell what the getter for the field's type does.
inline void RowBuffer::copy(Cell cell, const Field& field) {
    if (auto* const text = std::get_if<std::string*>(&field.place)) {
        copy(cell, **text);
    } else if (auto* const number = std::get_if<int*>(&field.place)) {
        copy(cell, **number);
    } else if (auto* const whole = std::get_if<unsigned int*>(&field.place)) {
        **whole = static_cast<unsigned int>(numberOf(cell));
    } else if (auto* const wide = std::get_if<std::uint64_t*>(&field.place)) {
        **wide = numberOf(cell);
    }
}

RowBuffer::RowBuffer(std::vector<std::string> columns)
    : RowBuffer(std::make_shared<const ColumnNames>(std::move(columns))) {}

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
    toFirst();
    likely_ = 0;
    return true;
}

/// NULL for a column that is not there.
RowBuffer::Cell RowBuffer::cellOf(const std::string& column) {
    if (row_ == nullptr) return {};
    std::size_t index = likely_;
    if (index == width_ || names_[index] != column) index = columns_->find(column, index);
    if (index < column_) toFirst();
    moveTo(index);
    if (index == width_) return {};
    likely_ = index + 1;
    return cellAt(index, value_);
}

bool RowBuffer::getString(std::string column, std::string& value) {
    return copy(cellOf(column), value);
}

bool RowBuffer::getInt(std::string column, int* value) {
    const Cell cell = cellOf(column);
    return value != nullptr && copy(cell, *value);
}

unsigned int RowBuffer::getUInt(std::string column) {
    return static_cast<unsigned int>(getUInt64(std::move(column)));
}

std::uint64_t RowBuffer::getUInt64(std::string column) {
    return numberOf(cellOf(column));
}

FieldPlaces RowBuffer::placesOf(const Field* fields, std::size_t count) const {
    FieldPlaces places;
    std::size_t likely = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t column = columns_->find(fields[i].column, likely);
        places.push_back({column, i, fields[i].column});
        likely = column + 1;
    }
    std::stable_sort(places.begin(), places.end(),
                     [](const auto& a, const auto& b) { return a.column < b.column; });
    return places;
}

void RowBuffer::read(const Field* fields, std::size_t count) {
    if (row_ == nullptr) return readByNames(*this, fields, count);
    const FieldPlaces* const known = columns_->places();
    if (known != nullptr && readAt(*known, fields, count)) return;
    auto places = std::make_unique<const FieldPlaces>(placesOf(fields, count));
    readAt(*places, fields, count);
    columns_->keep(places);
}

/// Goes on to a column, or to the end of the row.
void RowBuffer::moveTo(std::size_t column) {
    for (; column_ < column; ++column_)
        value_ += sizeOf(cellAt(column_, value_));
}

/// False when the places are those of other fields.
bool RowBuffer::readAt(const FieldPlaces& places, const Field* fields, std::size_t count) {
    if (places.size() != count) return false;
    std::size_t column = 0;
    const char* value = row_ + width_;
    for (const FieldPlace& place : places) {
        const Field& field = fields[place.field];
        if (field.column != place.name) return false;
        for (; column < place.column; ++column)
            value += sizeOf(cellAt(column, value));
        copy(column == width_ ? Cell() : cellAt(column, value), field);
    }
    column_ = column;
    value_ = value;
    return true;
}

void readFields(ResultSet& row, const Field* fields, std::size_t count) {
    if (typeid(row) == typeid(RowBuffer)) return static_cast<RowBuffer&>(row).read(fields, count);
    readByNames(row, fields, count);
}

}  // namespace dbaccess
