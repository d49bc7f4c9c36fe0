#include "dbservice/statement/Result.h"

#include "dbaccess/LastError.h"
#include "dbservice/DBService.h"
#include "log/Log.h"
#include "log/RepeatLog.h"

namespace dbservice::statement {
namespace {

// What -1 negates; the numbers of databases begin at 1000.
constexpr int kNotSent = 1;

NotSent notSent(const char* why) {
    dbaccess::SetLastError({kNotSent, "HY000", why});
    return {};
}

}  // namespace

NotSent noRecords() {
    return notSent("nothing was sent: no records, or none that the operation is for");
}

NotSent noDao() {
    if (DBService::GetDBServiceObject() == nullptr) {
        // Not asserted: an object made by hand, which answers like this too, comes here as well.
        static RepeatLog& log = *new RepeatLog("DBService");  // for calls at the process's very end
        log.write(kQzLogError, "called behind Cleanup or before Initialize", "");
        return notSent("nothing was sent: called behind DBService::Cleanup or before Initialize");
    }
    return notSent("nothing was sent: an object made by hand, or an operation that has no DAO");
}

int nothingToDo() {
    dbaccess::SetLastError({});
    return 0;
}

}  // namespace dbservice::statement
