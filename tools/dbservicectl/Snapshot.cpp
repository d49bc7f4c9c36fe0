#include "tools/dbservicectl/Snapshot.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <algorithm>
#include <string>
#include <utility>

#include "dbaccess/mariadb/MariaDbConnector.h"
#include "dbaccess/pool/HostText.h"
#include "dbaccess/settings/Settings.h"
#include "tools/dbservicectl/Inserts.h"
#include "tools/dbservicectl/Interrupt.h"
#include "tools/dbservicectl/Progress.h"
#include "tools/dbservicectl/Rows.h"

namespace dbservicectl {
namespace {

constexpr const char* kHowFar = "while the database was read";

std::string selectOf(const schema::Table& table) {
    std::string names;
    for (const schema::Column& column : schema::columnsOf(table))
        names += (names.empty() ? "" : ",") + column.name;
    return "select " + names + " from " + table.name;
}

/// A transaction that sees all tables as they are when it first reads.
class ServerSnapshot final : public Snapshot {
public:
    ServerSnapshot(const Target& target, const dbaccess::HostText& host) : dbName_(target.dbName) {
        dbaccess::Error error;
        const dbaccess::Settings settings = dbaccess::readSettings("", error);
        if (error) throw failureOf(error, "reading the settings");
        connector_ =
            dbaccess::mariadb::makeConnector(host.servers, target.user, target.password, settings);
        connection_ = connector_->connect(dbaccess::TimePoint::max(), error);
        if (!connection_) throw failureOf(error, "connecting to " + target.host);
        connection_->endBy(dbaccess::TimePoint::max());  // not with the time it had to connect
        run("SET SESSION TRANSACTION ISOLATION LEVEL REPEATABLE READ");
        const dbaccess::Outcome begun = connection_->begin(dbName_);
        if (begun.error) throw failureOf(begun.error, "reading database " + dbName_);
    }

    std::uint64_t count(const schema::Table& table) override {
        const dbaccess::Outcome outcome = connection_->run(
            dbName_, dbaccess::Statement("select count(*) as n from " + std::string(table.name)));
        return outcome.rows && outcome.rows->next() ? outcome.rows->getUInt64("n") : 0;
    }

    std::uint64_t lastSerial() override {
        const dbaccess::Outcome outcome = run("SHOW CREATE TABLE alarminfo");
        std::string text;
        if (outcome.rows && outcome.rows->next()) outcome.rows->getString("Create Table", text);
        const std::string option = "AUTO_INCREMENT=";  // the next one
        const auto found = text.find(option, text.rfind('\n'));
        return found == std::string::npos ? 0 : std::stoull(text.substr(found + option.size())) - 1;
    }

    void forEachRow(const schema::Table& table, const Take& take) override {
        const std::vector<schema::Column> columns = schema::columnsOf(table);
        const std::string key = table.primaryKey;
        const auto keyColumn =
            std::find_if(columns.begin(), columns.end(),
                         [&](const schema::Column& column) { return column.name == key; });
        const auto keyAt = static_cast<std::size_t>(keyColumn - columns.begin());
        std::string after;
        std::vector<Cell> row(columns.size());
        for (std::size_t limit = kFirst;;) {
            const dbaccess::Outcome outcome =
                run(fmt::format("{}{} order by {} limit {}", selectOf(table), after, key, limit));
            std::size_t bytes = 0;
            std::size_t rows = 0;
            for (; outcome.rows && outcome.rows->next(); ++rows) {
                for (std::size_t i = 0; i < columns.size(); ++i) {
                    std::string value;
                    const bool there = outcome.rows->getString(columns[i].name, value);
                    bytes += value.size() + 1;
                    row[i] = there ? Cell(std::move(value)) : Cell();
                }
                take(row);
            }
            throwIfInterrupted(kHowFar);
            if (rows < limit) return;
            after = " where " + key + ">" + literalOf(keyColumn->type, row[keyAt]);
            limit = std::clamp(kChunk * rows / bytes, kFewest, kMost);
        }
    }

private:
    static constexpr std::size_t kFirst = 100;  // rows that are asked for at once
    static constexpr std::size_t kFewest = 10;
    static constexpr std::size_t kMost = 10000;
    static constexpr std::size_t kChunk = std::size_t{4} << 20;  // about so many bytes

    dbaccess::Outcome run(const std::string& statement) {
        dbaccess::Outcome outcome = connection_->run(dbName_, dbaccess::Statement(statement));
        if (outcome.error)
            throw failureOf(outcome.error, "reading database " + dbName_, Message::LeftOut);
        return outcome;
    }

    std::string dbName_;
    std::unique_ptr<dbaccess::Connector> connector_;
    std::unique_ptr<dbaccess::Connection> connection_;
};

struct Close {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    void operator()(sqlite3_backup* backup) const { sqlite3_backup_finish(backup); }
};

/// A copy of the file in a temporary database of SQLite's own, so that the service's checkpoints
/// need not wait until all rows are read.
class EmbeddedSnapshot final : public Snapshot {
public:
    EmbeddedSnapshot(const Target& target, const std::string& directory) {
        // Tells what is wrong as everywhere else, and recovers the file after a crash.
        const std::unique_ptr<dbaccess::DataAccess> access = connect(target);
        valueOf(*access, target.dbName, "1");
        copyOf(directory + "/" + target.dbName + ".db");
    }

