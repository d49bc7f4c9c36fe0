#include "dbaccess/sqlite/DatabaseFile.h"

#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <new>
#include <thread>
#include <utility>
#include <variant>
#include <vector>

#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/pool/Fork.h"
#include "dbaccess/sqlite/SqliteError.h"
#include "dbaccess/sqlite/SqliteText.h"
#include "dbaccess/stats/Counters.h"

namespace dbaccess::sqlite {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr std::size_t kMostKept = 64;  // statements, of a few kilobytes each

constexpr int kCheckpointPages = 1000;
constexpr int kCheckpointRetryPages = 100;
constexpr int kLongWalPages = 16 * kCheckpointPages;

// A reader may hold up a checkpoint; the writer that runs it waits for a fifth of the time, each
// time within these limits.
constexpr milliseconds kLeastPatience{20};
constexpr milliseconds kMostPatience{500};

// How often it is looked at whether the file is still in its place. A look takes a tenth of a read
// by key.
constexpr milliseconds kBetweenLooks{1};

// The clock is looked at every so many steps of SQLite's virtual machine, well under a millisecond.
constexpr int kStepsBetweenLooks = 1000;

// How often a large result lets go of the pages that it came from: the next rows get their memory.
constexpr std::size_t kBytesBetweenReleases = 4 << 20;

constexpr const char* kSettings =
    "PRAGMA case_sensitive_like=ON;"
    "PRAGMA journal_size_limit=4194304;"
    "PRAGMA cache_size=-8000;"
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
    const std::string_view text = std::get<std::string_view>(value);
    return sqlite3_bind_text64(statement, position, text.data(), text.size(), SQLITE_STATIC,
                               SQLITE_UTF8);
}

std::unique_ptr<RowBuffer> makeRowBuffer(sqlite3_stmt* statement, KnownColumns& columns) {
    const int count = sqlite3_column_count(statement);
    if (count == 0) return nullptr;
    const int timesPrepared = sqlite3_stmt_status(statement, SQLITE_STMTSTATUS_REPREPARE, 0);
    if (!columns.names || columns.timesPrepared != timesPrepared) {
        std::vector<std::string> names;
        for (int column = 0; column < count; ++column) {
            const char* const name = sqlite3_column_name(statement, column);
            names.emplace_back(name == nullptr ? "" : name);
        }
        columns = {std::make_shared<const ColumnNames>(std::move(names)), timesPrepared};
    }
    return std::make_unique<RowBuffer>(columns.names);
}

/// @return  SQLITE_OK, or SQLITE_NOMEM when there is no memory for the value as a text.
int addValue(RowBuffer& rows, sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
        case SQLITE_NULL:
            rows.addNull();
            return SQLITE_OK;
        case SQLITE_INTEGER:
            rows.addNumber(sqlite3_value_int64(value));
            return SQLITE_OK;
        default: {
            const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
            if (text == nullptr) return SQLITE_NOMEM;
            rows.addText({text, static_cast<std::size_t>(sqlite3_value_bytes(value))});
            return SQLITE_OK;
        }
    }
}

/// Steps to the end. @return SQLITE_DONE or the code of the failure.
int readRows(sqlite3_stmt* statement, KnownColumns& columns, std::size_t largest,
             std::unique_ptr<RowBuffer>& rows) {
    // The columns are certain after the first step only: when another connection has changed the
    // tables meanwhile, SQLite prepares the statement anew in that step.
    int code = sqlite3_step(statement);
    if (!rows) rows = makeRowBuffer(statement, columns);
    if (rows) rows->limitTo(largest);
    const int count = sqlite3_column_count(statement);
    std::size_t releaseAt = kBytesBetweenReleases;
    for (; code == SQLITE_ROW; code = sqlite3_step(statement)) {
        rows->beginRow();
        for (int column = 0; column < count; ++column) {
            // One look-up of the cell for all that is asked of it. It is the connection's own, and
            // that is in use by this thread alone.
            const int failure = addValue(*rows, sqlite3_column_value(statement, column));
            if (failure != SQLITE_OK) return failure;
        }
        rows->endRow();
        if (rows->bytes() >= releaseAt) {
            sqlite3_db_release_memory(sqlite3_db_handle(statement));
            releaseAt += kBytesBetweenReleases;
        }
    }
    return code;
}

