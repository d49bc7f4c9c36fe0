#ifndef DBSERVICECTL_RIGHTS_H
#define DBSERVICECTL_RIGHTS_H

#include <string>
#include <vector>

namespace dbservicectl {

/// What an account of a server is for.
struct AccountKind {
    std::string name;                        ///< as "running"
    std::string purpose;                     ///< one line for people
    std::vector<std::string> rights;         ///< on the whole database
    std::vector<std::string> versionRights;  ///< more on the table of versions alone
};

/// All of them, each with no right that its work can do without.
const std::vector<AccountKind>& accountKinds();

/// The one that the service works with.
const AccountKind& runningAccount();

/// The statements that give an account its rights.
/// @param account  USER@HOST; USER alone is one on any host.
std::vector<std::string> grantsFor(const AccountKind& kind, const std::string& account,
                                   const std::string& dbName);

}  // namespace dbservicectl

#endif
