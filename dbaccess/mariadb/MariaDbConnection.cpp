#include "dbaccess/mariadb/MariaDbConnection.h"

#include <poll.h>

#include <algorithm>
#include <charconv>
#include <exception>
#include <limits>
#include <utility>
#include <vector>

#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/mariadb/MariaDbError.h"
#include "dbaccess/mariadb/Unread.h"
#include "dbaccess/reader/TokenReader.h"
#include "dbaccess/stats/Counters.h"

namespace dbaccess::mariadb {
namespace {

constexpr std::size_t kMostKept = 128;  // statements of a session

// More than a bound number takes beyond its digits in the text.
constexpr std::size_t kMostBytesOfNumber = 10;

bool isMariaDb(MYSQL* handle) {
    const char* type = nullptr;
    mariadb_get_infov(handle, MARIADB_CONNECTION_SERVER_TYPE, &type);
    return type != nullptr && std::string_view(type) == "MariaDB";
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
           number == kTooManyPrepared || number == kNeedsPreparing || number == kNoArrayBinding;
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

/// Keeps a statement within its limits, as the last thing that the other side gets from it.
class MariaDbConnection::Timed {
public:
    explicit Timed(MariaDbConnection& connection) : connection_(connection) {
        const TimePoint now = Clock::now();
        const TimePoint end = now + connection.settings_.timeouts.patience();
        begun_ = connection.watched_.begin(now, std::min(end, connection.endBy_));
    }
    Timed(const Timed&) = delete;
    Timed& operator=(const Timed&) = delete;
    ~Timed() {
        const bool whole = connection_.watched_.end() && exceptions_ == std::uncaught_exceptions();
        connection_.usable_ = connection_.usable_ && begun_ && whole;
    }

private:
    MariaDbConnection& connection_;
    const int exceptions_ = std::uncaught_exceptions();
    bool begun_ = false;
};

MariaDbConnection::MariaDbConnection(std::shared_ptr<Servers> servers, Hosts::Index host,
                                     Handle handle, const Settings& settings)
    : servers_(std::move(servers)),
      host_(host),
      settings_(settings),
      known_(kMostKept),
      handle_(std::move(handle)),
      watched_(servers_->watch, static_cast<int>(mysql_get_socket(handle_.get())),
               isMariaDb(handle_.get()) ? 0 : mysql_thread_id(handle_.get())),
      mariaDb_(isMariaDb(handle_.get())) {
    servers_->hosts.opened(host_);
    unsigned long capabilities = 0;  // those that MariaDB has beyond MySQL's
    mariadb_get_infov(handle_.get(), MARIADB_CONNECTION_EXTENDED_SERVER_CAPABILITIES,
                      &capabilities);
    bindsArrays_ = mariaDb_ && (capabilities & (MARIADB_CLIENT_STMT_BULK_OPERATIONS >> 32)) != 0;
}

MariaDbConnection::~MariaDbConnection() {
    servers_->hosts.closed(host_);
}

std::unique_ptr<MariaDbConnection> MariaDbConnection::open(
    std::shared_ptr<Servers> servers, Hosts::Index host, const ServerAddress& address,
    const Account& account, const Settings& settings, std::chrono::milliseconds limit,
    Error& error) {
    const TimePoint end = Clock::now() + limit;
    Handle handle = logIn(address, account, settings, limit, error);
    if (!handle) return nullptr;
    std::unique_ptr<MariaDbConnection> connection(
        new MariaDbConnection(std::move(servers), host, std::move(handle), settings));
    connection->endBy_ = end;
    return connection->lookAround(error) ? std::move(connection) : nullptr;
}

bool MariaDbConnection::join(std::uint64_t epoch) {
    epoch_ = epoch;
    watched_.join(epoch);
    return epoch != 0;
}

/// What a new session has to know of its server.
bool MariaDbConnection::lookAround(Error& error) {
    const Timed timed(*this);
    if (readLimits(error) && readClusterState(error)) return true;
    error = connectError(error);
    return false;
}

/// The server drops a connection that sends more than its packet limit: know the limit beforehand.
bool MariaDbConnection::readLimits(Error& error) {
    largestText_ = std::numeric_limits<std::size_t>::max();
    Outcome outcome = send("select @@max_allowed_packet as packet,@@global.read_only as readOnly");
    error = outcome.error;
    if (error) return false;
    if (outcome.rows && outcome.rows->next()) {
        // Packets are below the limit, and the text shares its packet with a command byte.
        largestText_ = outcome.rows->getUInt64("packet") - 2;
        std::string readOnly;
        outcome.rows->getString("readOnly", readOnly);
        if (readOnly != "0" && readOnly != "OFF") standing_ = Standing::ReadOnly;
    }
    return true;
}

/// Whether a cluster's node is one that takes statements. Asked so that the answer comes after all
/// that other nodes have acknowledged: who wrote there reads it here.
bool MariaDbConnection::readClusterState(Error& error) {
    if (!mariaDb_) return true;
    Outcome outcome = send("select 1 from dual where @@wsrep_on");
    if (outcome.error) return usable_;  // built without clusters
    if (!outcome.rows || !outcome.rows->next()) return true;
    outcome = send("SET SESSION wsrep_sync_wait=8");  // of SHOW; 1 is of SELECT alone
    if (!outcome.error) {
        outcome = send(
            "SHOW STATUS WHERE Variable_name='wsrep_ready' AND Value='ON' OR "
            "Variable_name='wsrep_cluster_status' AND Value='Primary'");
    }
    error = outcome.error;
    if (outcome.error || outcome.rows->rowsCount() != 2) standing_ = Standing::NotReady;
    if (!outcome.error) {
        send(settings_.causalReads ? "SET SESSION wsrep_sync_wait=1"
                                   : "SET SESSION wsrep_sync_wait=DEFAULT");
    }
    if (!usable_) return false;
    error = {};
    return true;
}

bool MariaDbConnection::alive() {
    if (!usable()) return false;
    // An idle server says nothing: whatever there is to read is its farewell.
    pollfd socket{static_cast<int>(mysql_get_socket(handle_.get())), POLLIN | POLLRDHUP, 0};
    return poll(&socket, 1, 0) == 0;
}

Outcome MariaDbConnection::run(const std::string& dbName, const Statement& statement) {
    const Timed timed(*this);
    return runTimed(dbName, statement);
}

Outcome MariaDbConnection::runAgain(const std::string& dbName, const Statement& query) {
    const Timed timed(*this);
    Outcome outcome = send("START TRANSACTION READ ONLY");
    if (outcome.error) return outcome;
    inTransaction_ = inReadOnlyTransaction_ = true;
    outcome = runTimed(dbName, query);
    inTransaction_ = inReadOnlyTransaction_ = false;
    if (usable_) send("ROLLBACK");
    return outcome;
}

Outcome MariaDbConnection::runTimed(const std::string& dbName, const Statement& statement) {
    if (statement.text.size() > largestText_) {
        return Outcome::failure(makeError(
            kPacketTooLarge, "statement of " + std::to_string(statement.text.size()) +
                                 " bytes; the server takes " + std::to_string(largestText_)));
    }
    Outcome outcome = runIn(dbName, statement);
    if (outcome.error.number == kNoDatabaseSelected && !database_.empty()) {
        // Nothing was run: the database was dropped since it was selected. It may be there again.
        database_.clear();
        outcome = runIn(dbName, statement);
    }
    if (outcome.affectedRows > 1 && isReplace(statement.text))
        outcome.affectedRows = replacedRows(handle_.get(), outcome.affectedRows);
    if (statement.kind == StatementKind::Session) {
        known_.clear();  // it was prepared under the session's old settings
        mayKeep_ = mayKeep_ && !changesReading(statement);
    }
    endStrayTransaction();
    return outcome;
}

Outcome MariaDbConnection::runIn(const std::string& dbName, const Statement& statement) {
    Outcome outcome = selectDatabase(dbName);
    if (outcome.error || runKept(statement, outcome)) return outcome;
    return namesUtf8(statement) ? send("SET NAMES utf8mb4") : send(statement.text);
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
    knownKey_.assign(database_).append("\n").append(skeleton.text);
    Known& known = known_[knownKey_];
    // Prepared at the second sight: a text that is sent once costs one round trip.
    if (!std::exchange(known.seen, true) || known.asText) return false;
    const bool kept = known.statement != nullptr;
    if (!kept) {
        prepare(statement, known, outcome);
        if (!known.statement) return static_cast<bool>(outcome.error);
    }
    outcome = run(*known.statement, skeleton);
    known.asText = saysText(outcome.error.number);
    if (known.asText) {
        known.statement.reset();
    } else if (kept) {
        counters.keptHits.add();
    }
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
    outcome.rows = kept.rows(settings_.largestResult, error);
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
    Unread unread(handle_.get());
    std::vector<std::string> columns;
    const MYSQL_FIELD* fields = mysql_fetch_fields(result);
    for (unsigned int i = 0; i < mysql_num_fields(result); ++i)
        columns.emplace_back(fields[i].name);
    Outcome outcome;
    outcome.rows = std::make_unique<RowBuffer>(std::move(columns));
    outcome.rows->limitTo(settings_.largestResult);
    while (MYSQL_ROW row = mysql_fetch_row(result)) {
        const unsigned long* const lengths = mysql_fetch_lengths(result);
        outcome.rows->beginRow();
        for (unsigned int i = 0; i < mysql_num_fields(result); ++i)
            row[i] == nullptr ? outcome.rows->addNull()
                              : outcome.rows->addText({row[i], lengths[i]});
        outcome.rows->endRow();
    }
    unread.isRead();
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
    if (!inTransaction_ && usable_ && (status & SERVER_STATUS_IN_TRANS) != 0) send("ROLLBACK");
}

Outcome MariaDbConnection::begin(const std::string& dbName) {
    const Timed timed(*this);
    Outcome outcome = selectDatabase(dbName);
    if (!outcome.error) outcome = send("START TRANSACTION");
    inTransaction_ = !outcome.error;
    return outcome;
}

Outcome MariaDbConnection::commit() {
    const Timed timed(*this);
    Outcome outcome = send("COMMIT");
    inTransaction_ = inTransaction_ && outcome.error;
    return outcome;
}

void MariaDbConnection::rollback() {
    const Timed timed(*this);
    inTransaction_ = false;
    send("ROLLBACK");
}

Outcome MariaDbConnection::failure() {
    return failure(errorOf(handle_.get()));
}

Outcome MariaDbConnection::failure(Error error) {
    // MySQL servers give this number no SQLSTATE of its own, MariaDB's do.
    if (error.number == kIncorrectValue) error.sqlState = sqlStateOf(kIncorrectValue);
    Fate fate = fateOf(error.number);
    if (epoch_ != 0 && usable_ && !keepsConnection(error.number)) servers_->log.lost(host_, error);
    usable_ = usable_ && keepsConnection(error.number);
    const bool readOnly = isReadOnly(error) && !inReadOnlyTransaction_;
    if (epoch_ != 0 && (readOnly || error.number == kUnknownClusterState)) {
        const Standing found = readOnly ? Standing::ReadOnly : Standing::NotReady;
        if (servers_->hosts.leave(epoch_, found)) fate = Fate::NotExecuted;
    }
    return Outcome::failure(std::move(error), fate);
}

}  // namespace dbaccess::mariadb
