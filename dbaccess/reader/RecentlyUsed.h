#ifndef DBSERVICE_DBACCESS_READER_RECENTLYUSED_H
#define DBSERVICE_DBACCESS_READER_RECENTLYUSED_H

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace dbaccess {

/// Things by name, of which the least recently used one goes when there are too many.
template <class Thing>
class RecentlyUsed {
public:
    explicit RecentlyUsed(std::size_t most) : most_(most) {}

    /// The thing of this name, a new one when there is none. It stays at least until the next call.
    Thing& operator[](const std::string& name) {
        const auto known = places_.find(name);
        if (known != places_.end()) {
            things_.splice(things_.begin(), things_, known->second);
            return things_.front().second;
        }
        if (things_.size() == most_) {
            places_.erase(things_.back().first);
            things_.pop_back();
        }
        Things fresh;  // joins the others when nothing more can fail
        fresh.emplace_front(name, Thing());
        places_.emplace(fresh.front().first, fresh.begin());
        things_.splice(things_.begin(), fresh);
        return things_.front().second;
    }

    void clear() {
        places_.clear();
        things_.clear();
    }

private:
    using Things = std::list<std::pair<const std::string, Thing>>;  // the last one used first

    const std::size_t most_;
    Things things_;
    std::unordered_map<std::string_view, typename Things::iterator> places_;
};

}  // namespace dbaccess

#endif
