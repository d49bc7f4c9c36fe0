#include "dbaccess/mariadb/KeptStatement.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <new>
#include <utility>

#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/mariadb/Login.h"
#include "dbaccess/mariadb/Unread.h"

namespace dbaccess::mariadb {
namespace {

/// Takes the values of the current row from the client library, one call for each column.
struct RowReader {
    RowBuffer* rows;
    const MYSQL_FIELD* fields;
    const MYSQL* session;
    bool malformed = false;        // values that reach beyond the packet
    std::exception_ptr exception;  // of memory: nothing may be thrown through the client library

    void read(unsigned int column, unsigned char** place);
    bool good() const { return !malformed && !exception; }

private:
    void readNumber(const MYSQL_FIELD& field, unsigned char** place);
    void readText(unsigned char** place);
    const unsigned char* take(unsigned char** place, std::size_t bytes);
};

std::size_t sizeOfNumber(enum_field_types type) {
    switch (type) {
        case MYSQL_TYPE_TINY:
            return 1;
        case MYSQL_TYPE_SHORT:
            return 2;
        case MYSQL_TYPE_INT24:
        case MYSQL_TYPE_LONG:
            return 4;
        case MYSQL_TYPE_LONGLONG:
            return 8;
        default:
            return 0;
    }
}

bool isText(enum_field_types type) {
    switch (type) {
        case MYSQL_TYPE_VARCHAR:
        case MYSQL_TYPE_VAR_STRING:
        case MYSQL_TYPE_STRING:
        case MYSQL_TYPE_TINY_BLOB:
        case MYSQL_TYPE_BLOB:
        case MYSQL_TYPE_MEDIUM_BLOB:
        case MYSQL_TYPE_LONG_BLOB:
        case MYSQL_TYPE_NEWDECIMAL:
            return true;
        default:
            return false;
    }
}

/// The next bytes of the packet, which may not reach beyond what was received.
const unsigned char* RowReader::take(unsigned char** place, std::size_t bytes) {
    const unsigned char* const from = *place;
    const auto left = static_cast<std::size_t>(session->net.buff_end - from);
    if (from > session->net.buff_end || left < bytes) {
        malformed = true;
        return nullptr;
    }
    *place += bytes;
    return from;
}

void RowReader::read(unsigned int column, unsigned char** place) {
    if (!good()) return;
    try {
        if (place == nullptr) return rows->addNull();
        const MYSQL_FIELD& field = fields[column];
        sizeOfNumber(field.type) != 0 ? readNumber(field, place) : readText(place);
    } catch (const std::bad_alloc&) {
        exception = std::current_exception();
    }
}

void RowReader::readNumber(const MYSQL_FIELD& field, unsigned char** place) {
    const std::size_t size = sizeOfNumber(field.type);
    const unsigned char* const bytes = take(place, size);
    if (bytes == nullptr) return;
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < size; ++i)
        number |= static_cast<std::uint64_t>(bytes[i]) << (8 * i);
    if ((field.flags & UNSIGNED_FLAG) != 0) return rows->addUnsigned(number);
    const unsigned int unused = 64 - 8 * static_cast<unsigned int>(size);
    rows->addNumber(static_cast<std::int64_t>(number << unused) >> unused);
}

/// A text comes with its length in front: one byte, or a mark and two, three or eight bytes.
void RowReader::readText(unsigned char** place) {
    const unsigned char* const mark = take(place, 1);
    if (mark == nullptr) return;
    std::size_t length = *mark;
    if (*mark > 251) {
        const std::size_t size = *mark == 252 ? 2 : *mark == 253 ? 3 : 8;
        const unsigned char* const bytes = take(place, size);
        if (bytes == nullptr) return;
        length = 0;
        for (std::size_t i = 0; i < size; ++i)
            length |= static_cast<std::size_t>(bytes[i]) << (8 * i);
    }
    const unsigned char* const text = take(place, length);
    if (text != nullptr) rows->addText({reinterpret_cast<const char*>(text), length});
}

void readValue(void* reader, unsigned int column, unsigned char** place) {
    static_cast<RowReader*>(reader)->read(column, place);
}

}  // namespace

bool hasUniformColumns(const Skeleton& skeleton) {
    const std::vector<Value>& values = skeleton.values;
    for (std::size_t i = skeleton.valuesPerRow; i < values.size(); ++i) {
        if (values[i].index() != values[i - skeleton.valuesPerRow].index()) return false;
    }
    return true;
}

std::unique_ptr<KeptStatement> KeptStatement::prepare(MYSQL* session, const std::string& text,
                                                      Error& error) {
    Handle handle(mysql_stmt_init(session));
    if (!handle) throw std::bad_alloc();
    MYSQL_STMT* const statement = handle.get();
    std::unique_ptr<KeptStatement> kept(new KeptStatement(std::move(handle)));
    if (mysql_stmt_prepare(statement, text.data(), text.size()) == 0) return kept;
    error = kept->error();
    return nullptr;
}

