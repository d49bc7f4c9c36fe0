#ifndef DBSERVICE_CONVENIENCE_HELD_H
#define DBSERVICE_CONVENIENCE_HELD_H

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "dbaccess/LastError.h"
#include "dbaccess/ResultSet.h"
#include "dbservice/DBService.h"
#include "dbservice/convenience/Results.h"

// What queries give, released by itself with the operation that belongs to it. Moved, not copied.
// Threads: as for the records, one at a time when it is changed.

namespace dbservice {

/// @cond internal

/// Whether an object is there to release what it gave.
inline bool isThere(const DBService* service) {
    return service == DBService::GetDBServiceObject();
}

/// That of DAOs is for who made them to know.
inline bool isThere(const void* /*dao*/) {
    return true;
}

/// @endcond

/// One record or list that an object gave, released by that object's operation `release`.
///
/// It must go before `DBService::Cleanup`, or before the DAO that gave it. Behind `Cleanup` a debug
/// build (without NDEBUG) stops and says so; another one leaves the memory to the process's end.
template <class Given, class Owner, void (Owner::*release)(Given*)>
class Held {
public:
    /// Takes over what a query of the owner gave just now; null when it found nothing or failed.
    Held(Owner& owner, Given* given)
        : result_(given == nullptr ? -static_cast<std::int64_t>(dbaccess::LastError().number) : 0),
          given_(given, Release{&owner}) {}

    /// Whether the query succeeded, whatever it found.
    const Result& result() const { return result_; }

    /// Whether there is anything.
    explicit operator bool() const { return given_ != nullptr; }
    /// Null when there is nothing.
    const Given* get() const { return given_.get(); }
    const Given& operator*() const { return *given_; }        ///< of one that is there
    const Given* operator->() const { return given_.get(); }  ///< of one that is there

private:
    struct Release {
        Owner* owner;
        void operator()(Given* given) const {
            const bool ownerIsThere = isThere(owner);
            assert(ownerIsThere && "a list or record is released behind DBService::Cleanup");
            if (ownerIsThere) (owner->*release)(given);
        }
    };

    Result result_;
    std::unique_ptr<Given, Release> given_;
};

/// The records of a list that an object gave, to be iterated:
///
///     for (const T_Device& device : devices(service)) ...
///
/// Empty when the query found nothing and when it failed: `result` tells which, or `check(devices(
/// service))` throws. Lifetime as for `Held`.
template <class List, class Owner, void (Owner::*release)(List*)>
class HeldList {
public:
    using value_type = typename std::remove_pointer<decltype(List::items)>::type;  ///< a record
    using const_iterator = const value_type*;  ///< points to one

    /// Takes over what a query of the owner gave just now; null when it found nothing or failed.
    HeldList(Owner& owner, List* list) : list_(owner, list) {}

    /// Whether the query succeeded, whatever it found.
    const Result& result() const { return list_.result(); }

    /// @{
    /// The records, as containers have them.
    bool empty() const { return size() == 0; }
    std::size_t size() const { return list_ ? static_cast<std::size_t>(list_->count) : 0; }
    const_iterator begin() const { return list_ ? list_->items : nullptr; }
    const_iterator end() const { return begin() + size(); }
    /// @}
    /// The record at a place below `size`.
    const value_type& operator[](std::size_t i) const { return begin()[i]; }
    /// The first record, of a list that is not empty.
    const value_type& front() const { return *begin(); }

private:
    Held<List, Owner, release> list_;
};

/// The record, unless the query failed: DatabaseError is thrown then.
template <class Given, class Owner, void (Owner::*release)(Given*)>
Held<Given, Owner, release> check(Held<Given, Owner, release> held,
                                  const std::string& doing = std::string()) {
    check(held.result(), doing);
    return held;
}

/// The list, unless the query failed: DatabaseError is thrown then.
template <class List, class Owner, void (Owner::*release)(List*)>
HeldList<List, Owner, release> check(HeldList<List, Owner, release> list,
                                     const std::string& doing = std::string()) {
    check(list.result(), doing);
    return list;
}

/// Releases the rows of a raw query.
struct ReleaseRows {
    /// Null is ignored.
    void operator()(dbaccess::ResultSet* rows) const { DBService::ReleaseResulitSet(rows); }
};
/// The rows of a raw query; null when it failed. May outlive the service.
using Rows = std::unique_ptr<dbaccess::ResultSet, ReleaseRows>;

/// The rows that a statement of one's own gives, see `DBService::Query`.
inline Rows rows(DBService& service, std::string statement) {
    return Rows(service.Query(std::move(statement)));
}

/// The rows, unless the query failed: DatabaseError is thrown then.
inline Rows check(Rows rows, const std::string& doing = std::string()) {
    if (!rows) check(Result::lastFailure(), doing);
    return rows;
}

}  // namespace dbservice

#endif
