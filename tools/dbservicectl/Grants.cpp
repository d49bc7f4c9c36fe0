#include <fmt/format.h>

#include "tools/dbservicectl/Commands.h"
#include "tools/dbservicectl/Rights.h"

namespace dbservicectl {

void printGrants(const std::string& dbName, const std::string& kind, const std::string& account) {
    if (dbName.empty())
        throw Failure("no database is named", "Give --database NAME", Exit::WrongUsage);
    for (const AccountKind& each : accountKinds()) {
        if (!kind.empty() && kind != each.name) continue;
        fmt::print("-- {}: {}\n", each.name, each.purpose);
        for (const std::string& statement :
             grantsFor(each, account.empty() ? "vms_" + each.name : account, dbName))
            fmt::print("{};\n", statement);
    }
    note("The accounts must be there: CREATE USER NAME IDENTIFIED BY 'PASSWORD' REQUIRE SSL");
}

}  // namespace dbservicectl
