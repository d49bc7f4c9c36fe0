#ifndef DBSERVICE_DBACCESS_READER_STATEMENT_H
#define DBSERVICE_DBACCESS_READER_STATEMENT_H

#include <string>
#include <utility>

#include "dbaccess/reader/StatementKind.h"

namespace dbaccess {

/// A text and what the layer must know of it before sending.
struct Statement {
    explicit Statement(std::string statement) : text(std::move(statement)), kind(kindOf(text)) {}

    std::string text;
    StatementKind kind;
};

}  // namespace dbaccess

#endif