bool KeptStatement::readsAsText() const {
    const MYSQL_FIELD* const fields = mariadb_stmt_fetch_fields(statement_.get());
    const unsigned int count = mysql_stmt_field_count(statement_.get());
    return std::all_of(fields, fields + count, [](const MYSQL_FIELD& field) {
        return isText(field.type) ||
               (sizeOfNumber(field.type) != 0 && (field.flags & ZEROFILL_FLAG) == 0);
    });
}

/// Lays the values out by columns, as the client library wants the rows of several.
void KeptStatement::bind(const Skeleton& skeleton) {
    const std::vector<Value>& values = skeleton.values;
    const std::size_t columns = valueCount();
    const std::size_t rows = skeleton.valuesPerRow == 0 ? 1 : values.size() / columns;
    numbers_.resize(values.size());
    texts_.resize(values.size());
    lengths_.resize(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
        const std::size_t at = (i % columns) * rows + i / columns;
        if (const auto* text = std::get_if<std::string_view>(&values[i])) {
            texts_[at] = const_cast<char*>(text->data());  // it is only read
            lengths_[at] = text->size();
        } else {
            numbers_[at] = std::get<std::int64_t>(values[i]);
        }
    }
    places_.assign(columns, MYSQL_BIND());
    for (std::size_t i = 0; i < columns; ++i) {
        MYSQL_BIND& place = places_[i];
        if (std::holds_alternative<std::int64_t>(values[i])) {
            place.buffer_type = MYSQL_TYPE_LONGLONG;
            place.buffer = &numbers_[i * rows];
        } else {
            char** const texts = &texts_[i * rows];
            place.buffer_type = MYSQL_TYPE_STRING;
            place.buffer = skeleton.valuesPerRow == 0 ? *texts : static_cast<void*>(texts);
            place.length = &lengths_[i * rows];
        }
    }
    const auto arraySize = static_cast<unsigned int>(skeleton.valuesPerRow == 0 ? 0 : rows);
    mysql_stmt_attr_set(statement_.get(), STMT_ATTR_ARRAY_SIZE, &arraySize);
    if (columns != 0) mysql_stmt_bind_param(statement_.get(), places_.data());
}

bool KeptStatement::execute(const Skeleton& skeleton, Error& error) {
    bind(skeleton);
    if (mysql_stmt_execute(statement_.get()) == 0) return true;
    error = this->error();
    return false;
}

/// The names that came with the last execution; most often those of the one before it.
const RowBuffer::Columns& KeptStatement::columns() {
    const MYSQL_FIELD* const fields = mariadb_stmt_fetch_fields(statement_.get());
    const MYSQL_FIELD* const end = fields + mysql_stmt_field_count(statement_.get());
    const auto nameOf = [](const MYSQL_FIELD& field) {
        return std::string_view(field.name, field.name_length);
    };
    const auto isNamed = [&](const MYSQL_FIELD& field, const std::string& name) {
        return name == nameOf(field);
    };
    const auto isKnown = [&](const std::vector<std::string>& names) {
        return std::equal(fields, end, names.begin(), names.end(), isNamed);
    };
    if (!columns_ || !isKnown(columns_->all())) {
        std::vector<std::string> names;
        for (const MYSQL_FIELD* field = fields; field != end; ++field)
            names.emplace_back(nameOf(*field));
        columns_ = std::make_shared<const ColumnNames>(std::move(names));
    }
    return columns_;
}

std::unique_ptr<RowBuffer> KeptStatement::rows(std::size_t largest, Error& error) {
    MYSQL_STMT* const statement = statement_.get();
    // However it ends, what is left unread would meet the next statement of the session.
    const std::unique_ptr<MYSQL_STMT, decltype(&mysql_stmt_free_result)> rest(
        statement, &mysql_stmt_free_result);
    Unread unread(statement->mysql);
    const MYSQL_FIELD* const fields = mariadb_stmt_fetch_fields(statement);
    auto rows = std::make_unique<RowBuffer>(columns());
    rows->limitTo(largest);
    RowReader reader{rows.get(), fields, statement->mysql, false, nullptr};
    mysql_stmt_attr_set(statement, STMT_ATTR_CB_USER_DATA, &reader);
    mysql_stmt_attr_set(statement, STMT_ATTR_CB_RESULT, reinterpret_cast<const void*>(&readValue));
    int code = 0;
    for (;;) {
        rows->beginRow();
        code = mysql_stmt_fetch(statement);
        if (code != 0 || !reader.good()) break;
        rows->endRow();
    }
    if (reader.exception) std::rethrow_exception(reader.exception);
    if (reader.malformed) {
        error = makeError(kMalformedPacket, "malformed packet");
        return nullptr;
    }
    unread.isRead();
    if (code == MYSQL_NO_DATA) return rows;
    error = this->error();
    return nullptr;
}

Error KeptStatement::error() const {
    // What ends rows early is known to the session alone.
    if (mysql_stmt_errno(statement_.get()) == 0) return errorOf(statement_->mysql);
    return Error{static_cast<int>(mysql_stmt_errno(statement_.get())),
                 mysql_stmt_sqlstate(statement_.get()), mysql_stmt_error(statement_.get())};
}

}  // namespace dbaccess::mariadb
