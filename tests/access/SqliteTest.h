#ifndef TESTS_ACCESS_SQLITETEST_H
#define TESTS_ACCESS_SQLITETEST_H

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "dbaccess/sqlite/SqliteConnector.h"

namespace dbaccess::sqlite {

/// A connection to an embedded database "site" of the test's own.
class SqliteTest : public testing::Test {
protected:
    SqliteTest() {
        std::string name = (std::filesystem::temp_directory_path() / "sqlite-XXXXXX").string();
        directory_ = std::string(::mkdtemp(name.data())) + "/data";
        std::filesystem::create_directory(directory_);
        connection_ = connect();
        EXPECT_EQ(1, run("create database site", ""));
    }
    ~SqliteTest() override {
        connection_.reset();
        std::filesystem::remove_all(std::filesystem::path(directory_).parent_path());
    }

    std::unique_ptr<Connection> connect(const Timeouts& timeouts = {}) const {
        Settings settings;
        settings.timeouts = timeouts;
        Error error;
        return makeConnector(directory_, settings)->connect(TimePoint::max(), error);
    }

    std::filesystem::path file(const std::string& name) const {
        return std::filesystem::path(directory_) / name;
    }

    /// Affected rows or the negated error number.
    static std::int64_t run(Connection& connection, const std::string& text,
                            const std::string& dbName = "site") {
        const Outcome outcome = connection.run(dbName, Statement(text));
        return outcome.error ? -outcome.error.number : outcome.affectedRows;
    }
    std::int64_t run(const std::string& text, const std::string& dbName = "site") {
        return run(*connection_, text, dbName);
    }

    /// The values of the column `v`, each behind a blank.
    std::string values(const std::string& query) {
        Outcome outcome = connection_->run("site", Statement(query));
        if (outcome.error) return std::to_string(-outcome.error.number);
        std::string all;
        for (std::string value; outcome.rows->next(); all += " " + value)
            outcome.rows->getString("v", value);
        return all;
    }

    std::string directory_;
    std::unique_ptr<Connection> connection_;
};

}  // namespace dbaccess::sqlite

#endif
