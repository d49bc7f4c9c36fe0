#include "tests/support/engines/EngineTest.h"

#include <filesystem>

#include "dbaccess/LastError.h"
#include "schema/Schema.h"
#include "tests/support/engines/PrivateServer.h"
#include "tests/support/engines/TemporaryDirectory.h"

namespace {

using dbaccess::Engine;

PrivateServer& server() {
    static PrivateServer server;
    return server;
}

const std::string& embeddedDirectory() {
    static const TemporaryDirectory directory;
    return directory.path();
}

std::string nextName() {
    static int number = 0;
    return "vms" + std::to_string(++number);
}

}  // namespace

EngineTest::EngineTest() : dbName_(nextName()) {
    if (GetParam() == Engine::Server) {
        host_ = PrivateServer::host();
        port_ = server().port();
        user_ = PrivateServer::user();
        password_ = server().password();
        server().execute("CREATE DATABASE " + dbName_ +
                         " CHARACTER SET utf8mb4 COLLATE utf8mb4_nopad_bin");
    } else {
        const std::string directory = embeddedDirectory() + "/" + dbName_;
        std::filesystem::create_directory(directory);
        host_ = "sqlite:" + directory;
        expectOk(newAccess()->Execute("", "create database " + dbName_));
    }
    access_ = newAccess();
    EXPECT_TRUE(access_->Initialize(1, 4, true, true)) << dbaccess::LastError().message;
}

EngineTest::~EngineTest() {
    access_.reset();
    try {
        if (GetParam() == Engine::Server) {
            server().execute("DROP DATABASE " + dbName_);
        } else {
            std::filesystem::remove_all(embeddedDirectory() + "/" + dbName_);
        }
    } catch (const std::exception& exception) {
        ADD_FAILURE() << exception.what();
    }
}

std::unique_ptr<dbaccess::DataAccess> EngineTest::newAccess() const {
    return std::make_unique<dbaccess::DataAccess>(host_, port_, user_, password_);
}

void EngineTest::createSchema() {
    expectOk(schema::Create(access(), dbName()));
}

void expectOk(std::int64_t result, const char* file, int line) {
    if (result >= 0) return;
    const dbaccess::Error& error = dbaccess::LastError();
    ADD_FAILURE_AT(file, line) << result << " (" << error.sqlState << "): " << error.message;
}

std::string query(dbaccess::DataAccess& access, const std::string& dbName,
                  const std::string& text) {
    dbaccess::ResultSet* rows = access.Query(dbName, text);
    if (rows == nullptr) return std::to_string(-dbaccess::LastError().number);
    std::string result;
    while (rows->next()) {
        std::string value = "NULL";
        rows->getString("v", value);
        result += (result.empty() ? "" : "|") + value;
    }
    dbaccess::DataAccess::ReleaseResulitSet(rows);
    return result;
}

void dbaccess::PrintTo(Engine engine, std::ostream* stream) {
    *stream << (engine == Engine::Server ? "Server" : "Embedded");
}
