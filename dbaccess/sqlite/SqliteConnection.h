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
/// file that is lost, replaced or back again is that of the next statement's answer. A process that
/// was forked off one with open files is refused everything, whoever made the connection.
class SqliteConnection final : public Connection {
public:
    SqliteConnection(std::string directory, const Settings& settings);

    bool alive() override { return true; }
    bool usable() const override { return true; }
    Outcome run(const std::string& dbName, const Statement& statement) override;
    Outcome begin(const std::string& dbName) override;
    Outcome commit() override;
    void rollback() override;

private:
    /// In a forked process a file is left as it is: it is the parent's.
    struct CloseUnlessInherited {
        void operator()(DatabaseFile* file) const;
    };
    using FilePtr = std::unique_ptr<DatabaseFile, CloseUnlessInherited>;

    void closeIfDue(const DatabaseFile* file);
    DatabaseFile* databaseFile(const std::string& dbName, Deadline& now, Error& error);
    Error pathOf(const std::string& dbName, std::string& path) const;
    std::string fileOf(const std::string& dbName) const;
    std::optional<Outcome> runDatabaseStatement(const std::string& text) const;
    Outcome createDatabase(const std::string& dbName, bool mayExist) const;

    const std::string directory_;
    const Settings settings_;
    std::map<std::string, FilePtr> files_;
    DatabaseFile* transaction_ = nullptr;
};

}  // namespace dbaccess::sqlite

#endif
