#include "tools/dbservicectl/Rights.h"

#include <fmt/format.h>

#include "schema/Version.h"

namespace dbservicectl {
namespace {

std::string quoted(const std::string& name) {
    std::string text = "`";
    for (const char c : name)
        text += c == '`' ? "``" : std::string(1, c);
    return text + "`";
}

/// A database's name where GRANT takes a pattern: for all its tables, not for one.
std::string quotedPattern(const std::string& dbName) {
    std::string text;
    for (const char c : dbName)
        text += (c == '_' || c == '%' || c == '\\' ? "\\" : "") + std::string(1, c);
    return quoted(text);
}

std::string quotedAccount(const std::string& account) {
    const std::size_t at = account.rfind('@');
    return quoted(account.substr(0, at)) + "@" +
           quoted(at == std::string::npos ? "%" : account.substr(at + 1));
}

}  // namespace

const std::vector<AccountKind>& accountKinds() {
    static const std::vector<AccountKind> kinds{
        {"running",
         "the service itself, and doctor, user, import, restore, prune",
         {"SELECT", "INSERT", "UPDATE", "DELETE"},
         {}},
        {"setup",
         "schema create and upgrade, at installation and after updates",
         {"SELECT", "CREATE", "INDEX"},
         // A right on a table that is not there yet is only given together with that to create it.
         {"CREATE", "INSERT", "DELETE"}},
        {"backup", "backup, export, and reading only", {"SELECT"}, {}},
    };
    return kinds;
}

const AccountKind& runningAccount() {
    return accountKinds().front();
}

std::vector<std::string> grantsFor(const AccountKind& kind, const std::string& account,
                                   const std::string& dbName) {
    std::vector<std::string> statements{fmt::format("GRANT {} ON {}.* TO {}",
                                                    fmt::join(kind.rights, ", "),
                                                    quotedPattern(dbName), quotedAccount(account))};
    if (!kind.versionRights.empty())
        statements.push_back(fmt::format(
            "GRANT {} ON {}.{} TO {}", fmt::join(kind.versionRights, ", "), quoted(dbName),
            quoted(schema::versionTable().name), quotedAccount(account)));
    return statements;
}

}  // namespace dbservicectl
