#ifndef DBSERVICE_DBACCESS_SQLITE_SHAREDBYNAME_H
#define DBSERVICE_DBACCESS_SQLITE_SHAREDBYNAME_H

#include <map>
#include <mutex>
#include <string>
#include <utility>

namespace dbaccess::sqlite {

/// The process's one thing of this kind and name: made for the first who asks for it, and gone with
/// the last before anybody is given another one of its name.
/// Threads: the members of one object by one thread at a time, the thing itself as its kind has it.
template <class Thing>
class SharedByName {
public:
    explicit SharedByName(std::string name) : name_(std::move(name)) {
        const std::lock_guard<std::mutex> guard(all().mutex);
        Entry& entry = all().entries[name_];
        ++entry.users;
        thing_ = &entry.thing;
    }
    SharedByName(const SharedByName&) = delete;
    SharedByName& operator=(const SharedByName&) = delete;
    ~SharedByName() {
        const std::lock_guard<std::mutex> guard(all().mutex);
        const auto entry = all().entries.find(name_);
        if (--entry->second.users == 0) all().entries.erase(entry);
    }

    Thing& operator*() const { return *thing_; }
    Thing* operator->() const { return thing_; }

private:
    struct Entry {
        Thing thing;
        unsigned int users = 0;
    };
    struct All {
        std::mutex mutex;  // guards `entries`
        std::map<std::string, Entry> entries;
    };

    /// Never destroyed, so that there is no wrong order among the destructors of a program's end.
    static All& all() {
        static All& all = *new All;
        return all;
    }

    const std::string name_;
    Thing* thing_ = nullptr;
};

}  // namespace dbaccess::sqlite

#endif