    std::uint64_t count(const schema::Table& table) override {
        return number(std::string("select count(*) from ") + table.name);
    }

    std::uint64_t lastSerial() override {
        // Without a table that numbers its rows for good there is not even this one.
        if (number("select count(*) from sqlite_schema where name='sqlite_sequence'") == 0)
            return 0;
        return number("select seq from sqlite_sequence where name='alarminfo'");
    }

    void forEachRow(const schema::Table& table, const Take& take) override {
        const auto statement = prepare(selectOf(table) + " order by " + table.primaryKey);
        std::vector<Cell> row(static_cast<std::size_t>(sqlite3_column_count(statement.get())));
        int code = SQLITE_OK;
        for (std::uint64_t rows = 0; (code = sqlite3_step(statement.get())) == SQLITE_ROW;) {
            for (std::size_t i = 0; i < row.size(); ++i)
                row[i] = cellOf(statement.get(), static_cast<int>(i));
            take(row);
            if (++rows % kBetweenLooks == 0) throwIfInterrupted(kHowFar);
        }
        if (code != SQLITE_DONE) fail("reading the copy of the database", code);
    }

private:
    static constexpr std::uint64_t kBetweenLooks = 1000;
    static constexpr int kPages = 1000;  // that are copied at once

    static Cell cellOf(sqlite3_stmt* statement, int column) {
        if (sqlite3_column_type(statement, column) == SQLITE_NULL) return {};
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
        if (text == nullptr) throw std::bad_alloc();
        return std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(statement, column)));
    }

    void copyOf(const std::string& path) {
        sqlite3* opened = nullptr;
        int code = sqlite3_open_v2(path.c_str(), &opened,
                                   SQLITE_OPEN_READONLY | SQLITE_OPEN_EXRESCODE, nullptr);
        const std::unique_ptr<sqlite3, Close> file(opened);
        if (code != SQLITE_OK) fail("opening " + path, code);
        // Checkpoints are left to the library, which alone knows when one is safe.
        sqlite3_db_config(file.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
        sqlite3_busy_timeout(file.get(), 10000);
        // In a transaction of its own: without, each commit of others would start the copy anew.
        code = sqlite3_exec(file.get(), "BEGIN;SELECT 1 FROM sqlite_schema LIMIT 1", nullptr,
                            nullptr, nullptr);
        if (code != SQLITE_OK) fail("reading " + path, code);

        code = sqlite3_open_v2("", &opened,
                               SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_EXRESCODE,
                               nullptr);
        copy_.reset(opened);
        if (code != SQLITE_OK) fail("making a temporary file", code);
        const std::unique_ptr<sqlite3_backup, Close> backup(
            sqlite3_backup_init(copy_.get(), "main", file.get(), "main"));
        if (!backup) fail("copying " + path, sqlite3_extended_errcode(copy_.get()));
        Progress progress("Copying the file, pages");
        while ((code = sqlite3_backup_step(backup.get(), kPages)) == SQLITE_OK) {
            progress.at(static_cast<std::uint64_t>(sqlite3_backup_pagecount(backup.get()) -
                                                   sqlite3_backup_remaining(backup.get())));
            throwIfInterrupted(kHowFar);
        }
        if (code != SQLITE_DONE) fail("copying " + path + " to a temporary file", code);
    }

    /// The one value of a query; 0 without a row.
    std::uint64_t number(const std::string& text) {
        const auto statement = prepare(text);
        return sqlite3_step(statement.get()) == SQLITE_ROW
                   ? static_cast<std::uint64_t>(sqlite3_column_int64(statement.get(), 0))
                   : 0;
    }

    std::unique_ptr<sqlite3_stmt, Close> prepare(const std::string& text) {
        sqlite3_stmt* statement = nullptr;
        const int code = sqlite3_prepare_v2(copy_.get(), text.c_str(), -1, &statement, nullptr);
        if (code == SQLITE_OK) return std::unique_ptr<sqlite3_stmt, Close>(statement);
        throw Failure(fmt::format("reading the database: {}", sqlite3_errmsg(copy_.get())),
                      "The tables are not as expected: 'dbservicectl schema check' tells how");
    }

    [[noreturn]] static void fail(const std::string& doing, int code) {
        const bool full = (code & 0xFF) == SQLITE_FULL;
        throw Failure(doing + ": " + sqlite3_errstr(code),
                      full ? "The folder for temporary files must have room for the whole "
                             "database: TMPDIR names another one"
                           : "");
    }

    std::unique_ptr<sqlite3, Close> copy_;
};

}  // namespace

std::unique_ptr<Snapshot> Snapshot::of(const Target& target) {
    const dbaccess::HostText host = dbaccess::parseHost(target.host, target.port);
    if (host.error) throw failureOf(host.error, "connecting to " + target.host);
    if (host.engine == dbaccess::Engine::Embedded)
        return std::make_unique<EmbeddedSnapshot>(target, host.directory);
    return std::make_unique<ServerSnapshot>(target, host);
}

}  // namespace dbservicectl
