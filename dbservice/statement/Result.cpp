#include "dbservice/statement/Result.h"

#include "dbaccess/LastError.h"

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
    return notSent("nothing was sent: the service is not connected, or lacks what this is for");
}

int nothingToDo() {
    dbaccess::SetLastError({});
    return 0;
}

}  // namespace dbservice::statement
