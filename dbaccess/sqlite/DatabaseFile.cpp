#include "dbaccess/sqlite/DatabaseFile.h"

#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

#include <algorithm>
#include <thread>
#include <utility>
#include <variant>
#include <vector>

#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/sqlite/SqliteError.h"

namespace dbaccess::sqlite {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr int kCheckpointPages = 1000;
constexpr int kCheckpointRetryPages = 100;

// A reader may hold up a checkpoint; the writer that runs it does not wait for it longer than this.
constexpr milliseconds kCheckpointPatience{20};

// The clock is looked at every so many steps of SQLite's virtual machine, well under a millisecond.
constexpr int kStepsBetweenLooks = 1000;

constexpr const char* kSettings =
    "PRAGMA synchronous=FULL;"
    "PRAGMA case_sensitive_like=ON;"
    "PRAGMA journal_size_limit=16777216;"
    "SELECT 1 FROM sqlite_schema LIMIT 1;";  // reads the file

/// A file name as SQLite's URI form takes it.
std::string uriOf(const std::string& path) {
    constexpr const char* kHex = "0123456789ABCDEF";
    std::string uri = "file:";
    for (const char character : path) {
        if (character == '%' || character == '?' || character == '#') {
            uri += '%';
            uri += kHex[static_cast<unsigned char>(character) >> 4U];
            uri += kHex[static_cast<unsigned char>(character) & 15U];
        } else {
            uri += character;
        }
    }
    return uri + "?immutable=1";
}

int bind(sqlite3_stmt* statement, int position, const Value& value) {
    if (const std::int64_t* number = std::get_if<std::int64_t>(&value))
        return sqlite3_bind_int64(statement, position, *number);
    const std::string& text = std::get<std::string>(value);
    return sqlite3_bind_text64(statement, position, text.data(), text.size(), SQLITE_STATIC,
                               SQLITE_UTF8);
}

std::unique_ptr<RowBuffer> makeRowBuffer(sqlite3_stmt* statement) {
    const int count = sqlite3_column_count(statement);
    if (count == 0) return nullptr;
    std::vector<std::string> columns;
    for (int column = 0; column < count; ++column) {
        const char* const name = sqlite3_column_name(statement, column);
        columns.emplace_back(name == nullptr ? "" : name);
    }
    return std::make_unique<RowBuffer>(std::move(columns));
}

/// Steps to the end. @return SQLITE_DONE or the code of the failure.
int readRows(sqlite3_stmt* statement, std::unique_ptr<RowBuffer>& rows) {
    // The columns are certain after the first step only: when another connection has changed the
    // tables meanwhile, SQLite prepares the statement anew in that step.
    int code = sqlite3_step(statement);
    if (!rows) rows = makeRowBuffer(statement);
    const auto columns = static_cast<std::size_t>(sqlite3_column_count(statement));
    std::vector<const char*> values(columns);
    std::vector<std::size_t> lengths(columns);
    for (; code == SQLITE_ROW; code = sqlite3_step(statement)) {
        for (std::size_t i = 0; i < columns; ++i) {
            const int column = static_cast<int>(i);
            values[i] = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
            lengths[i] = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
        }
        rows->addRow(values.data(), lengths.data());
    }
    return code;
}

}  // namespace

void DatabaseFile::Close::operator()(sqlite3* database) const {
    sqlite3_close(database);
}

void DatabaseFile::Finalize::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

/// Calls `endWrite` at the end of its scope, however that is left.
class DatabaseFile::WriteEnd {
public:
    explicit WriteEnd(DatabaseFile& file) : file_(file) {}
    WriteEnd(const WriteEnd&) = delete;
    WriteEnd& operator=(const WriteEnd&) = delete;
    ~WriteEnd() { file_.endWrite(); }

private:
    DatabaseFile& file_;
};

DatabaseFile::DatabaseFile(std::string path, const Timeouts& timeouts)
    : path_(std::move(path)), timeouts_(timeouts), lock_(path_), checkpointAt_(kCheckpointPages) {}

