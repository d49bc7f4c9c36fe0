#ifndef DBSERVICE_DBACCESS_ROWS_COLUMNNAMES_H
#define DBSERVICE_DBACCESS_ROWS_COLUMNNAMES_H

#include <atomic>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace dbaccess {

/// Where among the columns of a result a field of a record is.
struct FieldPlace {
    std::size_t column;  ///< behind the last one: there is none of this name
    std::size_t field;
    const char* name;  ///< a literal
};
using FieldPlaces = std::vector<FieldPlace>;  // of a record, in the order of the columns

/// The names of a result's columns. All results of a kept statement share them, and with them where
/// the fields are of the records that are made of the rows. Threads: any number at once.
class ColumnNames {
public:
    explicit ColumnNames(std::vector<std::string> names) : names_(std::move(names)) {}
    ColumnNames(const ColumnNames&) = delete;
    ColumnNames& operator=(const ColumnNames&) = delete;
    ~ColumnNames() { delete places_.load(); }

    std::size_t count() const { return names_.size(); }
    const std::vector<std::string>& all() const { return names_; }

    /// The column of this name: the first from `first` on, or else of those before; `count()` when
    /// there is none.
    std::size_t find(std::string_view name, std::size_t first) const;

    /// What was kept; null when nothing was.
    const FieldPlaces* places() const { return places_.load(std::memory_order_acquire); }
    /// Keeps the first that come. Others are left with the caller.
    void keep(std::unique_ptr<const FieldPlaces>& places) const;

private:
    const std::vector<std::string> names_;
    mutable std::atomic<const FieldPlaces*> places_{nullptr};  // owned
};

}  // namespace dbaccess

#endif
