#include "dbaccess/sqlite/SqliteConnection.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/reader/TokenReader.h"
#include "dbaccess/sqlite/SqliteError.h"

namespace dbaccess::sqlite {
namespace {

// What servers take with their default max_allowed_packet of 16 MiB.
constexpr std::size_t kLargestStatement = 16777214;

/// A name becomes a file name, so nothing that could lead out of the directory may stand in it.
bool isDatabaseName(std::string_view name) {
    return !name.empty() && name.size() <= kLongestName &&
           std::all_of(name.begin(), name.end(), [](unsigned char byte) {
               return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
                      (byte >= '0' && byte <= '9') || byte == '_' || byte == '$' || byte == '-' ||
                      byte >= 0x80;
           });
}

Error wrongName(const std::string& name) {
    return makeError(kWrongDatabaseName, "Incorrect database name '" + name + "'");
}

Outcome refusedAfterFork() {
    return Outcome::failure(
        makeError(kNotSupported,
                  "this process was forked off one that had embedded databases open; it must run a "
                  "program by exec before it can use any"));
}

struct DatabaseToCreate {
    std::string name;
    bool mayExist = false;
};

/// Reads what follows CREATE DATABASE. The character set and collation behind the name are passed
/// over: the files are UTF-8.
/// @return  false for a syntax error.
bool readDatabaseToCreate(TokenReader& reader, DatabaseToCreate& database) {
    Token token = reader.next();
    if (isWord(token, "if")) {
        if (!isWord(reader.next(), "not") || !isWord(reader.next(), "exists")) return false;
        database.mayExist = true;
        token = reader.next();
    }
    if (token.kind != TokenKind::Word && token.kind != TokenKind::Name) return false;
    database.name = nameIn(token);
    token = reader.next();
    if (token.kind != TokenKind::Word && token.kind != TokenKind::End) return false;
    while (reader.read(token)) {
    }
    return token.kind == TokenKind::End;
}

}  // namespace

SqliteConnection::SqliteConnection(std::string directory, const Settings& settings)
    : directory_(std::move(directory)), settings_(settings) {}

void SqliteConnection::CloseUnlessInherited::operator()(DatabaseFile* file) const {
    if (!DatabaseFile::areInherited()) delete file;
}

Outcome SqliteConnection::run(const std::string& dbName, const Statement& statement) {
    if (DatabaseFile::areInherited()) return refusedAfterFork();
    if (statement.text.size() > kLargestStatement)
        return Outcome::failure(makeError(kPacketTooLarge, "the statement is longer than 16 MiB"));
    if (statement.kind == StatementKind::Session) return {};
    if (transaction_ != nullptr) return transaction_->run(statement, Clock::now());
    if (statement.kind == StatementKind::Definition) {
        if (std::optional<Outcome> outcome = runDatabaseStatement(statement.text))
            return std::move(*outcome);
    }
    Error error;
    Deadline now = Clock::now();
    DatabaseFile* const file = databaseFile(dbName, now, error);
    if (file == nullptr) return Outcome::failure(error);
    Outcome outcome = file->run(statement, now);
    closeIfDue(file);
    return outcome;
}

Outcome SqliteConnection::begin(const std::string& dbName) {
    if (DatabaseFile::areInherited()) return refusedAfterFork();
    rollback();
    Error error;
    Deadline now = Clock::now();
    DatabaseFile* const file = databaseFile(dbName, now, error);
    if (file == nullptr) return Outcome::failure(error);
    Outcome outcome = file->begin();
    if (!outcome.error) {
        transaction_ = file;
    } else {
        closeIfDue(file);
    }
    return outcome;
}

Outcome SqliteConnection::commit() {
    if (DatabaseFile::areInherited()) return refusedAfterFork();
    if (transaction_ == nullptr)
        return Outcome::failure(makeError(kNotSupported, "there is no transaction to commit"));
    Outcome outcome = transaction_->commit();
    if (!outcome.error) transaction_ = nullptr;
    return outcome;
}

void SqliteConnection::rollback() {
    if (transaction_ == nullptr || DatabaseFile::areInherited()) return;
    transaction_->rollback();
    closeIfDue(std::exchange(transaction_, nullptr));
}

/// Closes a file that is better closed now than at its next use.
void SqliteConnection::closeIfDue(const DatabaseFile* file) {
    if (!file->isToBeClosed()) return;
    files_.erase(std::find_if(files_.begin(), files_.end(),
                              [file](const auto& known) { return known.second.get() == file; }));
}

/// @param now  the time; a later one when a file had to be opened.
/// @return  the open file of a database, or null with `error`.
DatabaseFile* SqliteConnection::databaseFile(const std::string& dbName, Deadline& now,
                                             Error& error) {
    const auto known = files_.find(dbName);
    if (known != files_.end()) {
        if (known->second->usable(now)) return known->second.get();
        files_.erase(known);
    }
    std::string path;
    error = pathOf(dbName, path);
    if (error) return nullptr;
    FilePtr file(new DatabaseFile(std::move(path), settings_));
    error = file->open();
    if (error) return nullptr;
    now = Clock::now();
    return files_.emplace(dbName, std::move(file)).first->second.get();
}

/// The path of an existing file without symbolic links, by which all processes know its lock.
Error SqliteConnection::pathOf(const std::string& dbName, std::string& path) const {
    if (dbName.empty()) return makeError(kNoDatabaseSelected, "No database selected");
    if (!isDatabaseName(dbName)) return wrongName(dbName);
    std::error_code failure;
    path = std::filesystem::canonical(fileOf(dbName), failure).string();
    if (failure == std::errc::no_such_file_or_directory)
        return makeError(kUnknownDatabase, "Unknown database '" + dbName + "'");
    if (failure) return makeError(kCannotOpenFile, fileOf(dbName) + ": " + failure.message());
    return {};
}

std::string SqliteConnection::fileOf(const std::string& dbName) const {
    return directory_ + "/" + dbName + ".db";
}

/// @return  nothing for a statement that is not about a database as a whole.
std::optional<Outcome> SqliteConnection::runDatabaseStatement(const std::string& text) const {
    TokenReader reader(text);
    const Token verb = reader.next();
    const Token object = reader.next();
    if (!isWord(object, "database") && !isWord(object, "schema")) return std::nullopt;
    if (isWord(verb, "drop")) {
        return Outcome::failure(
            makeError(kNotSupported,
                      "DROP DATABASE is not supported: remove the files while no one uses them"));
    }
    if (!isWord(verb, "create")) return std::nullopt;
    DatabaseToCreate database;
    if (!readDatabaseToCreate(reader, database))
        return Outcome::failure(makeError(kSyntaxError, "ill-formed CREATE DATABASE"));
    return createDatabase(database.name, database.mayExist);
}

/// An empty file is an empty database to SQLite; its first opening does the rest.
Outcome SqliteConnection::createDatabase(const std::string& dbName, bool mayExist) const {
    if (!isDatabaseName(dbName)) return Outcome::failure(wrongName(dbName));
    const std::string path = fileOf(dbName);
    const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0640);
    if (file >= 0) {
        ::close(file);
        Outcome outcome;
        outcome.affectedRows = 1;  // as servers count it
        return outcome;
    }
    const int failure = errno;
    if (failure != EEXIST) return Outcome::failure(errorOfErrno(failure, path));
    if (mayExist) return {};
    return Outcome::failure(
        makeError(kDatabaseExists, "Can't create database '" + dbName + "'; database exists"));
}

}  // namespace dbaccess::sqlite
