#include <mysql.h>
#include <sqlite3.h>

#include <charconv>
#include <stdexcept>
#include <string_view>

#include "bench/LibraryContestant.h"

namespace bench {
namespace {

/// Connector/C, with texts: the values stand in the statement, what comes back is text.
struct Texts {
    class Session {
    public:
        explicit Session(const Place& place) : handle_(mysql_init(nullptr), &mysql_close) {
            mysql_optionsv(handle_.get(), MYSQL_SET_CHARSET_NAME, "utf8mb4");
            if (mysql_real_connect(handle_.get(), place.host.c_str(), place.user.c_str(),
                                   place.password.c_str(), place.database.c_str(), place.port,
                                   nullptr, 0) == nullptr)
                fail();
        }

        void send(const std::string& text) {
            if (mysql_real_query(handle_.get(), text.data(), text.size()) != 0) fail();
        }

        MYSQL_RES* result() {
            MYSQL_RES* const result = mysql_store_result(handle_.get());
            if (result == nullptr) fail();
            return result;
        }

    private:
        [[noreturn]] void fail() { throw std::runtime_error(mysql_error(handle_.get())); }

        std::unique_ptr<MYSQL, decltype(&mysql_close)> handle_;
    };

    // The values hold nothing to escape.
    static void append(std::string& text, const std::string& value) {
        text.append("'").append(value).append("'");
    }
    template <class Integer>
    static void append(std::string& text, Integer value) {
        char digits[24];
        text.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
    }

    static void read(const char* bytes, std::size_t length, std::string& value) {
        value.assign(bytes, length);
    }
    template <class Integer>
    static void read(const char* bytes, std::size_t length, Integer& value) {
        std::from_chars(bytes, bytes + length, value);
    }

    template <class Record, class... Arguments>
    class Query {
    public:
        Query(Session& session, std::string_view text) : session_(session), text_(text) {}

        std::vector<Record> operator()(const Arguments&... arguments) {
            session_.send(statement(arguments...));
            const std::unique_ptr<MYSQL_RES, decltype(&mysql_free_result)> result(
                session_.result(), &mysql_free_result);
            std::vector<Record> records(mysql_num_rows(result.get()));
            for (Record& record : records) {
                const char* const* const row = mysql_fetch_row(result.get());
                const unsigned long* const lengths = mysql_fetch_lengths(result.get());
                std::size_t i = 0;
                const auto take = [&](auto& field) {
                    read(row[i], lengths[i], field);
                    ++i;
                };
                std::apply([&](auto&... fields) { (take(fields), ...); }, fieldsOf(record));
            }
            return records;
        }

    private:
        std::string statement(const Arguments&... arguments) const {
            std::string text;
            std::size_t begin = 0;
            const auto put = [&](const auto& value) {
                const std::size_t parameter = text_.find('?', begin);
                text.append(text_, begin, parameter - begin);
                append(text, value);
                begin = parameter + 1;
            };
            (put(arguments), ...);
            static_cast<void>(put);  // without arguments
            return text.append(text_, begin);
        }

        Session& session_;
        const std::string_view text_;
    };

    /// All rows in one statement.
    template <class Row>
    class Insert {
    public:
        Insert(Session& session, std::string_view head) : session_(session), head_(head) {}

        template <class RowAt>
        void operator()(int count, RowAt rowAt) {
            std::string text(head_);
            for (int i = 0; i < count; ++i) {
                text += i == 0 ? "(" : ",(";
                const auto put = [&](const auto& value) {
                    append(text, value);
                    text += ',';
                };
                std::apply([&](const auto&... values) { (put(values), ...); }, rowAt(i));
                text.back() = ')';
            }
            session_.send(text);
        }

    private:
        Session& session_;
        const std::string_view head_;
    };
};

/// SQLite's C interface, with kept statements and bound values.
struct Bound {
    class Session {
    public:
        explicit Session(const Place& place) {
            check(sqlite3_open_v2(place.file().c_str(), &handle_,
                                  SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr));
            check(sqlite3_busy_timeout(handle_, 10000));
            run("pragma synchronous=full");
        }
        Session(const Session&) = delete;
        Session& operator=(const Session&) = delete;
        ~Session() { sqlite3_close_v2(handle_); }

        void run(const char* text) {
            check(sqlite3_exec(handle_, text, nullptr, nullptr, nullptr));
        }
        void begin() { run("begin immediate"); }
        void commit() { run("commit"); }
        sqlite3* handle() { return handle_; }
        void check(int code) {
            if (code != SQLITE_OK && code != SQLITE_DONE)
                throw std::runtime_error(sqlite3_errmsg(handle_));
        }

    private:
        sqlite3* handle_ = nullptr;
    };

    class Statement {
    public:
        Statement(Session& session, const std::string& text) : session_(session) {
            session_.check(sqlite3_prepare_v3(session_.handle(), text.c_str(), -1,
                                              SQLITE_PREPARE_PERSISTENT, &handle_, nullptr));
        }
        Statement(const Statement&) = delete;
        Statement& operator=(const Statement&) = delete;
        ~Statement() { sqlite3_finalize(handle_); }

        template <class Values>
        void run(const Values& values) {
            run(values, [] {});
        }

        template <class Values, class Use>
        void run(const Values& values, Use useRow) {
            int position = 0;
            std::apply([&](const auto&... value) { (bindValue(++position, value), ...); }, values);
            int code = sqlite3_step(handle_);
            for (; code == SQLITE_ROW; code = sqlite3_step(handle_))
                useRow();
            sqlite3_reset(handle_);
            session_.check(code);
        }

        void read(int column, std::string& value) {
            const auto* const text =
                reinterpret_cast<const char*>(sqlite3_column_text(handle_, column));
            value.assign(text, static_cast<std::size_t>(sqlite3_column_bytes(handle_, column)));
        }
        template <class Integer>
        void read(int column, Integer& value) {
            value = static_cast<Integer>(sqlite3_column_int64(handle_, column));
        }

    private:
        void bindValue(int position, const std::string& value) {
            sqlite3_bind_text(handle_, position, value.data(), static_cast<int>(value.size()),
                              SQLITE_STATIC);
        }
        template <class Integer>
        void bindValue(int position, Integer value) {
            sqlite3_bind_int64(handle_, position, value);
        }

        Session& session_;
        sqlite3_stmt* handle_ = nullptr;
    };

    template <class Record, class... Arguments>
    class Query {
    public:
        Query(Session& session, const char* text) : statement_(session, text) {}

        std::vector<Record> operator()(const Arguments&... arguments) {
            std::vector<Record> records;
            statement_.run(std::tie(arguments...), [&] {
                int column = 0;
                std::apply([&](auto&... fields) { (statement_.read(column++, fields), ...); },
                           fieldsOf(records.emplace_back()));
            });
            return records;
        }

    private:
        Statement statement_;
    };

    template <class Row>
    using Insert = InsertByRow<Session, Statement, Row>;
};

}  // namespace

std::unique_ptr<Contestant> makeRaw(const Place& place) {
    if (place.engine == dbaccess::Engine::Server)
        return std::make_unique<LibraryContestant<Texts>>(place);
    return std::make_unique<LibraryContestant<Bound>>(place);
}

}  // namespace bench
