#include "tests/support/engines/TestServer.h"

#include <cstdio>
#include <cstdlib>
#include <random>

#include "tests/support/engines/EngineTest.h"
#include "tests/support/engines/PrivateServer.h"

namespace {

std::string setting(const char* name, const char* otherwise) {
    const char* value = std::getenv(name);
    return value == nullptr ? otherwise : value;
}

TestServer findOrStart() {
    TestServer server{setting("TEST_SERVER", ""), 3306, setting("TEST_SERVER_USER", "root"),
                      setting("TEST_SERVER_PASSWORD", "")};
    if (server.host.empty()) {
        static PrivateServer own;
        server = {PrivateServer::host(), own.port(), PrivateServer::user(), own.password(), true};
    }
    dbaccess::DataAccess access(server.host, server.port, server.user, server.password);
    const std::string version = query(access, "", "select version() as v");
    if (version[0] == '-') {
        std::fprintf(stderr, "%s: %s\n", server.host.c_str(),
                     dbaccess::LastError().message.c_str());
        std::exit(EXIT_FAILURE);
    }
    server.isMariaDb = version.find("MariaDB") != std::string::npos;
    return server;
}

}  // namespace

const TestServer& testServer() {
    static const TestServer server = findOrStart();
    return server;
}

std::string uniqueName() {
    static const unsigned int run = std::random_device()();
    static int number = 0;
    return "dbservice_test_" + std::to_string(run) + "_" + std::to_string(++number);
}
