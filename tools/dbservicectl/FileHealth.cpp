#include <fmt/format.h>
#include <linux/magic.h>
#include <sqlite3.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <memory>

#include "dbaccess/pool/HostText.h"
#include "tools/dbservicectl/Interrupt.h"
#include "tools/dbservicectl/Report.h"
#include "tools/dbservicectl/Rows.h"

namespace dbservicectl {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

// The thresholds; docs/operations.md names them.
constexpr std::uintmax_t kMostWalBytes = 256'000'000;
constexpr std::uintmax_t kLeastFreeBytes = 1'000'000'000;
constexpr auto kUsualTime = std::chrono::seconds(30);

constexpr const char* kRestore =
    "stop the programs, keep a copy of the files, and restore the last backup";

/// A handle of its own that reads and never runs a checkpoint, which is the writers' business.
class Reader {
public:
    Reader(const std::string& file, Depth depth)
        : end_(depth == Depth::Full ? Clock::time_point::max() : Clock::now() + kUsualTime) {
        sqlite3* opened = nullptr;
        const int code = sqlite3_open_v2(file.c_str(), &opened,
                                         SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
        database_.reset(opened);
        if (code != SQLITE_OK) fail();
        sqlite3_db_config(opened, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
        sqlite3_busy_timeout(opened, 5000);
        sqlite3_progress_handler(opened, 1000, isToStop, this);
    }

    /// The columns of each row. False when the time was up before the last one.
    template <typename Take>
    bool read(const std::string& text, const Take& take) {
        sqlite3_stmt* prepared = nullptr;
        if (sqlite3_prepare_v2(database_.get(), text.c_str(), -1, &prepared, nullptr) != SQLITE_OK)
            fail();
        const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> statement(
            prepared, &sqlite3_finalize);
        int code = 0;
        while ((code = sqlite3_step(prepared)) == SQLITE_ROW) {
            const auto* first = reinterpret_cast<const char*>(sqlite3_column_text(prepared, 0));
            take(std::string(first == nullptr ? "" : first), sqlite3_column_int64(prepared, 1));
        }
        throwIfInterrupted("nothing was changed");
        if (code != SQLITE_DONE && code != SQLITE_INTERRUPT) fail();
        return code == SQLITE_DONE;
    }

private:
    [[noreturn]] void fail() {
        const int code = sqlite3_errcode(database_.get());
        const bool isDamaged = code == SQLITE_CORRUPT || code == SQLITE_NOTADB;
        throw Failure(sqlite3_errmsg(database_.get()), isDamaged ? kRestore : "");
    }

    static int isToStop(void* reader) {
        try {
            throwIfInterrupted("");
        } catch (const Failure&) {
            return 1;
        }
        return Clock::now() < static_cast<Reader*>(reader)->end_ ? 0 : 1;
    }

    struct Close {
        void operator()(sqlite3* database) const { sqlite3_close(database); }
    };
    std::unique_ptr<sqlite3, Close> database_;
    const Clock::time_point end_;
};

std::uintmax_t sizeOf(const std::string& file) {
    std::error_code failure;
    const std::uintmax_t size = fs::file_size(file, failure);
    return failure ? 0 : size;
}

void lookAtFile(const std::string& file, Report& report) {
    const std::string wal = file + "-wal";
    report.tell("file", file + ", " + sizeText(sizeOf(file)));
    report.tell("WAL", sizeText(sizeOf(wal)));
    if (sizeOf(wal) > kMostWalBytes)
        report.problem("WAL", "has grown long",
                       "end the programs that read without a pause; the next writes empty it");
    for (const std::string& name : {file, fs::path(file).parent_path().string()})
        if (::access(name.c_str(), W_OK) != 0)
            report.problem("file", name + " cannot be written by this account",
                           "change its owner or rights, or use the service's account");
}

void lookAtDisk(const std::string& file, Report& report) {
    std::error_code failure;
    const fs::space_info space = fs::space(file, failure);
    if (!failure) {
        report.tell("disk", sizeText(space.available) + " free of " + sizeText(space.capacity));
        if (space.available < kLeastFreeBytes)
            report.problem("disk", "less than " + sizeText(kLeastFreeBytes) + " are free",
                           "make room, or 'dbservicectl prune' old events");
    }
    // The WAL is shared through memory, which machines do not share.
    struct statfs disk {};
    if (::statfs(file.c_str(), &disk) != 0) return;
    for (const long type : {long{NFS_SUPER_MAGIC}, long{SMB_SUPER_MAGIC}, long{CIFS_SUPER_MAGIC},
                            long{SMB2_SUPER_MAGIC}})
        if (disk.f_type == type)
            report.problem("disk", "is a network file system, on which databases are damaged",
                           "move the directory to a disk of this machine, or use a server");
}

void lookAtPages(const std::string& file, Depth depth, Report& report) {
    Reader reader(file, depth);
    const std::string pragma = depth == Depth::Full ? "integrity_check" : "quick_check";
    std::vector<std::string> found;
    const bool finished = reader.read("pragma " + pragma + "(5)", [&](std::string line, auto) {
        if (line != "ok") found.push_back(std::move(line));
    });
    for (const std::string& line : found)
        report.problem("integrity", line, kRestore);
    if (found.empty())
        report.tell("integrity", finished
                                     ? "ok, by " + pragma
                                     : fmt::format("nothing found in {} s; --full looks at all",
                                                   kUsualTime.count()));
    // With the pages of the indexes.
    std::map<std::string, std::int64_t> bytes;
    bool counted =
        finished && reader.read(
                        "select tbl_name, sum(pgsize) from dbstat "
                        "join sqlite_schema using(name) "
                        "where tbl_name not like 'sqlite%' group by tbl_name",
                        [&](const std::string& table, std::int64_t size) { bytes[table] = size; });
    for (const auto& [table, size] : bytes) {
        const std::unique_ptr<char, decltype(&sqlite3_free)> count(
            sqlite3_mprintf("select '', count(*) from \"%w\"", table.c_str()), &sqlite3_free);
        std::int64_t rows = 0;
        counted = counted && reader.read(count.get(), [&](const std::string&, std::int64_t number) {
            rows = number;
        });
        if (counted && rows != 0)
            report.tell("table " + table, fmt::format("rows: {}, {}", rows,
                                                      sizeText(static_cast<std::uint64_t>(size))));
    }
    if (!counted) report.tell("tables", "not counted in the time; --full counts them");
}

}  // namespace

bool examineFile(Session& session, Depth depth, Report& report) {
    const Target& target = session.target();
    const std::string file =
        (fs::path(dbaccess::parseHost(target.host, 0).directory) / (target.dbName + ".db"))
            .string();
    report.tell("engine", "embedded SQLite");
    report.tell("version", sqlite3_libversion());
    const bool isWhole =
        report.look("database", [&] { valueOf(session.access(), session.dbName(), "1"); });
    if (!fs::exists(file)) return false;
    lookAtFile(file, report);
    lookAtDisk(file, report);
    if (depth != Depth::Quick) report.look("integrity", [&] { lookAtPages(file, depth, report); });
    return isWhole;
}

}  // namespace dbservicectl