/// The last connection to close a file runs a checkpoint and removes the WAL, so it does that under
/// the lock and leaves one tidy file behind. Where the lock cannot be had soon there is another
/// connection, or the file is not ours to write: then nothing is to be done, as the WAL is as good
/// a place for what was committed.
DatabaseFile::~DatabaseFile() {
    if (!database_) return;
    if (!usable() || lock_.acquire(steady_clock::now() + kCheckpointPatience) != 0)
        sqlite3_db_config(database_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    database_.reset();
}

Error DatabaseFile::open() {
    startClock();
    int code = openFile(path_, 0);
    if (code != SQLITE_OK && isFrozen()) code = openFile(uriOf(path_), SQLITE_OPEN_URI);
    if (code == SQLITE_OK) return {};
    return errorOf(code, database_ ? sqlite3_errmsg(database_.get()) : "out of memory", {});
}

int DatabaseFile::openFile(const std::string& name, int extraFlags) {
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(
        name.c_str(), &opened,
        SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE | extraFlags, nullptr);
    database_.reset(opened);
    return code == SQLITE_OK ? setUp() : code;
}

int DatabaseFile::setUp() {
    sqlite3* const database = database_.get();
    sqlite3_limit(database, SQLITE_LIMIT_ATTACHED, 0);
    sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_FKEY, 0, nullptr);
    installHooks();
    const int code = execute(kSettings);
    if (code == SQLITE_OK) switchToWal();
    return code;
}

void DatabaseFile::installHooks() {
    sqlite3* const database = database_.get();
    sqlite3_busy_handler(database, whenBusy, this);
    sqlite3_progress_handler(database, kStepsBetweenLooks, whenRunning, this);
    sqlite3_wal_hook(database, whenCommitted, this);  // in the place of SQLite's own checkpoints
}

/// Failing is no harm: a file in another journal mode works, only with more waiting.
void DatabaseFile::switchToWal() {
    Prepared mode;
    if (prepare("PRAGMA journal_mode", mode) != SQLITE_OK) return;
    if (sqlite3_step(mode.get()) != SQLITE_ROW) return;
    const auto* const name = reinterpret_cast<const char*>(sqlite3_column_text(mode.get(), 0));
    if (name == nullptr || std::string_view(name) == "wal") return;
    mode.reset();
    if (!takeLock()) execute("PRAGMA journal_mode=WAL");
    lock_.release();
}

/// Whether the file lies on read-only media and has no WAL. SQLite then cannot make the shared
/// memory that WAL mode asks for, nor is any needed, as nobody can write.
bool DatabaseFile::isFrozen() const {
    struct statvfs media {};
    if (::statvfs(path_.c_str(), &media) != 0 || (media.f_flag & ST_RDONLY) == 0) return false;
    struct stat wal {};
    return ::stat((path_ + "-wal").c_str(), &wal) != 0 || wal.st_size == 0;
}

