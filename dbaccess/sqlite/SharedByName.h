#ifndef DBSERVICE_DBACCESS_SQLITE_SHAREDBYNAME_H
#define DBSERVICE_DBACCESS_SQLITE_SHAREDBYNAME_H

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace dbaccess::sqlite {

/// The process's one thing of this kind and name, made anew when nobody has it any more.
/// Threads: any number at once.
template <class Thing>
std::shared_ptr<Thing> sharedByName(const std::string& name) {
    static std::mutex mutex;  // guards `things`
    static std::map<std::string, std::weak_ptr<Thing>> things;
    const std::lock_guard<std::mutex> guard(mutex);
    std::weak_ptr<Thing>& known = things[name];
    std::shared_ptr<Thing> thing = known.lock();
    if (!thing) known = thing = std::make_shared<Thing>();
    return thing;
}

}  // namespace dbaccess::sqlite

#endif
