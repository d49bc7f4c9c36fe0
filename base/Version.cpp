#include "base/Version.h"

namespace dbservice {

const char* Version() {
    return DBSERVICE_VERSION;
}

}  // namespace dbservice
