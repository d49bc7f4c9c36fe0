#ifndef TESTS_SUPPORT_ENGINES_ENGINETEST_H
#define TESTS_SUPPORT_ENGINES_ENGINETEST_H

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>

#include "dbaccess/DataAccess.h"
#include "tests/support/engines/TestServer.h"

namespace dbaccess {

/// How test names and failures show the parameter.
void PrintTo(Engine engine, std::ostream* stream);

}  // namespace dbaccess

/// Fails the test, and says why, when an operation of the calling thread answered with an error.
void expectOk(std::int64_t result, const char* file = __builtin_FILE(),
              int line = __builtin_LINE());

/// The column of all rows, joined by "|", with NULL as "NULL"; the negated error number of a failed
/// query.
std::string query(dbaccess::DataAccess& access, const std::string& dbName, const std::string& text,
                  const std::string& column = "v");

/// One fresh database for each test, on the engine that is the test's parameter. The server is
/// `testServer()`. A suite is put on both engines by
///
///     INSTANTIATE_TEST_SUITE_P(Engines, PoolTest, kEngines, engineName);
class EngineTest : public ::testing::TestWithParam<dbaccess::Engine> {
protected:
    EngineTest();
    EngineTest(const EngineTest&) = delete;
    EngineTest& operator=(const EngineTest&) = delete;
    ~EngineTest() override;

    /// Initialised with one connection, four at most, reconnecting and waiting.
    dbaccess::DataAccess& access() { return *access_; }
    /// Another one on the same engine, not yet initialised.
    std::unique_ptr<dbaccess::DataAccess> newAccess() const;

    /// Makes all tables in the database.
    void createSchema();

    int execute(const std::string& text) { return access().Execute(dbName(), text); }
    std::string query(const std::string& text) { return ::query(access(), dbName(), text); }

    /// The database. On the server its texts are full Unicode, compared byte by byte.
    const std::string& dbName() const { return dbName_; }
    /// Another one, which the test may make. It is dropped as well.
    std::string secondDbName() const { return dbName_ + "_two"; }
    const std::string& host() const { return at_.host; }
    unsigned int port() const { return at_.port; }
    const std::string& user() const { return at_.user; }
    const std::string& password() const { return at_.password; }

private:
    std::string dbName_;
    TestServer at_;
    std::unique_ptr<dbaccess::DataAccess> access_;
};

inline const auto kEngines =
    ::testing::Values(dbaccess::Engine::Embedded, dbaccess::Engine::Server);

inline const ::testing::PrintToStringParamName engineName;

#endif
