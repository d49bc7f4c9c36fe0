#include <fcntl.h>
#include <gmock/gmock.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <thread>
#include <utility>
#include <vector>

#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/sqlite/WriteLock.h"
#include "tests/access/SqliteTest.h"
#include "tests/support/Threads.h"

namespace {
enum class Disk { Sound, Slow, Full, FailsToSync, NeedsNoSync };
std::atomic<Disk> disk{Disk::Sound};
std::atomic<int> syncs{0};
}  // namespace

#define EXPORTED extern "C" __attribute__((visibility("default")))

// SQLite's writes come by here, so that a disk can fail.
EXPORTED int fdatasync(int file) {
    ++syncs;
    if (disk == Disk::NeedsNoSync) return 0;
    if (disk == Disk::Slow) return ::usleep(5000);
    if (disk != Disk::FailsToSync) return static_cast<int>(::syscall(SYS_fdatasync, file));
    errno = EIO;
    return -1;
}

EXPORTED ssize_t pwrite64(int file, const void* bytes, size_t count, off64_t offset) {
    if (disk != Disk::Full) return ::syscall(SYS_pwrite64, file, bytes, count, offset);
    errno = ENOSPC;
    return -1;
}

namespace dbaccess::sqlite {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;
namespace fs = std::filesystem;

constexpr Timeouts kShort{milliseconds(100), milliseconds(100), milliseconds(150)};

constexpr const char* kTable =
    "create table device (Guid text primary key constraint too_long check(length(Guid) <= 8), "
    "Name text not null, Num integer check(length(Num) <= 3), Note text) strict, without rowid";

constexpr const char* kInsert = "insert into device (Guid, Name) values ('a', 'n')";

std::string rowOf(const std::string& guid, const std::string& note) {
    return "replace into device (Guid, Name, Note) values ('" + guid + "', 'n', '" + note + "')";
}

class SqliteEngine : public SqliteTest {
protected:
    SqliteEngine() { EXPECT_EQ(0, run(kTable)); }
    ~SqliteEngine() override { disk = Disk::Sound; }

    /// For a process: keeps the lock to its end.
    bool holdLock() const {
        WriteLock lock(file("site.db"));
        return lock.acquire(steady_clock::now() + std::chrono::seconds(10)) == 0 && ::pause() == 0;
    }
    /// Until somebody has it.
    void awaitLock() const {
        while (WriteLock(file("site.db")).acquire(steady_clock::now()) == 0)
            std::this_thread::yield();
    }

    std::string integrity() const {
        std::string answer;
        sqlite3* database = nullptr;
        sqlite3_open(file("site.db").c_str(), &database);
        const auto take = [](void* text, int, char** row, char**) {
            *static_cast<std::string*>(text) += row[0];
            return 0;
        };
        sqlite3_exec(database, "pragma integrity_check", take, &answer, nullptr);
        sqlite3_close(database);
        return answer;
    }
};

/// Runs a function in a process of its own.
class Process {
public:
    explicit Process(const std::function<bool()>& body) : id_(::fork()) {
        if (id_ == 0) ::_exit(body() ? 0 : 1);
    }
    ~Process() { kill(); }

