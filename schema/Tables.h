#ifndef DBSERVICE_SCHEMA_TABLES_H
#define DBSERVICE_SCHEMA_TABLES_H

#include <string>
#include <vector>

namespace schema {

/// What a column holds. How an engine declares it is in `Dialect`.
enum class Type {
    Key,           ///< text of at most 255 characters, never NULL
    ShortText,     ///< text of at most 255 characters
    LongText,      ///< text of at most 65,535 bytes
    Number,        ///< 32 bits, signed
    NumberKey,     ///< the same, never NULL
    BigNumber,     ///< 64 bits, signed
    NextId,        ///< 64 bits; a row that does not name it gets the next number of the table
    PlainId,       ///< 64 bits; 0 in a row that does not name it
    SerialNumber,  ///< 32 bits, unsigned; numbered by the database, no number is ever given again
    RowNumber,     ///< 64 bits; numbered by the database, a key for a table that has no other
};

/// Columns of one type that stand side by side, as "DisplayName, PrivateAddress".
struct Columns {
    Type type;
    const char* names;
};

struct Index {
    const char* columns;
    bool unique = false;
};

struct Table {
    const char* name;
    const char* primaryKey;  ///< one column
    std::vector<Columns> columns;
    std::vector<Index> indexes;
};

struct Column {
    std::string name;
    Type type;
};

/// All tables of the library: the one definition, from which both engines' tables are made.
const std::vector<Table>& tables();

/// The columns of a table one by one.
std::vector<Column> columnsOf(const Table& table);

}  // namespace schema

#endif
