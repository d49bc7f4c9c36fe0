#include "dbaccess/DataAccess.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <limits>
#include <new>
#include <vector>

#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/mariadb/MariaDbConnector.h"
#include "dbaccess/pool/Fork.h"
#include "dbaccess/pool/HostText.h"
#include "dbaccess/pool/StatementRunner.h"
#include "dbaccess/reader/TokenReader.h"
#include "dbaccess/settings/Settings.h"
#include "dbaccess/sqlite/SqliteConnector.h"
#include "dbaccess/stats/Counters.h"
#include "dbaccess/stats/StatementForm.h"
#include "log/Log.h"
#include "log/RepeatLog.h"

namespace dbaccess {
namespace {

/// Failures on the way to the database. Their messages quote no statement.
bool isConnectionError(int number) {
    return isClientError(number) || isLoginRefusal(number) || isTooManyConnections(number) ||
           number == kUnknownClusterState;
}

/// One line for a failure, and for its repetitions one that sums them up: of a statement, or of
/// whatever needs a connection. What an engine says of a statement quotes values out of it,
/// passwords among them, and so stays in LastError.
/// @param advice  ends the first line
void logFailure(RepeatLog& log, const Error& error, const std::string& dbName,
                std::string_view summary, const std::string& advice) {
    std::string kind = std::to_string(error.number) + " (" + error.sqlState + ")";
    std::string what = " on '" + dbName + "': ";
    what += summary;
    if (isConnectionError(error.number))
        return log.write(kQzLogError, kind, what + ": " + error.message + advice);
    log.write(kQzLogWarning, kind + what, advice);
}

std::string textOf(std::chrono::nanoseconds time) {
    char text[32];
    std::snprintf(text, sizeof text, "%.3f ms", static_cast<double>(time.count()) * 1e-6);
    return text;
}

int asInt(std::int64_t result) {
    constexpr std::int64_t kMost = std::numeric_limits<int>::max();
    return static_cast<int>(std::min(result, kMost));
}

std::unique_ptr<Connector> makeConnector(const HostText& host, const std::string& user,
                                         const std::string& password, const Settings& settings) {
    if (host.engine == Engine::Embedded) return sqlite::makeConnector(host.directory, settings);
    return mariadb::makeConnector(host.servers, user, password, settings);
}

/// Inserts take the highest number of their table from a query, and a query that failed for an
/// empty table: their row would get the number 1, without an error. So the insert that follows
/// such a query on its thread fails instead.
class UnreadNumber {
public:
    /// What became of a statement on this thread.
    void note(const void* access, const std::string& dbName, const Statement& statement,
              const Error& error) {
        access_ = error && readsHighest(statement.text) ? access : nullptr;
        if (access_ == nullptr) return;
        table_ = tableOf(dbName, statement);
        error_ = error;
    }

    /// The error of the query when the statement would be such an insert.
    Error of(const void* access, const std::string& dbName, const Statement& statement) const {
        const bool inserts = access == access_ && statement.kind == StatementKind::Write &&
                             tableOf(dbName, statement) == table_;
        return inserts ? error_ : Error();
    }

private:
    static bool readsHighest(const std::string& text) {
        TokenReader reader(text);
        return isWord(reader.next(), "select") && isWord(reader.next(), "max");
    }

    static std::string tableOf(const std::string& dbName, const Statement& statement) {
        const std::string summary = summaryOf(statement.text);  // "insert device"
        return dbName + '\n' + summary.substr(summary.find(' ') + 1);
    }

    const void* access_ = nullptr;  // of the query that failed last; null: none did
    std::string table_;
    Error error_;
};

UnreadNumber& unreadNumber() {
    thread_local UnreadNumber number;
    return number;
}

}  // namespace

class DataAccess::Impl {
public:
    Impl(HostText host, const std::string& user, const std::string& password,
         const Settings& settings)
        : host_(std::move(host)),
          settings_(settings),
          runner_(std::make_unique<StatementRunner>(makeConnector(host_, user, password, settings_),
                                                    settings_.timeouts.call)) {}
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    ~Impl() {
        // What a forked child inherited is its parent's: even to close it would end the parent's
        // sessions.
        if (forked()) {
            static_cast<void>(runner_.release());
        } else {
            log_.flush();
        }
    }

    Engine engine() const { return host_.engine; }

    bool open(PoolSettings settings) {
        settings.idle = settings_.idle;
        settings.age = settings_.age;
        Error error = refusal();
        if (!error) runner_->open(settings, error);
        if (error) log(error, "", "connect");
        SetLastError(error);
        return !error;
    }

    Outcome run(const std::string& dbName, std::string text) {
        const TimePoint begin = Clock::now();
        const Statement statement(std::move(text));
        const Error unread = unreadNumber().of(this, dbName, statement);
        Outcome outcome = unread ? Outcome::failure(unread)
                                 : guarded([&] { return runner_->run(dbName, statement, begin); });
        unreadNumber().note(this, dbName, statement, outcome.error);
        tell(
            begin, outcome.error, dbName, [&] { return summaryOf(statement.text); },
            [&] { return formOf(statement.text); });
        return outcome;
    }

