#ifndef DBSERVICE_DBACCESS_MARIADB_KEPTSTATEMENT_H
#define DBSERVICE_DBACCESS_MARIADB_KEPTSTATEMENT_H

#include <mysql.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "dbaccess/LastError.h"
#include "dbaccess/reader/Skeleton.h"
#include "dbaccess/rows/RowBuffer.h"

namespace dbaccess::mariadb {

/// A statement that the server of one session keeps prepared. Its rows come in the binary protocol
/// and go straight into the row buffer.
/// Threads: that of its session.
class KeptStatement {
public:
    /// @return  null with `error` when the server refuses it.
    static std::unique_ptr<KeptStatement> prepare(MYSQL* session, const std::string& text,
                                                  Error& error);

    /// How many values a run takes.
    std::size_t valueCount() const { return mysql_stmt_param_count(statement_.get()); }

    bool hasRows() const { return mysql_stmt_field_count(statement_.get()) != 0; }

    /// Whether all columns are such as read alike in both protocols: texts and whole numbers.
    bool readsAsText() const;

    /// Runs it with one row of values, or with several at once. @return  false with `error`.
    bool execute(const Skeleton& skeleton, Error& error);

    /// The rows of an execution, `largest` bytes at most. @return  null with `error`.
    std::unique_ptr<RowBuffer> rows(std::size_t largest, Error& error);

    /// Passes over the rows of an execution.
    void skipRows() { mysql_stmt_free_result(statement_.get()); }

    std::int64_t affectedRows() const {
        return static_cast<std::int64_t>(mysql_stmt_affected_rows(statement_.get()));
    }

private:
    struct Close {
        void operator()(MYSQL_STMT* statement) const { mysql_stmt_close(statement); }
    };

    using Handle = std::unique_ptr<MYSQL_STMT, Close>;

    explicit KeptStatement(Handle statement) : statement_(std::move(statement)) {}
    void bind(const Skeleton& skeleton);
    const RowBuffer::Columns& columns();
    Error error() const;

    const Handle statement_;
    // The values, column by column, where the client library finds them.
    std::vector<std::int64_t> numbers_;
    std::vector<char*> texts_;
    std::vector<unsigned long> lengths_;
    std::vector<MYSQL_BIND> places_;
    RowBuffer::Columns columns_;  // null before the first rows
};

/// Whether the rows of the skeleton can be bound at once: in each column only texts or only
/// numbers.
bool hasUniformColumns(const Skeleton& skeleton);

}  // namespace dbaccess::mariadb

#endif
