#include "dbaccess/sqlite/SqliteError.h"

#include <sqlite3.h>
#include <strings.h>

#include <cerrno>
#include <system_error>

#include "dbaccess/ErrorNumber.h"
#include "dbaccess/TokenReader.h"

namespace dbaccess::sqlite {
namespace {

constexpr int kUnknownError = 1105;

struct MessagePart {
    const char* part;
    int number;
};

// SQLite has one code for all that is wrong with a statement; the rest is in the words.
constexpr MessagePart kMessageParts[] = {
    {"no such table", kNoSuchTable},
    {"no such column", kUnknownColumn},
    {"has no column named", kUnknownColumn},
    {"ambiguous column", kAmbiguousColumn},
    {"values for", kValueCountMismatch},
    {"must have the same number of terms", kValueCountMismatch},
    {"no such function", kNoSuchFunction},
    {"already exists", kTableExists},
};

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

bool isSameName(std::string_view left, std::string_view right) {
    return left.size() == right.size() &&
           ::strncasecmp(left.data(), right.data(), left.size()) == 0;
}

bool isValueWord(const Token& token) {
    return isWord(token, "values") || isWord(token, "value") || isWord(token, "select") ||
           isWord(token, "set");
}

std::string_view nameIn(const Token& token) {
    if (token.kind != TokenKind::Name) return token.source;
    return token.source.substr(1, token.source.size() - 2);
}

/// Whether an insert has a column list that does not name the column.
bool leavesOut(std::string_view statement, std::string_view column) {
    TokenReader reader(statement);
    bool inList = false;
    for (Token token = reader.next(); token.kind != TokenKind::End && token.kind != TokenKind::Bad;
         token = reader.next()) {
        if (isSign(token, ")") || (!inList && isValueWord(token))) break;
        if (isSign(token, "(")) inList = true;
        if (inList && isSameName(nameIn(token), column)) return false;
    }
    return inList;
}

/// Of "NOT NULL constraint failed: TABLE.COLUMN".
int numberOfNull(std::string_view message, std::string_view statement) {
    const std::string_view column = message.substr(message.rfind('.') + 1);
    return leavesOut(statement, column) ? kNoDefaultValue : kColumnCannotBeNull;
}

int numberOfConstraint(int code, std::string_view message, std::string_view statement) {
    switch (code) {
        case SQLITE_CONSTRAINT_NOTNULL:
            return numberOfNull(message, statement);
        case SQLITE_CONSTRAINT_CHECK:
            return contains(message, "length(") ? kDataTooLong : kOutOfRange;
        case SQLITE_CONSTRAINT_DATATYPE:
            // A text of digits that no integer holds has become a real number by now.
            return contains(message, "cannot store REAL") ? kOutOfRange : kIncorrectValue;
        case SQLITE_CONSTRAINT_PRIMARYKEY:
        case SQLITE_CONSTRAINT_UNIQUE:
        case SQLITE_CONSTRAINT_ROWID:
            return kDuplicateKey;
        default:
            return kUnknownError;
    }
}

int numberOfMessage(std::string_view message) {
    for (const MessagePart& known : kMessageParts) {
        if (contains(message, known.part)) return known.number;
    }
    return kSyntaxError;
}

int numberOfIoError(int code) {
    switch (code) {
        case SQLITE_IOERR_WRITE:
        case SQLITE_IOERR_FSYNC:
        case SQLITE_IOERR_DIR_FSYNC:
        case SQLITE_IOERR_TRUNCATE:
        case SQLITE_IOERR_DELETE:
        case SQLITE_IOERR_SHMSIZE:
            return kErrorOnWrite;
        default:
            return kErrorOnRead;
    }
}

int numberOf(int code, std::string_view message, std::string_view statement) {
    switch (code & 0xff) {
        case SQLITE_ERROR:
            return numberOfMessage(message);
        case SQLITE_AUTH:
            return kSyntaxError;
        case SQLITE_CONSTRAINT:
            return numberOfConstraint(code, message, statement);
        case SQLITE_MISMATCH:
            return kIncorrectValue;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
        case SQLITE_PROTOCOL:
            return kLockWaitTimeout;
        case SQLITE_INTERRUPT:
            return kStatementTimeout;
        case SQLITE_TOOBIG:
            return kPacketTooLarge;
        case SQLITE_NOMEM:
            return kOutOfMemory;
        case SQLITE_FULL:
            return kTableFull;
        case SQLITE_IOERR:
            return numberOfIoError(code);
        case SQLITE_READONLY:
            return kReadOnlyFile;
        case SQLITE_CANTOPEN:
        case SQLITE_PERM:
            return kCannotOpenFile;
        case SQLITE_NOTADB:
            return kNotDatabaseFile;
        case SQLITE_CORRUPT:
            return kDamagedFile;
        default:
            return kUnknownError;
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

bool spoilsHandle(int code) {
    switch (code & 0xff) {
        case SQLITE_IOERR:
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
        case SQLITE_CANTOPEN:
            return true;
        default:
            return code == SQLITE_READONLY_DBMOVED;
    }
}

}  // namespace dbaccess::sqlite
