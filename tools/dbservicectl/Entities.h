#ifndef DBSERVICECTL_ENTITIES_H
#define DBSERVICECTL_ENTITIES_H

#include <string>
#include <string_view>
#include <vector>

#include "schema/Tables.h"

namespace dbservicectl {

/// What the tool calls the records of a table.
struct Entity {
    const char* name;   ///< as "devices"
    const char* table;  ///< as "device"
    bool isEvent;       ///< alarms and faces, which the others do not refer to
};

/// All of them, what others refer to before those.
const std::vector<Entity>& entities();

/// The one of this name, or whose table has it. Throws a Failure that tells all names.
const Entity& entityOf(const std::string& name);

const schema::Table& tableOf(const Entity& entity);

/// A column that holds the key of another table's rows, or an empty text. No database watches over
/// it.
struct Reference {
    std::string_view table;
    std::string_view column;
    std::string_view target;
    std::string_view key;
};

const std::vector<Reference>& references();

bool isNumber(schema::Type type);

/// Whether the database itself gives the value, which means nothing elsewhere.
bool isRowNumber(schema::Type type);

/// Whether it holds passwords, which are not shown.
bool isSecret(const schema::Column& column);

}  // namespace dbservicectl

#endif
