#ifndef DBSERVICE_STATEMENT_READROWS_H
#define DBSERVICE_STATEMENT_READROWS_H

#include <cstddef>
#include <memory>
#include <type_traits>

#include "dbaccess/DataAccess.h"
#include "dbaccess/ResultSet.h"
#include "dbaccess/rows/RecordFields.h"

// How the rows of a query become records on the heap, and how those are freed. Every reader takes
// the set over and releases it; a null set, that of a failed query, gives null. `setValue` copies
// the current row into a record.

namespace dbservice::statement {

struct ReleaseRows {
    void operator()(dbaccess::ResultSet* rows) const {
        dbaccess::DataAccess::ReleaseResulitSet(rows);
    }
};
using RowsPtr = std::unique_ptr<dbaccess::ResultSet, ReleaseRows>;

template <class Record>
using SetValue = int (*)(dbaccess::ResultSet*, Record*);

/// Frees a list and its records; null is ignored.
template <class List>
void release(List* list) {
    if (list == nullptr) return;
    delete[] list->items;
    delete list;
}

struct ReleaseList {
    template <class List>
    void operator()(List* list) const {
        release(list);
    }
};

/// A list with `count` new records.
template <class List>
std::unique_ptr<List, ReleaseList> newList(int count) {
    using Record = std::remove_pointer_t<decltype(List::items)>;
    std::unique_ptr<List, ReleaseList> list(new List);
    list->count = count;
    list->items = new Record[static_cast<std::size_t>(count)];
    return list;
}

/// All rows as a list; null when there is none.
template <class List, class Record>
List* listOrNull(dbaccess::ResultSet* set, SetValue<Record> setValue) {
    const RowsPtr rows(set);
    if (!rows || rows->rowsCount() < 1) return nullptr;
    auto list = newList<List>(rows->rowsCount());
    for (int i = 0; i < list->count; ++i) {
        rows->next();
        setValue(rows.get(), &list->items[i]);
    }
    return list.release();
}

/// All rows as a list; an empty one, with null `items`, when there is none. Should a row fail to
/// come, its record and those behind it stay as constructed, and `count` as it is.
template <class List, class Record>
List* listOrEmpty(dbaccess::ResultSet* set, SetValue<Record> setValue) {
    const RowsPtr rows(set);
    if (!rows) return nullptr;
    if (rows->rowsCount() == 0) return new List;
    auto list = newList<List>(rows->rowsCount());
    for (int i = 0; i < list->count && rows->next(); ++i)
        setValue(rows.get(), &list->items[i]);
    return list.release();
}

/// The first row as a record; a default one, not null, when there is none.
template <class Record>
Record* firstOrDefault(dbaccess::ResultSet* set, SetValue<Record> setValue) {
    const RowsPtr rows(set);
    if (!rows) return nullptr;
    std::unique_ptr<Record> record(new Record);
    if (rows->rowsCount() != 0) {
        rows->next();
        setValue(rows.get(), record.get());
    }
    return record.release();
}

/// The first row as a record; null when there is none.
template <class Record>
Record* firstOrNull(dbaccess::ResultSet* set, SetValue<Record> setValue) {
    RowsPtr rows(set);
    if (!rows || rows->rowsCount() < 1) return nullptr;
    return firstOrDefault<Record>(rows.release(), setValue);
}

/// Whether the query found anything; false when it failed.
inline bool hasRows(dbaccess::ResultSet* set) {
    const RowsPtr rows(set);
    return rows && rows->rowsCount() > 0;
}

}  // namespace dbservice::statement

#endif
