#include "dbaccess/settings/Settings.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "dbaccess/DataAccess.h"
#include "tests/support/engines/TemporaryDirectory.h"

namespace dbaccess {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class SettingsTest : public testing::Test {
protected:
    SettingsTest() { ::setenv("HOME", directory_.path().c_str(), 1); }

    std::string path(const std::string& name) const { return directory_.path() + "/" + name; }
    std::string write(const std::string& name, const std::string& text) const {
        std::ofstream(path(name)) << text;
        return path(name);
    }
    /// What is wrong, or "".
    std::string read(const std::string& options = "") {
        Error error;
        settings_ = readSettings(options, error);
        EXPECT_EQ(error.message.empty() ? 0 : 2034, error.number);
        return error.message;
    }
    std::string readNamed(const std::string& file) {
        ::setenv("DBSERVICE_OPTION_FILE", file.c_str(), 1);
        std::string complaint = read();
        ::unsetenv("DBSERVICE_OPTION_FILE");
        return complaint;
    }

    Settings settings_;

private:
    TemporaryDirectory directory_;
};

TEST_F(SettingsTest, ValuesAndTheirBounds) {
    const std::string time = "call-timeout=1h\nconnect-timeout=";
    EXPECT_EQ("", read(time + "5min"));
    EXPECT_EQ(std::chrono::minutes(5), settings_.timeouts.connect);
    EXPECT_EQ("", read(time + "100ms"));
    EXPECT_EQ(milliseconds(100), settings_.timeouts.connect);
    EXPECT_EQ("", read(time + "3"));
    EXPECT_EQ(seconds(3), settings_.timeouts.connect);
    for (const char* text : {"99ms", "6min", "", "1.5s", "-1", "5 s", "5S", "1h", "s",
                             "18446744073709551616", "9999999999999999min"})
        EXPECT_NE("", read(time + text)) << text;
    EXPECT_EQ("", read(" ssl_mode = VERIFY_CA # all\n\n;\nsocket='/a b#c' \nlargest_result=2G\n"
                       "ssl-ca=x\npassword=\"a\\\"b\\\\c\\td\"\nsynchronous=normal\r\n"));
    EXPECT_EQ(TlsMode::VerifyCa, settings_.tls.effectiveMode());
    EXPECT_EQ("/a b#c", settings_.localSocket);
    EXPECT_EQ("a\"b\\c\td", settings_.password);
    EXPECT_EQ(std::size_t{1} << 31U, settings_.largestResult);
    EXPECT_FALSE(settings_.syncCommits);
}

TEST_F(SettingsTest, ErrorsSayWhereAndNoValue) {
    // The client library takes some of these from its option files, and one of them crashes it.
    for (const std::string key :
         {"max-allowed-packet", "multi-statements", "init-command", "plugin-dir", "local-infile",
          "reconnect", "connection", "default-auth", "ssl-enforce", "answer-timeout", "port",
          "largest-result", "ssl-mode", "get-server-public-key", "synchronous", "tls-version",
          "lock-timeot"}) {
        EXPECT_THAT(
            read("lock-timeout=2s\n" + key + "=64hunter2"),
            AllOf(StartsWith("options, line 2: setting '" + key), Not(HasSubstr("hunter"))));
        write(".my.cnf", "[client]\n" + key + "=1hunter2\n[dbservice]\n");
        EXPECT_EQ("", read());  // not ours
    }
    for (const char* line : {"hunter2", "p@hunter2=1", "password='hunter2", "password='a'hunter2",
                             "=hunter2", "[dbservice]hunter2", "!include hunter2"})
        EXPECT_THAT(read(line), AllOf(StartsWith("options, line 1: "), Not(HasSubstr("hunter2"))));
    for (const char* text : {"answer-timeout=10s", "lock-timeout=30s", "call-timeout=5s",
                             "connect-timeout=1min", "ssl-cert=a", "ssl-mode=verify-ca"})
        EXPECT_THAT(read(text), StartsWith("settings: '")) << text;

    DataAccess access("sqlite:" + path(""), 0, "", "", "lock-timeot=1s");
    EXPECT_FALSE(access.Initialize(1, 1, true, true));
    EXPECT_EQ(2034, LastError().number);
    EXPECT_EQ(-2034, access.Execute("a", "select 1"));
}

TEST_F(SettingsTest, WhatComesLaterWins) {
    std::filesystem::create_directory(path("conf.d"));
    write("conf.d/b.cnf", "[dbservice]\nanswer-timeout=21s\nidle-timeout=21s");
    write("conf.d/a.cnf", "[dbservice]\nanswer-timeout=20s\nmax-age=20s");
    write("conf.d/c.txt", "[dbservice]\nnonsense");
    write("one.cnf", "[other]\nx\n[ dbservice ]\nlock-timeout=3s");
    write(".my.cnf",
          "quick\n!includedir conf.d\n[mysqld]\nlock-timeout=9s\n!include one.cnf\n"
          "!include absent.cnf\n[dbservice]\nidle-timeout=22s\n");
    ::setenv("DBSERVICE_MAX_AGE", "23s", 1);
    ::setenv("DBSERVICE_PORT", "tcp://10.0.0.1:3306", 1);  // as container platforms do
    EXPECT_EQ("", read());
    EXPECT_EQ(seconds(21), settings_.timeouts.answer);
    EXPECT_EQ(seconds(22), settings_.idle);
    EXPECT_EQ(seconds(3), settings_.timeouts.lock);
    EXPECT_EQ(seconds(23), settings_.age);
    EXPECT_EQ("", read("max-age=24s"));
    EXPECT_EQ(seconds(24), settings_.age);
    ::setenv("DBSERVICE_MAX_AG", "hunter2", 1);
    EXPECT_EQ("environment: setting 'max-ag': unknown", read());
    for (const char* name : {"DBSERVICE_MAX_AGE", "DBSERVICE_MAX_AG", "DBSERVICE_PORT"})
        ::unsetenv(name);
}

TEST_F(SettingsTest, NamedFilesMustBeThere) {
    write(".my.cnf", "[dbservice]\nnonsense");  // is not read then
    EXPECT_EQ("", readNamed(write("a.cnf", "[dbservice]\nmax-age=1h")));
    EXPECT_EQ(std::chrono::hours(1), settings_.age);
    EXPECT_THAT(readNamed(path("absent.cnf")), StartsWith(path("absent.cnf: ")));
    EXPECT_THAT(readNamed(path("")), HasSubstr("no regular file"));
    EXPECT_THAT(readNamed(write("b.cnf", "!includedir absent")), HasSubstr("absent: "));
    EXPECT_THAT(readNamed(write("c.cnf", "!include c.cnf")), HasSubstr("one another"));
    EXPECT_THAT(readNamed(write("d.cnf", "\n!includ a")), StartsWith(path("d.cnf, line 2: ")));
    for (const char* file : {"a.cnf", ".my.cnf"})
        std::filesystem::permissions(path(file), std::filesystem::perms::all);
    EXPECT_THAT(readNamed(path("a.cnf")), HasSubstr("everybody"));
    EXPECT_EQ("", read());
}

}  // namespace
}  // namespace dbaccess