    Outcome runList(const std::string& dbName, const std::deque<std::string>& texts) {
        const TimePoint begin = Clock::now();
        Outcome outcome = guarded([&] {
            return runner_->run(dbName, std::vector<Statement>(texts.begin(), texts.end()), begin);
        });
        const auto summary = [&] { return "list of " + std::to_string(texts.size()); };
        tell(begin, outcome.error, dbName, summary, [&] {
            std::string form = summary();
            for (const std::string& text : texts) {
                if (form.size() >= kLongestForm) return form + "; ...";
                form += "; " + formOf(text);
            }
            return form;
        });
        return outcome;
    }

private:
    /// Whether the process was forked off since this was used first. Another thread may have held
    /// any of the locks then, and nobody will ever let go of it.
    bool forked() {
        const unsigned int now = forkGeneration();
        unsigned int first = usedIn_;
        if (first == now) return false;
        first = kUnused;
        return !usedIn_.compare_exchange_strong(first, now) && first != now;
    }

    /// Not in a forked process, where another thread may have held the log's locks too.
    void log(const Error& error, const std::string& dbName, std::string_view summary) {
        if (!forked()) logFailure(log_, error, dbName, summary, adviceOn(error));
    }

    /// What to do about a database that was not set up: once, not for each of its tables.
    std::string adviceOn(const Error& error) {
        const bool missing = error.number == kUnknownDatabase || error.number == kNoSuchTable;
        if (!missing || advised_.exchange(error.number) == error.number) return {};
        return "; run `dbservicectl schema create` or call schema::Create to make what is missing";
    }

    /// Tells everybody what became of a call: its caller, the figures, the log.
    /// @param summary, form  make the texts, only when they are wanted
    template <class Summary, class Form>
    void tell(TimePoint begin, const Error& error, const std::string& dbName, Summary summary,
              Form form) {
        const TimePoint end = Clock::now();
        counters.statements.add();
        counters.statementTime.add(end - begin);
        if (error) {
            counters.failed.add();
            if (error.number == kServerLost) counters.inDoubt.add();
            log(error, dbName, summary());
        } else {
            const bool slow =
                settings_.slowStatement.count() != 0 && end - begin >= settings_.slowStatement;
            if ((slow || logsDebug()) && !forked()) logCall(slow, end - begin, dbName, form());
            log_.tick(end);
        }
        SetLastError(error);
    }

    void logCall(bool slow, Clock::duration time, const std::string& dbName,
                 const std::string& form) {
        const std::string what = " on '" + dbName + "': " + form;
        if (slow) return log_.write(kQzLogWarning, "slow" + what, ": " + textOf(time));
        Qz_Write_Log(kQzLogDebug, "DataAccess", (textOf(time) + what).c_str());
    }

    Error refusal() {
        if (host_.error) return host_.error;
        if (!forked()) return {};
        return makeError(kServerGone, "this process was forked: it needs a DataAccess of its own");
    }

    template <class Call>
    Outcome guarded(Call call) {
        if (Error error = refusal()) return Outcome::failure(error);
        try {
            return call();
        } catch (const ResultTooLarge&) {
            return Outcome::failure(makeError(
                kCapacityExceeded, "the result takes more than largest-result = " +
                                       std::to_string(settings_.largestResult) + " bytes"));
        } catch (const std::bad_alloc&) {
            return Outcome::failure(makeError(kOutOfMemory, "out of memory"));
        }
    }

    static constexpr unsigned int kUnused = std::numeric_limits<unsigned int>::max();

    const HostText host_;
    const Settings settings_;
    RepeatLog log_{"DataAccess"};
    std::atomic<int> advised_{0};  // the number of the error that advice was given on last
    std::unique_ptr<StatementRunner> runner_;
    std::atomic<unsigned int> usedIn_{kUnused};  // the generation of the process
};

DataAccess::DataAccess(const std::string& host, unsigned int port, const std::string& user,
                       const std::string& password)
    : DataAccess(host, port, user, password, "") {}

DataAccess::DataAccess(const std::string& host, unsigned int port, const std::string& user,
                       const std::string& password, const std::string& options) {
    HostText text = parseHost(host, port);
    Error error;
    const Settings settings = readSettings(options, error);
    if (!text.error) text.error = error;
    impl_ = std::make_unique<Impl>(std::move(text), user, password, settings);
}

DataAccess::~DataAccess() = default;

bool DataAccess::Initialize(unsigned int minConnections, unsigned int maxConnections,
                            bool autoReconnect, bool waitForConnection) {
    PoolSettings settings;
    settings.minConnections = minConnections;
    settings.maxConnections = maxConnections;
    settings.autoReconnect = autoReconnect;
    settings.waitForConnection = waitForConnection;
    return impl_->open(settings);
}

ResultSet* DataAccess::Query(std::string dbName, std::string statement) {
    Outcome outcome = impl_->run(dbName, std::move(statement));
    if (outcome.error) return nullptr;
    if (!outcome.rows) return new RowBuffer(std::vector<std::string>());
    return outcome.rows.release();
}

std::int64_t DataAccess::Insert(std::string dbName, std::string statement) {
    return Execute(std::move(dbName), std::move(statement));
}

int DataAccess::Update(std::string dbName, std::string statement) {
    return Execute(std::move(dbName), std::move(statement));
}

int DataAccess::Update(std::string dbName, std::deque<std::string>& statements) {
    const Outcome outcome = impl_->runList(dbName, statements);
    return outcome.error ? -outcome.error.number : asInt(outcome.affectedRows);
}

int DataAccess::Execute(std::string dbName, std::string statement) {
    const Outcome outcome = impl_->run(dbName, std::move(statement));
    return outcome.error ? -outcome.error.number : asInt(outcome.affectedRows);
}

void DataAccess::ReleaseResulitSet(ResultSet* set) {
    delete set;
}

Engine DataAccess::engine() const noexcept {
    return impl_->engine();
}

}  // namespace dbaccess
