#include "dbaccess/pool/HostText.h"

#include <gtest/gtest.h>

namespace dbaccess {
namespace {

std::string servers(const std::string& text, unsigned int port = 3306) {
    const HostText host = parseHost(text, port);
    if (host.error) return std::to_string(host.error.number);
    if (host.engine == Engine::Embedded) return "embedded " + host.directory;
    std::string result;
    for (const ServerAddress& server : host.servers) {
        result += result.empty() ? "" : " ";
        result +=
            server.socket.empty() ? server.name + "|" + std::to_string(server.port) : server.socket;
    }
    return result;
}

TEST(HostText, Forms) {
    EXPECT_EQ("db1|3306", servers("db1", 0));
    const std::string list = " db1, 10.0.0.5:3307 ,/run/db.sock,::1,[fe80::2]:3310,[fe80::2]";
    EXPECT_EQ("db1|77 10.0.0.5|3307 /run/db.sock ::1|77 fe80::2|3310 fe80::2|77",
              servers(list, 77));
    EXPECT_EQ("embedded data/site, one", servers("sqlite:data/site, one"));
}

TEST(HostText, IllFormedTextsAreRefused) {
    // The client library would take some of these for settings of its own.
    for (const char* text :
         {"",          " ",       "db1,",  ",db1",  "db1,,db2",   "db1:",   "db1:0",
          "db1:65536", "db1:33x", "[::1",  "[]:1",  "db1;port=1", "a=b",    "unix://x",
          "tcp://db1", "db 1",    "db1\n", "u@db1", "a\\b",       "sqlite:"}) {
        EXPECT_EQ("2005", servers(text)) << text;
    }
    EXPECT_EQ("2005", servers("db1", 65536));
    EXPECT_EQ("2005", servers(std::string("db1\0x", 5)));
}

}  // namespace
}  // namespace dbaccess