bool DatabaseFile::usable() const {
    int moved = 0;
    sqlite3_file_control(database_.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return !spoilt_ && moved == 0;
}

Outcome DatabaseFile::run(const std::string& statement) {
    const SqliteText text = toSqlite(statement);
    if (text.error != 0) return Outcome::failure(makeError(text.error, text.errorMessage));
    if (text.text.empty()) return {};
    startClock();
    const WriteEnd end(*this);
    Prepared prepared;
    int code = prepare(text.text, prepared);
    if (code != SQLITE_OK) return failure(code, statement);
    if (sqlite3_stmt_readonly(prepared.get()) == 0) {
        if (Error error = takeLock()) return Outcome::failure(error);
    }
    Outcome outcome;
    code = runPrepared(prepared.get(), text, outcome);
    return code == SQLITE_OK ? std::move(outcome) : failure(code, statement);
}

/// @return  SQLITE_OK only if the whole text is one statement.
int DatabaseFile::prepare(std::string_view text, Prepared& prepared) {
    sqlite3_stmt* statement = nullptr;
    const char* rest = nullptr;
    const int code = sqlite3_prepare_v2(database_.get(), text.data(), static_cast<int>(text.size()),
                                        &statement, &rest);
    prepared.reset(statement);
    if (code == SQLITE_OK && rest != text.data() + text.size()) return SQLITE_ERROR;
    return code;
}

int DatabaseFile::runPrepared(sqlite3_stmt* statement, const SqliteText& text, Outcome& outcome) {
    const Value* values = text.values.data();
    const Value* const last = values + text.values.size();
    const std::size_t count = text.valuesPerRow == 0 ? text.values.size() : text.valuesPerRow;
    if (text.values.size() == count) return runRow(statement, values, count, outcome);

    int code = inTransaction_ ? SQLITE_OK : execute("BEGIN IMMEDIATE");
    for (; code == SQLITE_OK && values != last; values += count)
        code = runRow(statement, values, count, outcome);
    if (code == SQLITE_OK && !inTransaction_) code = execute("COMMIT");
    return code;
}

int DatabaseFile::runRow(sqlite3_stmt* statement, const Value* values, std::size_t count,
                         Outcome& outcome) {
    sqlite3_reset(statement);
    for (std::size_t i = 0; i < count; ++i) {
        const int code = bind(statement, static_cast<int>(i) + 1, values[i]);
        if (code != SQLITE_OK) return code;
    }
    // sqlite3_changes keeps the count of an earlier statement when this one is none that counts.
    sqlite3* const database = database_.get();
    const std::int64_t before = sqlite3_total_changes64(database);
    const int code = readRows(statement, outcome.rows);
    if (code != SQLITE_DONE) return code;
    if (sqlite3_total_changes64(database) != before)
        outcome.affectedRows += sqlite3_changes64(database);
    return SQLITE_OK;
}

Outcome DatabaseFile::begin() {
    startClock();
    if (Error error = takeLock()) return Outcome::failure(error);
    const WriteEnd end(*this);
    const int code = execute("BEGIN IMMEDIATE");
    if (code != SQLITE_OK) return failure(code);
    inTransaction_ = true;
    return {};
}

Outcome DatabaseFile::commit() {
    startClock();
    const WriteEnd end(*this);
    inTransaction_ = false;
    const int code = execute("COMMIT");
    return code == SQLITE_OK ? Outcome() : failure(code);
}

void DatabaseFile::rollback() {
    inTransaction_ = false;
    endWrite();
}

int DatabaseFile::execute(const char* text) {
    return sqlite3_exec(database_.get(), text, nullptr, nullptr, nullptr);
}

Outcome DatabaseFile::failure(int code, std::string_view statement) {
    Error error = errorOf(code, sqlite3_errmsg(database_.get()), statement);
    spoilt_ = spoilt_ || spoilsFile(code);
    // A commit whose pages are written but could not be made lasting is not seen by anyone, yet it
    // may come back when the WAL is recovered after a crash.
    const bool inDoubt = code == SQLITE_IOERR_FSYNC && !inTransaction_;
    return Outcome::failure(std::move(error), inDoubt ? Fate::InDoubt : Fate::Refused);
}

void DatabaseFile::startClock() {
    const Deadline now = steady_clock::now();
    lockDeadline_ = now + timeouts_.lock;
    answerDeadline_ = now + timeouts_.answer;
}

Error DatabaseFile::takeLock() {
    const int failure = lock_.acquire(lockDeadline_);
    return failure == 0 ? Error() : errorOfErrno(failure, "the write lock of '" + path_ + "'");
}

/// Ends what a run outside a transaction, or a transaction, has begun, however it went.
void DatabaseFile::endWrite() {
    if (inTransaction_) return;
    if (sqlite3_get_autocommit(database_.get()) == 0) execute("ROLLBACK");
    if (lock_.isHeld()) checkpointIfDue();
    lock_.release();
}

void DatabaseFile::checkpointIfDue() {
    if (walPages_ < checkpointAt_) return;
    lockDeadline_ = steady_clock::now() + kCheckpointPatience;
    const int code = sqlite3_wal_checkpoint_v2(database_.get(), "main", SQLITE_CHECKPOINT_TRUNCATE,
                                               nullptr, nullptr);
    if (code == SQLITE_OK) walPages_ = 0;
    checkpointAt_ = code == SQLITE_OK ? kCheckpointPages : walPages_ + kCheckpointRetryPages;
}

int DatabaseFile::whenBusy(void* file, int tries) {
    if (steady_clock::now() >= static_cast<DatabaseFile*>(file)->lockDeadline_) return 0;
    std::this_thread::sleep_for(milliseconds(std::clamp(tries, 1, 5)));
    return 1;
}

int DatabaseFile::whenRunning(void* file) {
    return steady_clock::now() >= static_cast<DatabaseFile*>(file)->answerDeadline_ ? 1 : 0;
}

int DatabaseFile::whenCommitted(void* file, sqlite3*, const char*, int walPages) {
    static_cast<DatabaseFile*>(file)->walPages_ = walPages;
    return SQLITE_OK;
}

}  // namespace dbaccess::sqlite
