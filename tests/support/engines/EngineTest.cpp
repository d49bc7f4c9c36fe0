#include "tests/support/engines/EngineTest.h"

#include <filesystem>

#include "dbaccess/LastError.h"
#include "schema/Schema.h"
#include "tests/support/engines/TemporaryDirectory.h"

namespace {

using dbaccess::Engine;

const std::string& embeddedDirectory() {
    static const TemporaryDirectory directory;
    return directory.path();
}

}  // namespace

EngineTest::EngineTest() : dbName_(uniqueName()) {
    std::string options;
    if (GetParam() == Engine::Server) {
        at_ = testServer();
        options = " character set utf8mb4 collate " + at_.collation();
    } else {
        const std::string directory = embeddedDirectory() + "/" + dbName_;
        std::filesystem::create_directory(directory);
        at_.host = "sqlite:" + directory;
    }
    expectOk(newAccess()->Execute("", "create database " + dbName_ + options));
    access_ = newAccess();
    EXPECT_TRUE(access_->Initialize(1, 4, true, true)) << dbaccess::LastError().message;
}

EngineTest::~EngineTest() {
    access_.reset();
    if (GetParam() == Engine::Embedded) {
        std::error_code ignored;  // the directory around it is removed with the process
        std::filesystem::remove_all(embeddedDirectory() + "/" + dbName_, ignored);
        return;
    }
    for (const std::string& name : {dbName(), secondDbName()})
        expectOk(newAccess()->Execute("", "drop database if exists " + name));
}

std::unique_ptr<dbaccess::DataAccess> EngineTest::newAccess() const {
    return std::make_unique<dbaccess::DataAccess>(host(), port(), user(), password());
}

void EngineTest::createSchema() {
    expectOk(schema::Create(access(), dbName()));
}

void expectOk(std::int64_t result, const char* file, int line) {
    if (result >= 0) return;
    const dbaccess::Error& error = dbaccess::LastError();
    ADD_FAILURE_AT(file, line) << result << " (" << error.sqlState << "): " << error.message;
}

std::string query(dbaccess::DataAccess& access, const std::string& dbName, const std::string& text,
                  const std::string& column) {
    dbaccess::ResultSet* rows = access.Query(dbName, text);
    if (rows == nullptr) return std::to_string(-dbaccess::LastError().number);
    std::string result;
    while (rows->next()) {
        std::string value = "NULL";
        rows->getString(column, value);
        result += (result.empty() ? "" : "|") + value;
    }
    dbaccess::DataAccess::ReleaseResulitSet(rows);
    return result;
}

void dbaccess::PrintTo(Engine engine, std::ostream* stream) {
    *stream << (engine == Engine::Server ? "Server" : "Embedded");
}
