#include "dbaccess/mariadb/MariaDbConnection.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <limits>
#include <mutex>
#include <utility>
#include <vector>

#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/mariadb/MariaDbError.h"
#include "dbaccess/reader/TokenReader.h"

namespace dbaccess::mariadb {
namespace {

// Every session is pinned to what the statements rely on, whatever the server's defaults: strict (a
// value that does not fit is refused, not changed) and with backslash escapes.
constexpr const char* kPinSession =
    "SET sql_mode='STRICT_TRANS_TABLES',autocommit=1,innodb_lock_wait_timeout=";

/// Servers and the client library count in seconds: part of one is a whole one.
std::chrono::seconds::rep inSeconds(std::chrono::milliseconds time) {
    return std::chrono::ceil<std::chrono::seconds>(time).count();
}

constexpr std::size_t kMostKept = 128;  // statements of a session

// More than a bound number takes beyond its digits in the text.
constexpr std::size_t kMostBytesOfNumber = 10;

Error errorOf(MYSQL* handle) {
    return Error{static_cast<int>(mysql_errno(handle)), mysql_sqlstate(handle),
                 mysql_error(handle)};
}

/// Callers take a 2013 for a statement in doubt; before the first one there is none.
Error connectError(Error error) {
    if (error.number == kServerLost || error.number == kServerGone) {
        return makeError(kCannotConnect, error.message);
    }
    return error;
}

void setOptions(MYSQL* handle, const Timeouts& timeouts) {
    const auto seconds = [&](mysql_option option, std::chrono::milliseconds value) {
        const auto count = static_cast<unsigned int>(inSeconds(value));
        mysql_optionsv(handle, option, &count);
    };
    seconds(MYSQL_OPT_CONNECT_TIMEOUT, timeouts.connect);
    seconds(MYSQL_OPT_READ_TIMEOUT, timeouts.answer);
    seconds(MYSQL_OPT_WRITE_TIMEOUT, timeouts.answer);
    const unsigned int off = 0;
    mysql_optionsv(handle, MYSQL_OPT_LOCAL_INFILE, &off);  // a server may not read our files
    mysql_optionsv(handle, MYSQL_SET_CHARSET_NAME, "utf8mb4");
    const std::string pinSession = kPinSession + std::to_string(inSeconds(timeouts.lock));
    mysql_optionsv(handle, MYSQL_INIT_COMMAND, pinSession.c_str());
}

/// Lets the system notice a peer that vanished without a word. Has no effect on a unix socket.
void keepAlive(MYSQL* handle, const Timeouts& timeouts) {
    const auto set = [socket = mysql_get_socket(handle)](int option, int value) {
        setsockopt(socket, IPPROTO_TCP, option, &value, sizeof value);
    };
    set(TCP_KEEPIDLE, 30);
    set(TCP_KEEPINTVL, 10);
    set(TCP_KEEPCNT, 3);
    set(TCP_USER_TIMEOUT, static_cast<int>(timeouts.answer.count()));
}

/// Servers take "utf8" for a subset without 4-byte characters, which they would refuse to store and
/// read back as "?". SET NAMES utf8 means all of UTF-8 here.
bool namesUtf8(const Statement& statement, bool collationMayFollow = false) {
    if (statement.kind != StatementKind::Session || sessionKeyOf(statement.text) != "names")
        return false;
    TokenReader reader(statement.text);
    reader.next();
    reader.next();
    const Token charset = reader.next();
    const std::string_view name =
        charset.kind == TokenKind::Text ? charset.value() : charset.source;
    return (sameIgnoringCase(name, "utf8") || sameIgnoringCase(name, "utf8mb3") ||
            sameIgnoringCase(name, "utf8mb4")) &&
           (collationMayFollow || reader.next().kind == TokenKind::End);
}

/// Whether servers read texts after this SET in another way than the statement reader does: other
/// quotes, no escapes, bytes that are no UTF-8.
bool changesReading(const Statement& set) {
    const std::string key = sessionKeyOf(set.text);
    const auto names = [&](const char* part) { return key.find(part) != std::string::npos; };
    return names("sql_mode") || names("character_set") || (names("names") && !namesUtf8(set, true));
}

bool isReplace(const std::string& text) {
    return isWord(TokenReader(text).next(), "replace");
}

/// MySQL servers tell a blank text, and one with characters beyond ASCII, from the same literal
/// where a number is wanted.
bool isPlain(const Value& value) {
    const auto* text = std::get_if<std::string_view>(&value);
    return text == nullptr || (text->find_first_not_of(' ') != std::string_view::npos &&
                               std::all_of(text->begin(), text->end(), [](char c) {
                                   return static_cast<unsigned char>(c) < 0x80;
                               }));
}

/// Whether a server says with this that it did not run the kept statement, and would run the text.
bool saysText(int number) {
    return number == kUnknownPrepared || number == kNotPreparable || number == kTooManyPlaces ||
           number == kTooManyPrepared || number == kNeedsPreparing;
}

/// A replaced row counts twice on the server, and once for its caller: the rows that now stand.
std::int64_t replacedRows(MYSQL* handle, std::int64_t affected) {
    constexpr std::string_view kRecords = "Records: ";
    const char* info = mysql_info(handle);
    if (info == nullptr) return std::min<std::int64_t>(affected, 1);
    const std::string_view text = info;
    const auto at = text.find(kRecords);
    if (at == std::string_view::npos) return affected;
    std::from_chars(text.data() + at + kRecords.size(), text.data() + text.size(), affected);
    return affected;
}

}  // namespace

MariaDbConnection::MariaDbConnection(Handle handle)
    : known_(kMostKept), handle_(std::move(handle)) {
    const char* type = nullptr;
    mariadb_get_infov(handle_.get(), MARIADB_CONNECTION_SERVER_TYPE, &type);
    mariaDb_ = type != nullptr && std::string_view(type) == "MariaDB";
    unsigned long capabilities = 0;  // those that MariaDB has beyond MySQL's
    mariadb_get_infov(handle_.get(), MARIADB_CONNECTION_EXTENDED_SERVER_CAPABILITIES,
                      &capabilities);
    bindsArrays_ = mariaDb_ && (capabilities & (MARIADB_CLIENT_STMT_BULK_OPERATIONS >> 32)) != 0;
}

std::unique_ptr<MariaDbConnection> MariaDbConnection::open(const ServerAddress& server,
                                                           const std::string& user,
                                                           const std::string& password,
                                                           const Timeouts& timeouts, Error& error) {
    static std::once_flag once;
    std::call_once(once, [] { mysql_library_init(0, nullptr, nullptr); });
    Handle handle(mysql_init(nullptr));
    if (!handle) {
        error = makeError(kOutOfMemory, "out of memory");
        return nullptr;
    }
    setOptions(handle.get(), timeouts);
    const char* name = server.socket.empty() ? server.name.c_str() : nullptr;
    const char* socket = server.socket.empty() ? nullptr : server.socket.c_str();
    // CLIENT_FOUND_ROWS: an update counts the rows that it met, also those that were so already.
    if (mysql_real_connect(handle.get(), name, user.c_str(), password.c_str(), nullptr, server.port,
                           socket, CLIENT_FOUND_ROWS) == nullptr) {
        error = connectError(errorOf(handle.get()));
        return nullptr;
    }
    mysql_set_server_option(handle.get(), MYSQL_OPTION_MULTI_STATEMENTS_OFF);
    keepAlive(handle.get(), timeouts);
    std::unique_ptr<MariaDbConnection> connection(new MariaDbConnection(std::move(handle)));
    if (!connection->readLimits(error)) return nullptr;
    connection->tuneSession();
    return connection;
}

/// The server drops a connection that sends more than its packet limit: know the limit beforehand.
bool MariaDbConnection::readLimits(Error& error) {
    largestText_ = std::numeric_limits<std::size_t>::max();
    Outcome outcome = send("select @@max_allowed_packet");
    error = connectError(outcome.error);
    if (error) return false;
    if (outcome.rows && outcome.rows->next()) {
        // Packets are below the limit, and the text shares its packet with a command byte.
        largestText_ = outcome.rows->getUInt64("@@max_allowed_packet") - 2;
    }
    return true;
}

/// MariaDB sorts row numbers and then fetches each row a second time, unless rows as wide as the
/// library's may take part in the sort. A server that does not know the setting goes without.
void MariaDbConnection::tuneSession() {
    if (mariaDb_) send("SET max_length_for_sort_data=16384");
}

bool MariaDbConnection::alive() {
    // An idle server says nothing: whatever there is to read is its farewell.
    pollfd socket{static_cast<int>(mysql_get_socket(handle_.get())), POLLIN | POLLRDHUP, 0};
    return poll(&socket, 1, 0) == 0;
}

Outcome MariaDbConnection::run(const std::string& dbName, const Statement& statement) {
    if (statement.text.size() > largestText_) {
        return Outcome::failure(makeError(
            kPacketTooLarge, "statement of " + std::to_string(statement.text.size()) +
                                 " bytes; the server takes " + std::to_string(largestText_)));
    }
    Outcome selected = selectDatabase(dbName);
    if (selected.error) return selected;
    Outcome outcome;
    if (!runKept(statement, outcome))
        outcome = namesUtf8(statement) ? send("SET NAMES utf8mb4") : send(statement.text);
    if (outcome.affectedRows > 1 && isReplace(statement.text))
        outcome.affectedRows = replacedRows(handle_.get(), outcome.affectedRows);
    if (statement.kind == StatementKind::Session) {
        known_.clear();  // it was prepared under the session's old settings
        mayKeep_ = mayKeep_ && !changesReading(statement);
    }
    endStrayTransaction();
    return outcome;
}

bool MariaDbConnection::mayKeep(const Statement& statement) const {
    if (!mayKeep_) return false;
    if (statement.kind != StatementKind::Read && statement.kind != StatementKind::Write)
        return false;
    if (statement.text.size() > kLongestKept && !mariaDb_) return false;
    const Skeleton& skeleton = statement.skeleton();
    if (!skeleton.forServers || skeleton.text.empty() || skeleton.text.size() > kLongestKept)
        return false;
    if (skeleton.values.size() * kMostBytesOfNumber + statement.text.size() > largestText_)
        return false;
    if (skeleton.valuesPerRow != 0) return bindsArrays_ && hasUniformColumns(skeleton);
    return mariaDb_ || std::all_of(skeleton.values.begin(), skeleton.values.end(), isPlain);
}

/// False when the statement is to be sent as text: nothing has been run then.
bool MariaDbConnection::runKept(const Statement& statement, Outcome& outcome) {
    if (!mayKeep(statement)) return false;
    const Skeleton& skeleton = statement.skeleton();
    Known& known = known_[database_ + '\n' + skeleton.text];
    // Prepared at the second sight: a text that is sent once costs one round trip.
    if (!std::exchange(known.seen, true) || known.asText) return false;
    if (!known.statement) {
        prepare(statement, known, outcome);
        if (!known.statement) return static_cast<bool>(outcome.error);
    }
    outcome = run(*known.statement, skeleton);
    known.asText = saysText(outcome.error.number);
    if (known.asText) known.statement.reset();
    return !known.asText;
}

/// Prepares what is known, or finds that it goes as text, or leaves the error in `outcome`.
void MariaDbConnection::prepare(const Statement& statement, Known& known, Outcome& outcome) {
    const Skeleton& skeleton = statement.skeleton();
    Error error;
    known.statement = KeptStatement::prepare(handle_.get(), skeleton.text, error);
    if (known.statement) {
        const bool changesData = statement.kind != StatementKind::Read;
        // What answers with rows that go as text must not have run before: it may count something.
        known.asText =
            known.statement->valueCount() != skeleton.valuesOfRun() ||
            (known.statement->hasRows() && (changesData || !known.statement->readsAsText()));
        if (known.asText) known.statement.reset();
        return;
    }
    outcome = failure(std::move(error));
    if (outcome.fate == Fate::InDoubt) outcome.fate = Fate::NotExecuted;  // it was not sent yet
    // What is wrong with the statement itself is said of its text.
    known.asText = outcome.fate == Fate::Refused && outcome.error.number != kLockWaitTimeout;
    if (known.asText) outcome = {};
}

Outcome MariaDbConnection::run(KeptStatement& kept, const Skeleton& skeleton) {
    Error error;
    if (!kept.execute(skeleton, error)) return failure(std::move(error));
    Outcome outcome;
    if (!kept.hasRows()) {
        outcome.affectedRows = kept.affectedRows();
        return outcome;
    }
    if (!kept.readsAsText()) {  // a query, which may run once more
        kept.skipRows();
        return Outcome::failure(makeError(kNeedsPreparing, "columns of other types"));
    }
    outcome.rows = kept.rows(error);
    return outcome.rows ? std::move(outcome) : failure(std::move(error));
}

Outcome MariaDbConnection::selectDatabase(const std::string& dbName) {
    if (dbName.empty() || dbName == database_) return {};
    if (mysql_select_db(handle_.get(), dbName.c_str()) != 0) {
        Outcome outcome = failure();
        if (outcome.fate == Fate::InDoubt)
            outcome.fate = Fate::NotExecuted;  // nothing else was sent
        return outcome;
    }
    database_ = dbName;
    return {};
}

Outcome MariaDbConnection::send(std::string_view text) {
    if (mysql_real_query(handle_.get(), text.data(), text.size()) != 0) return failure();
    Outcome outcome = receive();
    if (!outcome.error) skipFurtherResults();
    return outcome;
}

Outcome MariaDbConnection::receive() {
    // Read as they come, not stored by the client library first: one copy of a large result.
    const std::unique_ptr<MYSQL_RES, decltype(&mysql_free_result)> result(
        mysql_use_result(handle_.get()), &mysql_free_result);
    if (result) return receiveRows(result.get());
    if (mysql_errno(handle_.get()) != 0) return failure();
    Outcome outcome;
    outcome.affectedRows = static_cast<std::int64_t>(mysql_affected_rows(handle_.get()));
    return outcome;
}

Outcome MariaDbConnection::receiveRows(MYSQL_RES* result) {
    std::vector<std::string> columns;
    const MYSQL_FIELD* fields = mysql_fetch_fields(result);
    for (unsigned int i = 0; i < mysql_num_fields(result); ++i)
        columns.emplace_back(fields[i].name);
    Outcome outcome;
    outcome.rows = std::make_unique<RowBuffer>(std::move(columns));
    while (MYSQL_ROW row = mysql_fetch_row(result)) {
        const unsigned long* const lengths = mysql_fetch_lengths(result);
        outcome.rows->beginRow();
        for (unsigned int i = 0; i < mysql_num_fields(result); ++i)
            row[i] == nullptr ? outcome.rows->addNull()
                              : outcome.rows->addText({row[i], lengths[i]});
        outcome.rows->endRow();
    }
    if (mysql_errno(handle_.get()) != 0) return failure();
    return outcome;
}

/// A procedure answers with more than one result; what is left unread would meet the next caller.
void MariaDbConnection::skipFurtherResults() {
    while (mysql_more_results(handle_.get())) {
        if (mysql_next_result(handle_.get()) != 0) {
            usable_ = usable_ && keepsConnection(errorOf(handle_.get()).number);
            return;
        }
        mysql_free_result(mysql_use_result(handle_.get()));
    }
}

/// A procedure may leave a transaction open, which would swallow the statements of later callers.
void MariaDbConnection::endStrayTransaction() {
    unsigned int status = 0;
    mariadb_get_infov(handle_.get(), MARIADB_CONNECTION_SERVER_STATUS, &status);
    if (!inTransaction_ && usable_ && (status & SERVER_STATUS_IN_TRANS) != 0) rollback();
}

Outcome MariaDbConnection::begin(const std::string& dbName) {
    Outcome outcome = selectDatabase(dbName);
    if (!outcome.error) outcome = send("START TRANSACTION");
    inTransaction_ = !outcome.error;
    return outcome;
}

Outcome MariaDbConnection::commit() {
    Outcome outcome = send("COMMIT");
    inTransaction_ = inTransaction_ && outcome.error;
    return outcome;
}

void MariaDbConnection::rollback() {
    inTransaction_ = false;
    send("ROLLBACK");
}

Outcome MariaDbConnection::failure() {
    return failure(errorOf(handle_.get()));
}

Outcome MariaDbConnection::failure(Error error) {
    const Fate fate = fateOf(error.number);
    usable_ = usable_ && keepsConnection(error.number);
    return Outcome::failure(std::move(error), fate);
}

}  // namespace dbaccess::mariadb
