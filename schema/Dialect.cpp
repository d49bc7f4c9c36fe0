#include "schema/Dialect.h"

#include <algorithm>

#include "dbaccess/sqlite/SqliteError.h"
#include "schema/Text.h"

namespace schema {
namespace {

// SQLite's columns have no limits: checks refuse what a server would refuse. Their names tell the
// access layer which error a server would give.

std::string limitedText(const std::string& condition) {
    return std::string("text constraint ") + dbaccess::sqlite::kTooLongCheck + " check(" +
           condition + ")";
}

/// At most 255 characters. SQLite counts the characters up to a NUL only, so a text with a NUL may
/// have 255 bytes.
std::string shortText(const std::string& name) {
    return limitedText("length(cast(" + name + " as blob))<=255 or length(" + name +
                       ")<=255 and instr(" + name + ",char(0))=0");
}

std::string longText(const std::string& name) {
    return limitedText("length(cast(" + name + " as blob))<=65535");
}

std::string range(const std::string& name, const char* limits) {
    return " constraint out_of_range check(" + name + " between " + limits + ")";
}

std::string number(const std::string& name) {
    return "integer" + range(name, "-2147483648 and 2147483647");
}

std::string notNull(std::string definition) {
    return definition.insert(definition.find(' '), " not null");
}

/// Of a STRICT table, whose integers have 64 bits.
std::string embeddedDefinition(const Column& column) {
    switch (column.type) {
        case Type::Key:
            return notNull(shortText(column.name));
        case Type::ShortText:
            return shortText(column.name);
        case Type::LongText:
            return longText(column.name);
        case Type::Number:
            return number(column.name);
        case Type::NumberKey:
            return notNull(number(column.name));
        case Type::BigNumber:
        case Type::NextId:
            return "integer";
        case Type::PlainId:
            return "integer default 0";
        case Type::SerialNumber:
            return "integer not null primary key autoincrement" +
                   range(column.name, "0 and 4294967295");
        case Type::RowNumber:
            return "integer not null primary key";
    }
    return {};
}

bool hasColumnOf(const Table& table, Type type) {
    return std::any_of(table.columns.begin(), table.columns.end(),
                       [type](const Columns& run) { return run.type == type; });
}

/// Whether the database numbers the rows by the primary key.
bool isNumbered(const Table& table) {
    return hasColumnOf(table, Type::SerialNumber) || hasColumnOf(table, Type::RowNumber);
}

/// The index's name, `between` and its columns.
std::string indexOf(const Table& table, const Index& index, const std::string& between = {}) {
    std::string name = table.name;
    for (const std::string& column : split(index.columns))
        name += "_" + column;
    return name + between + "(" + index.columns + ")";
}

}  // namespace

std::string Dialect::createDatabase(const std::string& name) const {
    // A backtick would end the quoted name. Nothing is no name either: so both engines refuse it.
    const bool quotable = name.find('`') == std::string::npos;
    std::string text = "create database if not exists `" + (quotable ? name : "") + "`";
    if (!isEmbedded()) text += " character set utf8mb4 collate " + collation_;
    return text;
}

std::string Dialect::createTable(const Table& table) const {
    const std::string name = table.name;
    std::string pieces;
    for (const Column& column : columnsOf(table))
        pieces += ", " + column.name + " " + definitionOf(column);
    // SQLite numbers rows only by a key that is declared with its column.
    if (!isEmbedded() || !isNumbered(table))
        pieces += std::string(", primary key(") + table.primaryKey + ")";
    if (!isEmbedded())
        for (const Index& index : table.indexes)
            pieces += (index.unique ? ", unique key " : ", key ") + indexOf(table, index);
    return "create table if not exists " + name + "(" + pieces.substr(2) + ") " + optionsOf(table);
}

std::string Dialect::createIndex(const Table& table, const Index& index) const {
    return std::string(index.unique ? "create unique index " : "create index ") +
           (isEmbedded() ? "if not exists " : "") +
           indexOf(table, index, std::string(" on ") + table.name);
}

std::string Dialect::triggerOf(const Table& table) const {
    if (!isEmbedded() || !hasColumnOf(table, Type::NextId)) return {};
    const std::string name = table.name;
    const std::string key = table.primaryKey;
    return name + "_NextId after insert on " + name +
           " when NEW.Id is null or NEW.Id=0 begin update " + name +
           " set Id=(select max(coalesce(max(Id),0),0)+1 from " + name + ") where " + key +
           "=NEW." + key + "; end";
}

std::string Dialect::definitionOf(const Column& column) const {
    return isEmbedded() ? embeddedDefinition(column) : serverDefinition(column.type);
}

std::string Dialect::storageOf(const Table& table) const {
    if (!isEmbedded()) return "InnoDB";
    // Without rowid a table lies in the order of its key, as InnoDB's do.
    return isNumbered(table) ? "strict" : "strict, without rowid";
}

/// What stands behind the table's columns.
std::string Dialect::optionsOf(const Table& table) const {
    if (isEmbedded()) return storageOf(table);
    // Keys of 1020 bytes a text ask for this row format, which is the default but not always.
    return "engine=" + storageOf(table) +
           " row_format=dynamic default character set utf8mb4 collate " + collation_;
}

std::string Dialect::serverDefinition(Type type) const {
    switch (type) {
        case Type::Key:
            return "varchar(255) collate " + collation_ + " not null";
        case Type::ShortText:
            return "varchar(255) collate " + collation_;
        case Type::LongText:
            return "text collate " + collation_;
        case Type::Number:
            return "int";
        case Type::NumberKey:
            return "int not null";
        case Type::BigNumber:
            return "bigint";
        case Type::PlainId:
            return "bigint default 0";
        case Type::SerialNumber:
            return "int unsigned not null auto_increment";
        case Type::NextId:
        case Type::RowNumber:
            return "bigint not null auto_increment";
    }
    return {};
}

}  // namespace schema
