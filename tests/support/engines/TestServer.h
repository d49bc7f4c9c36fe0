#ifndef TESTS_SUPPORT_ENGINES_TESTSERVER_H
#define TESTS_SUPPORT_ENGINES_TESTSERVER_H

#include <string>

/// The server of a run: the one that TEST_SERVER in the environment names, as
/// `./test --server` does, else a private one.
struct TestServer {
    std::string host;  ///< for `DataAccess`, as the next three
    unsigned int port = 0;
    std::string user;
    std::string password;
    bool isPrivate = false;  ///< whether a test may change what concerns the whole server
    bool isMariaDb = false;  ///< otherwise MySQL

    /// Of texts that are full Unicode, compared byte by byte.
    std::string collation() const { return isMariaDb ? "utf8mb4_nopad_bin" : "utf8mb4_0900_bin"; }
};

/// The first call finds or starts it, and ends the program when it does not answer.
const TestServer& testServer();

/// For a database: none of this name was there before.
std::string uniqueName();

#endif
