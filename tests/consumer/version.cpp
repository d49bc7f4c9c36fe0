// Ends well when the library that runs is of the version that this was compiled against.
#include <cstdio>
#include <string>

#include "base/Version.h"

int main() {
    const std::string numbers = std::to_string(DBSERVICE_VERSION_MAJOR) + '.' +
                                std::to_string(DBSERVICE_VERSION_MINOR) + '.' +
                                std::to_string(DBSERVICE_VERSION_PATCH);
    std::puts(dbservice::Version());
    return numbers == dbservice::Version() && numbers == DBSERVICE_VERSION ? 0 : 1;
}
