#include "dbaccess/rows/RowBuffer.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>

#include "dbaccess/reader/LetterCase.h"

namespace dbaccess {
namespace {

constexpr std::size_t kChunkSize = 65536;
constexpr std::uint32_t kNull = std::numeric_limits<std::uint32_t>::max();

std::size_t bytesOf(std::uint32_t length) {
    return length == kNull ? 0 : length;
}

bool sameName(const std::string& a, const std::string& b) {
    return a == b || sameIgnoringCase(a, b);
}

/// The leading whole number of a text; its low bits when it is wider than 64 bits signed.
std::uint64_t toNumber(std::string_view text) {
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

RowBuffer::RowBuffer(std::vector<std::string> columns) : columns_(std::move(columns)) {}

void RowBuffer::addRow(const char* const* values, const std::size_t* lengths) {
    std::size_t size = headerSize();
    for (std::size_t i = 0; i < columns_.size(); ++i)
        size += values[i] == nullptr ? 0 : lengths[i];

    char* out = reserve(size);
    char* bytes = out + headerSize();
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const auto length = values[i] == nullptr ? kNull : static_cast<std::uint32_t>(lengths[i]);
        std::memcpy(out + i * sizeof length, &length, sizeof length);
        if (bytesOf(length) != 0) std::memcpy(bytes, values[i], length);
        bytes += bytesOf(length);
    }
    ++rows_;
}

char* RowBuffer::reserve(std::size_t bytes) {
    if (chunks_.empty() || chunks_.back().size - chunks_.back().used < bytes) {
        chunks_.emplace_back(std::max(bytes, kChunkSize));
    }
    Chunk& chunk = chunks_.back();
    char* place = chunk.bytes.get() + chunk.used;
    chunk.used += bytes;
    return place;
}

int RowBuffer::rowsCount() const {
    constexpr std::size_t kMost = std::numeric_limits<int>::max();
    return static_cast<int>(std::min(rows_, kMost));
}

bool RowBuffer::next() {
    if (!chunks_.empty() && nextRow_ == chunks_.front().used) {
        chunks_.pop_front();
        nextRow_ = 0;
    }
    row_ = nullptr;
    if (chunks_.empty()) return false;

    row_ = chunks_.front().bytes.get() + nextRow_;
    expected_ = 0;
    expectedValue_ = row_ + headerSize();
    std::size_t size = headerSize();
    for (std::size_t i = 0; i < columns_.size(); ++i)
        size += bytesOf(lengthAt(i));
    nextRow_ += size;
    return true;
}

std::uint32_t RowBuffer::lengthAt(std::size_t column) const {
    std::uint32_t length = 0;
    std::memcpy(&length, row_ + column * sizeof length, sizeof length);
    return length;
}

std::optional<std::size_t> RowBuffer::indexOf(const std::string& column) const {
    for (std::size_t step = 0; step < columns_.size(); ++step) {
        const std::size_t index = (expected_ + step) % columns_.size();
        if (sameName(columns_[index], column)) return index;
    }
    return std::nullopt;
}

/// Callers ask for columns in order, row after row: then the first name compared is the right one
/// and the value lies where the last one ended.
std::optional<std::string_view> RowBuffer::valueOf(const std::string& column) {
    if (row_ == nullptr) return std::nullopt;
    const auto index = indexOf(column);
    if (!index) return std::nullopt;

    if (*index < expected_) {
        expected_ = 0;
        expectedValue_ = row_ + headerSize();
    }
    for (; expected_ < *index; ++expected_)
        expectedValue_ += bytesOf(lengthAt(expected_));
    const char* value = expectedValue_;
    const std::uint32_t length = lengthAt(*index);
    expected_ = *index + 1;
    expectedValue_ += bytesOf(length);
    if (length == kNull) return std::nullopt;
    return std::string_view(value, length);
}

bool RowBuffer::getString(std::string column, std::string& value) {
    const auto found = valueOf(column);
    if (found) value.assign(*found);
    return found.has_value();
}

bool RowBuffer::getInt(std::string column, int* value) {
    const auto found = valueOf(column);
    if (!found || value == nullptr) return false;
    *value = static_cast<int>(static_cast<std::uint32_t>(toNumber(*found)));
    return true;
}

unsigned int RowBuffer::getUInt(std::string column) {
    return static_cast<unsigned int>(getUInt64(std::move(column)));
}

std::uint64_t RowBuffer::getUInt64(std::string column) {
    return toNumber(valueOf(column).value_or(std::string_view()));
}

}  // namespace dbaccess
