#ifndef DBSERVICE_ACCOUNTS_ACCOUNTRECORDS_H
#define DBSERVICE_ACCOUNTS_ACCOUNTRECORDS_H

#include <string>

namespace dbservice {

/// One recording server.
struct T_ServerInfo {
    std::string Guid;  ///< the key, made by the caller (`getGuid`)
    std::string DisplayName;
    std::string PrivateAddress;
    int PrivatePort = 0;
    int EnabledPublic = 0;  ///< 1: reachable at the public address too
    std::string PublicAddress;
    int PublicPort = 0;
    int MaxClient = 0;  ///< clients at a time
};

/// Unlike most lists this one has its pointer first: callers are compiled against it.
struct T_ServerInfoList {
    T_ServerInfo* items = nullptr;
    int count = 0;
};

}  // namespace dbservice

#endif