    /// Waits for its end. Whether the function returned true.
    bool succeeded() {
        int status = 0;
        ::waitpid(id_, &status, 0);
        id_ = 0;
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

    void kill() {
        if (id_ == 0) return;
        ::kill(id_, SIGKILL);
        succeeded();
    }

private:
    pid_t id_;
};

TEST_F(SqliteEngine, DatabaseNames) {
    EXPECT_EQ(-kNoDatabaseSelected, run("select 1", ""));
    for (const char* name : {"unknown", "Site"})
        EXPECT_EQ(-kUnknownDatabase, run("select 1", name)) << name;
    const std::string wrong[] = {"../site",     "/etc/passwd",       "..", "site.db", "si te",
                                 {"site\0", 5}, std::string(65, 'a')};
    for (const std::string& name : wrong)
        EXPECT_EQ(-kWrongDatabaseName, run("select 1", name)) << name;
    EXPECT_FALSE(fs::exists(file("unknown.db")));
}

TEST_F(SqliteEngine, CreateDatabase) {
    const std::pair<const char*, int> cases[] = {
        {"CREATE DATABASE IF NOT EXISTS site", 0},
        {"create schema `two-2` default character set = utf8mb4 collate utf8mb4_nopad_bin;", 1},
        {"create database /* odd */ gerät charset 'utf8'", 1},
        {"create database three-3", -kSyntaxError},
        {"create database", -kSyntaxError},
        {"create database if exists one", -kSyntaxError},
        {"create database 'four'", -kSyntaxError},
        {"create database five; select 1", -kSyntaxError},
        {"create database `../six`", -kWrongDatabaseName},
        {"create database ``", -kWrongDatabaseName},
        {"drop database site", -kNotSupported},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(expected, run(text, "")) << text;
    for (const char* name : {"two-2", "gerät"})
        EXPECT_EQ(0, run(kTable, name)) << name;
    EXPECT_FALSE(fs::exists(fs::path(directory_).parent_path() / "six.db"));
}

TEST_F(SqliteEngine, Directory) {
    std::ofstream(file("plain")) << "text";
    for (const char* name : {"missing", "plain"}) {
        Error error;
        EXPECT_EQ(nullptr, makeConnector(file(name))->connect(TimePoint::max(), error));
        EXPECT_EQ(kCannotConnect, error.number);
        EXPECT_THAT(error.message, testing::HasSubstr(name));
    }
}

TEST_F(SqliteEngine, FailuresLeaveNothingBehind) {
    EXPECT_EQ(1, run(kInsert));
    const std::pair<std::string, int> cases[] = {
        {"insert into device (Guid, Name) values ('b', 'n'), ('a', 'n')", kDuplicateKey},
        {"insert into device (Guid, Name) values ('123456789', 'n')", kDataTooLong},
        {"insert into device (Guid, Name, Num) values ('b', 'n', 1000)", kOutOfRange},
        // a column that is not named, or named and NULL
        {"insert into device (Guid) values ('b')", kNoDefaultValue},
        {"replace into device (Guid, Note) values ('b', 'Name')", kNoDefaultValue},
        {"insert into device (Guid) select Name from device", kNoDefaultValue},
        {"insert into device (Guid, `name`) values ('b', null)", kColumnCannotBeNull},
        {"insert into device values ('b', null, 1, '')", kColumnCannotBeNull},
        {"update device set Name = null where (Guid = 'a')", kColumnCannotBeNull},
        {"insert into device (Guid, Name) values ('b', 'n'), ('c')", kValueCountMismatch},
        {kTable, kTableExists},
        {"select * form device", kSyntaxError},
    };
    const auto other = connect(kShort);
    for (const auto& [text, number] : cases) {
        const Outcome outcome = connection_->run("site", Statement(text));
        EXPECT_EQ(number, outcome.error.number) << text << ": " << outcome.error.message;
        EXPECT_EQ(Fate::Refused, outcome.fate);
        // neither a lock nor a transaction
        EXPECT_EQ(1, run(*other, "update device set Num = 1")) << text;
    }
    EXPECT_EQ(" a", values("select Guid v from device"));
}

TEST_F(SqliteEngine, WhatConcernsTheFileIsRefused) {
    const std::string outside = file("outside.db").string();
    for (const std::string& text :
         {"attach '" + outside + "' as o", "vacuum into '" + outside + "'",
          std::string("pragma journal_mode = delete"), std::string("savepoint s"),
          std::string("explain pragma wal_autocheckpoint = 1")}) {
        EXPECT_EQ(-kSyntaxError, run(text)) << text;
    }
    EXPECT_FALSE(fs::exists(outside));
    for (const char* query :
         {"select * from pragma_wal_checkpoint v", "select * from pragma_journal_mode('delete') v",
          "select load_extension('x') v"})
        EXPECT_NE(0, run(query)) << query;
}

TEST_F(SqliteEngine, TransactionsExcludeOtherWriters) {
    const auto other = connect(kShort);
    ASSERT_FALSE(connection_->begin("site").error);
    EXPECT_EQ(1, run(kInsert));
    EXPECT_EQ(-kLockWaitTimeout, run(*other, kInsert));
    EXPECT_EQ(kLockWaitTimeout, other->begin("site").error.number);
    connection_->rollback();
    EXPECT_EQ(1, run(*other, kInsert));

    ASSERT_FALSE(connection_->begin("site").error);
    EXPECT_EQ(1, run("update device set Guid = 'c'"));
    EXPECT_FALSE(connection_->commit().error);
    EXPECT_EQ(1, run(*other, "delete from device where Guid = 'c'"));

    EXPECT_EQ(kUnknownDatabase, connection_->begin("unknown").error.number);
    EXPECT_TRUE(connection_->commit().error);
}

TEST_F(SqliteEngine, StatementsEndInTime) {
    const std::string endless =
        "with recursive c(x) as (select 1 union all select x + 1 from c) select max(x) v, 1 from c";
    connection_ = connect(kShort);
    EXPECT_EQ("-1969", values(endless));
    EXPECT_EQ(-kStatementTimeout, run("insert into device (Guid, Name) " + endless));
    EXPECT_EQ(1, run(kInsert));
}

TEST_F(SqliteEngine, DamagedFiles) {
    std::ofstream(file("garbage.db")) << std::string(5000, 'x');
    fs::create_directory(file("directory.db"));
    EXPECT_EQ(-kNotDatabaseFile, run("select 1", "garbage"));
    EXPECT_EQ(-kCannotOpenFile, run("select 1", "directory"));

    EXPECT_EQ(1, run(rowOf("a", std::string(9000, 'x'))));
    connection_ = connect();  // the last to close leaves all in the one file
    EXPECT_FALSE(fs::exists(file("site.db-wal")));
    fs::copy(file("site.db"), file("short.db"));
    fs::resize_file(file("short.db"), 5000);
    EXPECT_EQ(-kDamagedFile, run("select * from device", "short"));

    fs::copy(file("site.db"), file("garbage.db"), fs::copy_options::overwrite_existing);
    EXPECT_EQ(1, run("update device set Num = 1", "garbage"));

    fs::copy(file("site.db"), file("sound.db"));
    EXPECT_EQ(0, run("select 1"));  // opens the file, of which it reads the first page alone
    std::fstream(file("site.db")).seekp(4096) << std::string(4096, 'x');
    EXPECT_EQ(-kDamagedFile, run("select * from device"));
    fs::copy(file("sound.db"), file("site.db"), fs::copy_options::overwrite_existing);
    EXPECT_EQ(" a", values("select Guid v from device"));
}

TEST_F(SqliteEngine, FileIsReplacedWhileOpen) {
    EXPECT_EQ(1, run(kInsert));
    for (const char* name : {"site.db", "site.db-wal", "site.db-shm"})
        fs::remove(file(name));
    std::this_thread::sleep_for(milliseconds(2));  // it is not looked at more often
    EXPECT_EQ(-kUnknownDatabase, run("select * from device"));
    EXPECT_EQ(1, run("create database site"));
    EXPECT_EQ(-kNoSuchTable, run("select * from device"));
}

TEST_F(SqliteEngine, DiskFailures) {
    disk = Disk::Full;
    EXPECT_EQ(-kTableFull, run(kInsert));
    ASSERT_FALSE(connection_->begin("site").error);
    EXPECT_EQ(1, run(kInsert));
    EXPECT_EQ(kTableFull, connection_->commit().error.number);
    connection_->rollback();

    // What was written but not made lasting may come back after a crash.
    disk = Disk::FailsToSync;
    const Outcome outcome = connection_->run("site", Statement(kInsert));
    EXPECT_EQ(kErrorOnWrite, outcome.error.number);
    EXPECT_EQ(Fate::InDoubt, outcome.fate);

    disk = Disk::Sound;
    EXPECT_EQ(1, run(rowOf("a", "")));
    EXPECT_EQ("ok", integrity());
}

TEST_F(SqliteEngine, ReadOnlyFileCanBeReadAndIsWrittenOnceItCanBe) {
    connection_.reset();
    Process killed([this] { return run(*connect().release(), kInsert) == 1; });
    ASSERT_TRUE(killed.succeeded());  // and leaves a WAL
    sqlite3_vfs* const vfs = sqlite3_vfs_find(nullptr);
    const auto refuseToWrite = [](const char* path, int flags, int mode) {
        if ((flags & O_ACCMODE) == O_RDONLY) return ::open(path, flags, mode);
        errno = EROFS;
        return -1;
    };
    int (*const readOnlyOpen)(const char*, int, int) = refuseToWrite;
    vfs->xSetSystemCall(vfs, "open", reinterpret_cast<sqlite3_syscall_ptr>(readOnlyOpen));
    const auto first = connect();
    const auto second = connect();
    connection_ = connect();
    EXPECT_EQ(" a", values("select Guid v from device"));
    for (Connection* connection : {first.get(), second.get(), connection_.get()})
        EXPECT_EQ(-kReadOnlyFile, run(*connection, "delete from device"));
    EXPECT_FALSE(second->begin("site").error);
    EXPECT_EQ(-kReadOnlyFile, run(*second, "delete from device"));
    second->rollback();
    EXPECT_EQ(" a", values("select Guid v from device"));  // all are idle now
    vfs->xSetSystemCall(vfs, "open", nullptr);
    EXPECT_EQ(1, run(*first, "update device set Num = 1"));
    EXPECT_EQ(1, run(*second, "update device set Num = 2"));
}

TEST_F(SqliteEngine, FilesBesideADatabaseFollowItsRights) {
    const auto setRights = [this](fs::perms rights) { fs::permissions(file("site.db"), rights); };
    connection_.reset();
    fs::remove(file("site.db-lock"));
    setRights(fs::perms{0444});
    WriteLock(file("site.db")).acquire(steady_clock::now());
    connection_ = connect();
    EXPECT_EQ(0, run("select 1"));  // what others cannot write now would stay so
    setRights(fs::perms{0664});
    EXPECT_EQ(0, run(*connect(), "select 1"));
    for (const char* name : {"site.db-wal", "site.db-shm", "site.db-lock"})
        EXPECT_EQ(fs::perms{0664}, fs::status(file(name)).permissions()) << name;
}

TEST_F(SqliteEngine, ValuesWithoutMemoryAreNotEmpty) {
    EXPECT_EQ("  ", values("select '' v union all select zeroblob(0)"));
    sqlite3_hard_heap_limit64(sqlite3_memory_used() + 1000000);
    EXPECT_EQ("-1037", values("select zeroblob(100000000) v"));
    sqlite3_hard_heap_limit64(0);
    EXPECT_EQ(1, run(kInsert));
}

TEST_F(SqliteEngine, ForkedProcessIsRefused) {
    std::atomic<bool> end{false};
    std::thread busy([&] {
        const auto connection = connect();
        while (!end)
            run(*connection, rowOf("busy", ""));
    });
    for (int i = 0; i < 50; ++i) {
        ASSERT_FALSE(connection_->begin("site").error);
        EXPECT_EQ(1, run(rowOf(std::to_string(i), "")));
        Process child([&] {
            ::alarm(10);
            const bool refused = run(kInsert) == -kNotSupported &&
                                 run(*connect(), "select 1") == -kNotSupported &&
                                 connect()->begin("site").error.number == kNotSupported &&
                                 connection_->commit().error.number == kNotSupported;
            connection_->rollback();
            connection_.reset();
            return refused;
        });
        EXPECT_TRUE(child.succeeded());
        EXPECT_FALSE(connection_->commit().error);
    }
    end = true;
    busy.join();
    EXPECT_EQ(" 50", values("select count(*) v from device where Guid <> 'busy'"));
    EXPECT_EQ("ok", integrity());
}

TEST_F(SqliteEngine, WritersAndTheLastToCloseHoldTheLock) {
    const std::string update = "update device set Num = 1";
    connection_.reset();
    Process holder([this] { return holdLock(); });
    awaitLock();

    connection_ = connect(kShort);
    const auto begin = steady_clock::now();
    EXPECT_EQ(-kLockWaitTimeout, run(update));
    EXPECT_GE(steady_clock::now() - begin, kShort.lock);
    EXPECT_LT(steady_clock::now() - begin, kShort.lock * 10);
    EXPECT_EQ(kLockWaitTimeout, connection_->begin("site").error.number);
    EXPECT_EQ(" 0", values("select count(*) v from device"));
    connection_.reset();
    EXPECT_TRUE(fs::exists(file("site.db-wal")));

    connection_ = connect(kShort);
    EXPECT_EQ(-kLockWaitTimeout, run(update));
    holder.kill();
    EXPECT_EQ(0, run(*connect(kShort), update));
    EXPECT_EQ(0, run(update));
    WriteLock lock(file("site.db"));
    EXPECT_EQ(0, lock.acquire(steady_clock::now()));
    EXPECT_EQ(-kLockWaitTimeout, run(update));
    lock.release();
    connection_.reset();
    EXPECT_FALSE(fs::exists(file("site.db-wal")));
}

TEST_F(SqliteEngine, LockIsFreeAlthoughAForkedProcessLives) {
    std::array<int, 2> pipe{};
    ASSERT_EQ(0, ::pipe(pipe.data()));
    Process holder([&] {
        WriteLock lock(file("site.db"));
        EXPECT_EQ(0, lock.acquire(steady_clock::now() + std::chrono::seconds(10)));
        if (::fork() != 0) return ::pause() == 0;
        ::close(pipe[1]);
        char end = 0;
        return ::read(pipe[0], &end, 1) == 0;
    });
    awaitLock();
    holder.kill();
    WriteLock lock(file("site.db"));
    ASSERT_EQ(0, lock.acquire(steady_clock::now()));
    const Process other([] { return ::pause() == 0; });
    lock.release();
    Process next([this] { return WriteLock(file("site.db")).acquire(steady_clock::now()) == 0; });
    EXPECT_TRUE(next.succeeded());
    for (const int end : pipe)
        ::close(end);
}

TEST_F(SqliteEngine, ProcessThatWritesAllTheTimeLetsOthersIn) {
    connection_.reset();
    disk = Disk::Slow;
    const Process busy([this] {
        const auto connection = connect();
        while (run(*connection, rowOf("busy", "")) == 1) {
        }
        return false;
    });
    connection_ = connect();
    while (values("select Guid v from device").empty())
        std::this_thread::yield();
    steady_clock::duration waited{};
    for (int i = 0; i < 20; ++i) {
        const auto begin = steady_clock::now();
        EXPECT_EQ(1, run(rowOf("patient", "")));
        waited += steady_clock::now() - begin;
        std::this_thread::sleep_for(milliseconds(10));
    }
    EXPECT_LT(waited, std::chrono::seconds(1));
}

TEST_F(SqliteEngine, ProcessesWriteTogether) {
    constexpr int kThreads = 3;
    constexpr int kRows = 120;
    const auto writeInThreads = [&](char process) {
        inThreads(kThreads, [&](int thread) {
            const auto connection = connect();
            for (int i = 0; i < kRows; ++i) {
                const std::string guid = process + std::to_string(thread * kRows + i);
                EXPECT_EQ(1, run(*connection, rowOf(guid, std::string(4000, 'x'))));
                EXPECT_EQ(0, run(*connection, "select Guid from device where Guid = 'x'"));
            }
        });
        return !HasFailure();
    };
    connection_.reset();  // SQLite's connections do not survive a fork
    Process other([&] { return writeInThreads('p'); });
    writeInThreads('q');
    EXPECT_TRUE(other.succeeded());
    connection_ = connect();
    EXPECT_EQ(" " + std::to_string(2 * kThreads * kRows), values("select count(*) v from device"));
    EXPECT_EQ("ok", integrity());
}

constexpr const char* kEntry =
    "create table entry (k text constraint too_long check(length(k) <= 8), once text unique)";

std::string entry(const std::string& key, const std::string& once) {
    return "('" + key + "'," + (once.empty() ? "null" : "'" + once + "'") + ")";
}
TEST_F(SqliteEngine, WritesThatMeetHaveTheirOwnAnswers) {
    constexpr int kThreads = 8;
    constexpr int kWrites = 200;
    EXPECT_EQ(0, run(kEntry));
    EXPECT_EQ(1, run("insert into entry values('first','first')"));
    EXPECT_EQ(0, run("create table once (k text primary key on conflict rollback)"));
    EXPECT_EQ(1, run("insert into once values('x')"));
    const auto write = [&](char name, std::vector<std::string>& written) {
        const auto connection = connect();
        const auto insert = [&](const std::string& rows, std::int64_t answer) {
            EXPECT_EQ(answer, run(*connection, "insert into entry values" + rows)) << rows;
        };
        for (int i = 0; i < kWrites; ++i) {
            const std::string key = name + std::to_string(i);
            const std::string row = entry(key, "");
            const std::string race = entry(key, (name < 'p' ? 'a' : 'p') + std::to_string(i));
            switch (i % 8) {
                case 0:
                    insert(entry(key + "too long", ""), -kDataTooLong);
                    continue;
                case 1:
                    insert(entry(key, key) + "," + entry(key, "first"), -kDuplicateKey);
                    continue;
                case 2:
                    if (i % 40 == 2) {  // it ends the transaction that it is in
                        EXPECT_EQ(-kDuplicateKey, run(*connection, "insert into once values('x')"));
                    } else {
                        insert("('x')", -kValueCountMismatch);
                    }
                    continue;
                case 3:  // one of the threads has it
                    if (const auto answer = run(*connection, "insert into entry values" + race);
                        answer != 1) {
                        EXPECT_EQ(-kDuplicateKey, answer);
                        continue;
                    }
                    break;
                case 4:
                    EXPECT_FALSE(connection->begin("site").error);
                    insert(row, 1);
                    EXPECT_FALSE(connection->commit().error);
                    break;
                case 5:
                    insert(std::string(row).append(",").append(row), 2);
                    written.push_back(key);
                    break;
                default:
                    insert(row, 1);
            }
            written.push_back(key);
        }
    };
    const auto writeInThreads = [&](char first, int count) {
        std::vector<std::vector<std::string>> written(static_cast<std::size_t>(count));
        inThreads(count, [&](int i) {
            write(static_cast<char>(first + i), written[static_cast<std::size_t>(i)]);
        });
        std::vector<std::string> all;
        for (const auto& keys : written)
            all.insert(all.end(), keys.begin(), keys.end());
        std::sort(all.begin(), all.end());
        std::string expected;
        for (const std::string& key : all)
            expected.append(" ").append(key);
        connection_ = connect();
        const char end = static_cast<char>(first + count);
        EXPECT_EQ(expected, values("select k v from entry where k >= '" + std::string(1, first) +
                                   "' and k < '" + end + "' and k <> 'first' order by k"));
        return !HasFailure();
    };
    connection_.reset();
    disk = Disk::Slow;
    Process other([&] { return writeInThreads('p', 2); });
    syncs = 0;
    writeInThreads('a', kThreads);
    EXPECT_LT(syncs, kThreads * kWrites / 3);
    EXPECT_TRUE(other.succeeded());
    EXPECT_EQ(" " + std::to_string(2 * kWrites / 8),
              values("select count(once) v from entry where once <> 'first'"));
    EXPECT_EQ("ok", integrity());
}

TEST_F(SqliteEngine, AFailedCommitIsToldToAllItWasFor) {
    constexpr int kThreads = 8;
    EXPECT_EQ(0, run(kEntry));
    for (const Disk failure : {Disk::Full, Disk::FailsToSync}) {
        EXPECT_LE(0, run("delete from entry"));
        disk = Disk::Slow;
        std::atomic<int> failed{0};
        std::array<std::string, kThreads> written;
        inThreads(kThreads, [&](int i) {
            const auto connection = connect();
            bool hasFailed = false;
            for (int row = 10, further = 0; further < 10 && row < 9999; ++row) {
                const std::string key = std::to_string(i) + std::to_string(row);
                const Outcome outcome =
                    connection->run("site", Statement("insert into entry values" + entry(key, "")));
                if (!outcome.error) {
                    written[static_cast<std::size_t>(i)] += " " + key;
                    further += hasFailed ? 1 : 0;
                    if (row == 15 && i == 0) disk = failure;
                } else {
                    const bool full = failure == Disk::Full;
                    EXPECT_EQ(full ? kTableFull : kErrorOnWrite, outcome.error.number);
                    EXPECT_EQ(full ? Fate::Refused : Fate::InDoubt, outcome.fate);
                    if (!std::exchange(hasFailed, true) && ++failed == kThreads) disk = Disk::Slow;
                }
            }
        });
        for (std::size_t i = 0; i < kThreads; ++i)
            EXPECT_EQ(written[i], values("select k v from entry where k like '" +
                                         std::to_string(i) + "%' order by length(k), k"));
        EXPECT_EQ("ok", integrity());
    }
}

TEST_F(SqliteEngine, EachWaitsForTheLockAsLongAsItMay) {
    connection_.reset();
    Process holder([this] { return holdLock(); });
    awaitLock();
    std::vector<std::unique_ptr<Connection>> connections;
    const auto limitOf = [](int i) { return milliseconds(i % 3 == 0 ? 1500 : 100 * i); };
    for (int i = 0; i < 6; ++i)
        connections.push_back(connect({milliseconds(100), limitOf(i), std::chrono::seconds(5)}));
    inThreads(6, [&](int i) {
        std::this_thread::sleep_for(milliseconds(20 * i));
        const auto begin = steady_clock::now();
        EXPECT_EQ(-kLockWaitTimeout, run(*connections[static_cast<std::size_t>(i)], kInsert));
        const auto waited = steady_clock::now() - begin;
        EXPECT_GE(waited, limitOf(i)) << i;
        EXPECT_LT(waited, limitOf(i) + milliseconds(700)) << i;
    });
    holder.kill();
    inThreads(6, [&](int i) {
        EXPECT_EQ(1, run(*connections[static_cast<std::size_t>(i)], rowOf(std::to_string(i), "")));
    });
}

TEST_F(SqliteEngine, WalStaysSmallAndReadersHoldNoWriterUp) {
    const auto write = [&](int rows) {
        for (int i = 0; i < rows; ++i)
            EXPECT_EQ(1, run(rowOf(std::to_string(i % 100), std::string(8000, 'x'))));
    };
    disk = Disk::NeedsNoSync;  // so that the time measured is that of waiting
    const auto walSize = [this] { return fs::file_size(file("site.db-wal")); };
    write(700);
    EXPECT_LT(walSize(), 5000000U);

    sqlite3* reader = nullptr;
    sqlite3_open(file("site.db").c_str(), &reader);
    sqlite3_exec(reader, "begin; select * from device", nullptr, nullptr, nullptr);
    const auto begin = steady_clock::now();
    write(700);
    // Waiting at each write for the reader, or once for as long as for a writer, would take longer.
    EXPECT_LT(steady_clock::now() - begin, std::chrono::seconds(6));
    EXPECT_GT(walSize(), 6000000U);
    sqlite3_close(reader);
    write(100);
    EXPECT_LT(walSize(), 5000000U);
}

}  // namespace
}  // namespace dbaccess::sqlite
