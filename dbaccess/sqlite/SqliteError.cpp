#include "dbaccess/sqlite/SqliteError.h"

#include <sqlite3.h>

#include <cerrno>
#include <system_error>

#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/reader/TokenReader.h"

namespace dbaccess::sqlite {
namespace {

struct NumberOfCode {
    int code;
    int number;
};

// An extended code is looked for as it is first, then without its extension.
constexpr NumberOfCode kNumbersOfCodes[] = {
    {SQLITE_CONSTRAINT_PRIMARYKEY, kDuplicateKey},
    {SQLITE_CONSTRAINT_UNIQUE, kDuplicateKey},
    {SQLITE_CONSTRAINT_ROWID, kDuplicateKey},
    {SQLITE_IOERR_WRITE, kErrorOnWrite},
    {SQLITE_IOERR_FSYNC, kErrorOnWrite},
    {SQLITE_IOERR_DIR_FSYNC, kErrorOnWrite},
    {SQLITE_IOERR_TRUNCATE, kErrorOnWrite},
    {SQLITE_IOERR_DELETE, kErrorOnWrite},
    {SQLITE_IOERR_SHMSIZE, kErrorOnWrite},
    {SQLITE_IOERR_NOMEM, kOutOfMemory},
    {SQLITE_IOERR, kErrorOnRead},
    {SQLITE_ERROR, kSyntaxError},
    {SQLITE_MISMATCH, kIncorrectValue},
    {SQLITE_BUSY, kLockWaitTimeout},
    {SQLITE_LOCKED, kLockWaitTimeout},
    {SQLITE_PROTOCOL, kLockWaitTimeout},
    {SQLITE_INTERRUPT, kStatementTimeout},
    {SQLITE_TOOBIG, kPacketTooLarge},
    {SQLITE_NOMEM, kOutOfMemory},
    {SQLITE_FULL, kTableFull},
    {SQLITE_READONLY, kReadOnlyFile},
    {SQLITE_CANTOPEN, kCannotOpenFile},
    {SQLITE_PERM, kCannotOpenFile},
    {SQLITE_NOTADB, kNotDatabaseFile},
    {SQLITE_CORRUPT, kDamagedFile},
};

struct NumberOfWords {
    const char* words;
    int number;
};

// SQLite has one code for all that is wrong with a statement; the rest is in the message.
constexpr NumberOfWords kNumbersOfWords[] = {
    {"no such table", kNoSuchTable},
    {"no such column", kUnknownColumn},
    {"has no column named", kUnknownColumn},
    {"ambiguous column", kAmbiguousColumn},
    {"values for", kValueCountMismatch},
    {"values were supplied", kValueCountMismatch},
    {"must have the same number of terms", kValueCountMismatch},
    {"do not have the same number of result columns", kColumnCountMismatch},
    {"no such function", kNoSuchFunction},
    {"already exists", kTableExists},
    {"unsupported file format", kNotDatabaseFile},
};

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

std::string_view behindLast(char sign, std::string_view text) {
    return text.substr(text.rfind(sign) + 1);
}

/// Whether an insert has a column list that does not name the column.
bool leavesOut(std::string_view statement, std::string_view column) {
    TokenReader reader(statement);
    bool inList = false;
    for (Token token; reader.read(token);) {
        if (isSign(token, ")")) break;
        if (!inList && isAnyOf(token, {"values", "value", "select", "set"})) break;
        if (isSign(token, "(")) inList = true;
        if (inList && sameIgnoringCase(nameIn(token), column)) return false;
    }
    return inList;
}

/// Of "NOT NULL constraint failed: TABLE.COLUMN".
int numberOfNull(std::string_view message, std::string_view statement) {
    const std::string_view column = behindLast('.', message);
    return leavesOut(statement, column) ? kNoDefaultValue : kColumnCannotBeNull;
}

int numberOfMessage(std::string_view message) {
    for (const NumberOfWords& known : kNumbersOfWords) {
        if (contains(message, known.words)) return known.number;
    }
    return kSyntaxError;
}

int numberOfCode(int code) {
    for (const NumberOfCode& known : kNumbersOfCodes) {
        if (known.code == code) return known.number;
    }
    const int withoutExtension = code & 0xff;
    return withoutExtension == code ? kUnknownError : numberOfCode(withoutExtension);
}

int numberOf(int code, std::string_view message, std::string_view statement) {
    switch (code) {
        case SQLITE_ERROR:
        case SQLITE_SCHEMA:  // ill-formed, and another connection has changed the tables meanwhile
            return numberOfMessage(message);
        case SQLITE_CONSTRAINT_NOTNULL:
            return numberOfNull(message, statement);
        case SQLITE_CONSTRAINT_CHECK:  // "CHECK constraint failed: NAME"
            return behindLast(' ', message) == kTooLongCheck ? kDataTooLong : kOutOfRange;
        case SQLITE_CONSTRAINT_DATATYPE:
            // A text of digits that no integer holds has become a real number by now.
            return contains(message, "cannot store REAL") ? kOutOfRange : kIncorrectValue;
        default:
            return numberOfCode(code);
    }
}

int numberOfErrno(int failure) {
    switch (failure) {
        case ETIMEDOUT:
            return kLockWaitTimeout;
        case ENOENT:
            return kUnknownDatabase;
        case EACCES:
        case EPERM:
        case EROFS:
            return kReadOnlyFile;
        case ENOSPC:
        case EDQUOT:
            return kTableFull;
        default:
            return kCannotOpenFile;
    }
}

}  // namespace

Error errorOf(int code, const std::string& message, std::string_view statement) {
    return makeError(numberOf(code, message, statement), message);
}

Error errorOfErrno(int failure, const std::string& subject) {
    const std::error_code reason(failure, std::generic_category());
    return makeError(numberOfErrno(failure), subject + ": " + reason.message());
}

bool spoilsFile(int code) {
    switch (code & 0xff) {
        case SQLITE_IOERR:
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
        case SQLITE_CANTOPEN:
        case SQLITE_READONLY:
            return true;
        default:
            return false;
    }
}

}  // namespace dbaccess::sqlite