std::atomic<unsigned int> filesInUse{0};
std::atomic<unsigned int> generationInUse{0};  // as forkGeneration() was when the first was opened

/// The files beside a database are made with its rights; those made while it was read-only would
/// stay so when it is writable again. What they lack of its rights they get, where they are ours.
void passRightsOn(const std::string& path) {
    struct stat database {};
    if (::stat(path.c_str(), &database) != 0) return;
    for (const char* suffix : {"-wal", "-shm", "-lock"}) {
        const std::string companion = path + suffix;
        struct stat status {};
        if (::lstat(companion.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
            (database.st_mode & ~status.st_mode & 0666) != 0)
            static_cast<void>(::chmod(companion.c_str(), database.st_mode & 0666));
    }
}

}  // namespace

DatabaseFile::InUse::InUse() {
    if (filesInUse == 0) generationInUse = forkGeneration();
    ++filesInUse;
}

DatabaseFile::InUse::~InUse() {
    --filesInUse;
}

bool DatabaseFile::areInherited() {
    return filesInUse != 0 && generationInUse != forkGeneration();
}

/// What the objects of one file have in common.
struct DatabaseFile::Shared {
    WriterQueue queue;

    // Who holds the write lock has the rest: pages in the WAL.
    int walPages = 0;  // after the last commit of this process
    int checkpointAt = kCheckpointPages;
    int patientCheckpointAt = kLongWalPages;
    Deadline patientUntil = steady_clock::now();  // when such a one last ended
};

void DatabaseFile::Close::operator()(sqlite3* database) const {
    sqlite3_close(database);
}

