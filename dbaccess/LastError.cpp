#include "dbaccess/LastError.h"

namespace dbaccess {
namespace {

Error& lastError() {
    thread_local Error error;
    return error;
}

}  // namespace

const Error& LastError() noexcept {
    return lastError();
}

void SetLastError(const Error& error) {
    Error& last = lastError();
    if (error || last) last = error;  // most often there is none
}

}  // namespace dbaccess
