#ifndef DBSERVICE_DBACCESS_SQLITE_SQLITECONNECTION_H
#define DBSERVICE_DBACCESS_SQLITE_SQLITECONNECTION_H

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "dbaccess/pool/Connection.h"
#include "dbaccess/sqlite/DatabaseFile.h"

namespace dbaccess::sqlite {

/// The files of one directory, each opened when it is first asked for. Always alive and usable: a
/// file that is lost, replaced or back again is that of the next statement's answer.
class SqliteConnection final : public Connection {
public:
    SqliteConnection(std::string directory, const Timeouts& timeouts);

    bool alive() override { return true; }
    bool usable() const override { return true; }
    Outcome run(const std::string& dbName, const Statement& statement) override;
    Outcome begin(const std::string& dbName) override;
    Outcome commit() override;
    void rollback() override;

private:
    DatabaseFile* databaseFile(const std::string& dbName, Error& error);
    Error pathOf(const std::string& dbName, std::string& path) const;
    std::string fileOf(const std::string& dbName) const;
    std::optional<Outcome> runDatabaseStatement(const std::string& text) const;
    Outcome createDatabase(const std::string& dbName, bool mayExist) const;

    const std::string directory_;
    const Timeouts timeouts_;
    std::map<std::string, std::unique_ptr<DatabaseFile>> files_;
    DatabaseFile* transaction_ = nullptr;
};

}  // namespace dbaccess::sqlite

#endif