void DatabaseFile::Reset::operator()(sqlite3_stmt* statement) const {
    sqlite3_reset(statement);  // a statement that is left standing keeps its snapshot of the file
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

DatabaseFile::DatabaseFile(std::string path, const Settings& settings)
    : path_(std::move(path)), settings_(settings), lock_(path_), kept_(kMostKept) {}

DatabaseFile::~DatabaseFile() {
    close();
}

/// The last connection to close a file runs a checkpoint and removes the WAL, so it does that under
/// the lock and leaves one tidy file behind. Where the lock cannot be had soon there is another
/// connection, or the file is not ours to write: then nothing is to be done, as the WAL is as good
/// a place for what was committed.
void DatabaseFile::close() {
    if (!database_) return;
    lookAgain_ = {};
    const Deadline now = steady_clock::now();
    if (!usable(now) || lock_.acquire(now + kLeastPatience) != 0)
        sqlite3_db_config(database_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    kept_.clear();
    database_.reset();
}

Error DatabaseFile::open() {
    startClock();
    spoilt_ = readOnly_ = frozen_ = moved_ = false;
    if (!shared_) {
        // A file that took this one's place has other writers, also while some have not noticed.
        struct stat status {};
        ::stat(path_.c_str(), &status);
        shared_.emplace(std::to_string(status.st_dev) + ':' + std::to_string(status.st_ino));
    }
    passRightsOn(path_);
    int code = openFile(path_, 0);
    if (code != SQLITE_OK && isFrozen()) {
        frozen_ = true;
        code = openFile(uriOf(path_), SQLITE_OPEN_URI);
    }
    if (code == SQLITE_OK) return {};
    Error error = errorOf(code, database_ ? sqlite3_errmsg(database_.get()) : "out of memory", {});
    database_.reset();
    spoilt_ = true;
    return error;
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
    int code =
        execute(settings_.syncCommits ? "PRAGMA synchronous=FULL" : "PRAGMA synchronous=NORMAL");
    if (code == SQLITE_OK) code = execute(kSettings);
    if (code != SQLITE_OK) return code;
    switchToWal();
    readOnly_ = !frozen_ && isReadOnly();
    return SQLITE_OK;
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
    if (prepare("PRAGMA journal_mode", 0, mode) != SQLITE_OK) return;
    sqlite3_stmt* const statement = mode.statement.get();
    if (sqlite3_step(statement) != SQLITE_ROW) return;
    const auto* const name = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
    if (name == nullptr || std::string_view(name) == "wal") return;
    mode.statement.reset();
    const bool held = lock_.isHeld();
    if (lock_.acquire(lockDeadline_) == 0) execute("PRAGMA journal_mode=WAL");
    if (!held) lock_.release();
}

/// Whether the file, or the shared memory beside it, could only be opened for reading.
bool DatabaseFile::isReadOnly() {
    if (sqlite3_db_readonly(database_.get(), "main") != 0) return true;
    lockDeadline_ = {};  // who is writing shows by that alone that it can be done
    const int code = execute("BEGIN IMMEDIATE");
    if (code == SQLITE_OK) execute("ROLLBACK");
    startClock();
    return (code & 0xff) == SQLITE_READONLY;
}

/// Whether the file lies on read-only media and has no WAL. SQLite then cannot make the shared
/// memory that WAL mode asks for, nor is any needed, as nobody can write.
bool DatabaseFile::isFrozen() const {
    struct statvfs media {};
    if (::statvfs(path_.c_str(), &media) != 0 || (media.f_flag & ST_RDONLY) == 0) return false;
    struct stat wal {};
    return ::stat((path_ + "-wal").c_str(), &wal) != 0 || wal.st_size == 0;
}

bool DatabaseFile::isToBeClosed() const {
    return spoilt_ || readOnly_ || (frozen_ && !isFrozen());
}

bool DatabaseFile::usable(Deadline now) {
    if (isToBeClosed()) return false;
    if (now >= lookAgain_) {
        int moved = 0;
        sqlite3_file_control(database_.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
        moved_ = moved != 0;
        lookAgain_ = now + kBetweenLooks;
    }
    return !moved_;
}

Outcome DatabaseFile::run(const Statement& statement, Deadline now) {
    startClock(now);
    const WriteEnd end(*this);
    Prepared* const kept = keptOf(statement.skeleton());
    const bool writes = kept != nullptr && sqlite3_stmt_readonly(kept->statement.get()) == 0;
    return writes && !inTransaction_ ? runQueued(statement) : runNow(statement, kept);
}

/// @param prepared  what is kept of the statement, if anything.
Outcome DatabaseFile::runNow(const Statement& statement, Prepared* prepared) {
    Prepared alone;
    if (prepared == nullptr) {
        Outcome outcome = prepareAlone(statement, alone);
        prepared = &alone;
        if (outcome.error || !alone.statement) return outcome;
    }
    if (std::exchange(prepared->used, true)) counters.keptHits.add();
    const std::unique_ptr<sqlite3_stmt, Reset> reset(prepared->statement.get());
    if (sqlite3_stmt_readonly(reset.get()) == 0) {
        if (const int failure = lock_.acquire(lockDeadline_); failure != 0)
            return lockFailure(failure);
    }
    Outcome outcome;
    const int code = runPrepared(*prepared, statement.skeleton(), outcome);
    return code == SQLITE_OK ? std::move(outcome) : failure(code, statement.text);
}

Outcome DatabaseFile::runQueued(const Statement& statement) {
    WriterQueue::Write own{statement, lockDeadline_};
    if (shared().queue.enter(own)) {
        const int failure = lock_.acquire(lockDeadline_);
        if (failure != 0) {
            shared().queue.giveUp(own);
            return lockFailure(failure);
        }
        const std::vector<WriterQueue::Write*> writes = shared().queue.begin();
        runTogether(writes);
        shared().queue.finish(writes);
    } else if (own.state == WriterQueue::Write::State::Waiting) {
        return lockFailure(ETIMEDOUT);
    }
    return std::move(own.outcome);
}

/// Runs the writes of several callers in one transaction; one alone goes without. An error that
/// ended the transaction ended it for all: nothing has taken effect then, and each runs alone.
void DatabaseFile::runTogether(const std::vector<WriterQueue::Write*>& writes) noexcept {
    if (writes.size() > 1 && commitTogether(writes)) return;
    for (WriterQueue::Write* write : writes) {
        if (database_ && sqlite3_get_autocommit(database_.get()) == 0) execute("ROLLBACK");
        runInto(*write);
    }
}

/// Each write has a savepoint, so that its error is not the others'. @return  false when nothing
/// has taken effect and no outcome is certain.
bool DatabaseFile::commitTogether(const std::vector<WriterQueue::Write*>& writes) {
    if (execute("BEGIN IMMEDIATE") != SQLITE_OK) return false;
    inTransaction_ = true;
    bool open = true;
    for (std::size_t i = 0; i < writes.size() && open; ++i) {
        execute("SAVEPOINT one");
        runInto(*writes[i]);
        // Of the rows of an insert that failed, the first ones may be there.
        open = !writes[i]->outcome.error || execute("ROLLBACK TO one") == SQLITE_OK;
        open = open && execute("RELEASE one") == SQLITE_OK;
    }
    inTransaction_ = false;
    if (!open) return false;
    startClock();
    const int code = execute("COMMIT");
    for (WriterQueue::Write* write : writes) {
        if (code != SQLITE_OK && !write->outcome.error) write->outcome = failure(code);
    }
    return true;
}

/// Runs it on the file opened anew when the write before it has spoilt that. Nothing is thrown:
/// other callers wait for their outcomes.
void DatabaseFile::runInto(WriterQueue::Write& write) noexcept {
    startClock();
    try {
        Error error;
        if (spoilt_ && !inTransaction_) {
            close();
            error = open();
        }
        write.outcome = error ? Outcome::failure(error)
                              : runNow(write.statement, keptOf(write.statement.skeleton()));
    } catch (const std::bad_alloc&) {
        write.outcome = Outcome::failure(makeError(kOutOfMemory, "out of memory"));
    }
}

/// The kept statement of a skeleton; null when it has none and is better prepared alone.
DatabaseFile::Prepared* DatabaseFile::keptOf(const Skeleton& skeleton) {
    if (skeleton.text.empty() || skeleton.text.size() > kLongestKept) return nullptr;
    Prepared& kept = kept_[skeleton.text];
    if (!kept.statement) {
        const SqliteText text = toSqlite(skeleton);
        if (text.error == 0) prepare(text.text, SQLITE_PREPARE_PERSISTENT, kept);
    }
    return kept.statement ? &kept : nullptr;
}

/// Leaves `prepared` empty also for a text without a statement.
Outcome DatabaseFile::prepareAlone(const Statement& statement, Prepared& prepared) {
    const SqliteText text = toSqlite(statement);
    if (text.error != 0) return Outcome::failure(makeError(text.error, text.errorMessage));
    const int code = text.text.empty() ? SQLITE_OK : prepare(text.text, 0, prepared);
    return code == SQLITE_OK ? Outcome() : failure(code, statement.text);
}

/// @return  SQLITE_OK only if the whole text is one statement.
int DatabaseFile::prepare(std::string_view text, unsigned int flags, Prepared& prepared) {
    sqlite3_stmt* statement = nullptr;
    const char* rest = nullptr;
    const int code = sqlite3_prepare_v3(database_.get(), text.data(), static_cast<int>(text.size()),
                                        flags, &statement, &rest);
    prepared.statement.reset(statement);
    if (code == SQLITE_OK && rest == text.data() + text.size()) return SQLITE_OK;
    prepared.statement.reset();
    return code == SQLITE_OK ? SQLITE_ERROR : code;
}

int DatabaseFile::runPrepared(Prepared& prepared, const Skeleton& skeleton, Outcome& outcome) {
    const Value* values = skeleton.values.data();
    const Value* const last = values + skeleton.values.size();
    const std::size_t count = skeleton.valuesOfRun();
    if (skeleton.values.size() == count) return runRow(prepared, values, count, outcome);

    int code = inTransaction_ ? SQLITE_OK : execute("BEGIN IMMEDIATE");
    for (; code == SQLITE_OK && values != last; values += count)
        code = runRow(prepared, values, count, outcome);
    if (code == SQLITE_OK && !inTransaction_) code = execute("COMMIT");
    return code;
}

int DatabaseFile::runRow(Prepared& prepared, const Value* values, std::size_t count,
                         Outcome& outcome) {
    sqlite3_stmt* const statement = prepared.statement.get();
    sqlite3_reset(statement);
    for (std::size_t i = 0; i < count; ++i) {
        const int code = bind(statement, static_cast<int>(i) + 1, values[i]);
        if (code != SQLITE_OK) return code;
    }
    // sqlite3_changes keeps the count of an earlier statement when this one is none that counts.
    sqlite3* const database = database_.get();
    const std::int64_t before = sqlite3_total_changes64(database);
    const int code = readRows(statement, prepared.columns, settings_.largestResult, outcome.rows);
    if (code != SQLITE_DONE) return code;
    if (sqlite3_total_changes64(database) != before)
        outcome.affectedRows += sqlite3_changes64(database);
    return SQLITE_OK;
}

Outcome DatabaseFile::begin() {
    startClock();
    if (const int failure = lock_.acquire(lockDeadline_); failure != 0) return lockFailure(failure);
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

Outcome DatabaseFile::failure(int code, std::string_view statement) noexcept {
    Error error;
    try {
        error = errorOf(code, sqlite3_errmsg(database_.get()), statement);
    } catch (const std::bad_alloc&) {
        error = makeError(kOutOfMemory, "out of memory");
    }
    spoilt_ = spoilt_ || spoilsFile(code);
    // A commit whose pages are written but could not be made lasting is not seen by anyone, yet it
    // may come back when the WAL is recovered after a crash.
    const bool inDoubt = code == SQLITE_IOERR_FSYNC && !inTransaction_;
    return Outcome::failure(std::move(error), inDoubt ? Fate::InDoubt : Fate::Refused);
}

void DatabaseFile::startClock(Deadline now) {
    lockDeadline_ = now + settings_.timeouts.lock;
    answerDeadline_ = now + settings_.timeouts.answer;
}

Outcome DatabaseFile::lockFailure(int error) const {
    return Outcome::failure(errorOfErrno(error, "the write lock of '" + path_ + "'"));
}

/// Ends what a run outside a transaction, or a transaction, has begun, however it went.
void DatabaseFile::endWrite() {
    if (inTransaction_) return;
    if (database_ && sqlite3_get_autocommit(database_.get()) == 0) execute("ROLLBACK");
    if (database_ && lock_.isHeld()) checkpointIfDue();
    lock_.release();
}

void DatabaseFile::checkpointIfDue() {
    Shared& wal = shared();
    if (wal.walPages < wal.checkpointAt) return;
    // Readers are not waited for, unless the WAL has grown long because there was always one. Who
    // waited in vain does so again when the WAL has grown by a quarter.
    const bool patient = wal.walPages >= wal.patientCheckpointAt;
    lockDeadline_ = steady_clock::now();
    if (patient) {
        const steady_clock::duration share = (lockDeadline_ - wal.patientUntil) / 4;
        lockDeadline_ += std::clamp<steady_clock::duration>(share, kLeastPatience, kMostPatience);
    }
    sqlite3_wal_checkpoint_v2(database_.get(), "main",
                              patient ? SQLITE_CHECKPOINT_RESTART : SQLITE_CHECKPOINT_PASSIVE,
                              nullptr, nullptr);
    wal.checkpointAt = wal.walPages + kCheckpointRetryPages;
    if (!patient) return;
    wal.patientCheckpointAt = wal.walPages + wal.walPages / 4;
    wal.patientUntil = steady_clock::now();
}

int DatabaseFile::whenBusy(void* file, int tries) {
    if (steady_clock::now() >= static_cast<DatabaseFile*>(file)->lockDeadline_) return 0;
    std::this_thread::sleep_for(milliseconds(std::clamp(tries, 1, 5)));
    return 1;
}

int DatabaseFile::whenRunning(void* file) {
    return steady_clock::now() >= static_cast<DatabaseFile*>(file)->answerDeadline_ ? 1 : 0;
}

/// A WAL whose pages have all been copied is written anew from its beginning.
int DatabaseFile::whenCommitted(void* file, sqlite3*, const char*, int walPages) {
    Shared& wal = static_cast<DatabaseFile*>(file)->shared();
    if (walPages < wal.walPages) {
        wal.checkpointAt = kCheckpointPages;
        wal.patientCheckpointAt = kLongWalPages;
    }
    wal.walPages = walPages;
    return SQLITE_OK;
}

}  // namespace dbaccess::sqlite
