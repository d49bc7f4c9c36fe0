#include <soci/mysql/soci-mysql.h>
#include <soci/soci.h>
#include <soci/sqlite3/soci-sqlite3.h>

#include "bench/LibraryContestant.h"

namespace bench {
namespace {

/// Statements prepared once for each session, exchanging values with variables.
struct Soci {
    class Session : public soci::session {
    public:
        explicit Session(const Place& place) {
            if (place.engine == dbaccess::Engine::Server) {
                open(soci::mysql, "host=" + place.host + " port=" + std::to_string(place.port) +
                                      " user=" + place.user + " password='" + place.password +
                                      "' dbname=" + place.database + " charset=utf8mb4");
            } else {
                open(soci::sqlite3, "db=" + place.file() + " timeout=10 synchronous=full");
            }
        }
    };

    /// Parameters have names there.
    static std::string named(const std::string& text) {
        std::string result;
        int number = 0;
        for (const char character : text) {
            if (character == '?') {
                result += ":p" + std::to_string(++number);
            } else {
                result += character;
            }
        }
        return result;
    }

    /// With parameters of the types of a tuple.
    template <class Values>
    class Statement {
    public:
        template <class... Fields>
        Statement(Session& session, const std::string& text, const std::tuple<Fields&...>& fields)
            : reads_(sizeof...(Fields) > 0), statement_(session) {
            std::apply([&](auto&... field) { (statement_.exchange(soci::into(field)), ...); },
                       fields);
            std::apply([&](auto&... value) { (statement_.exchange(soci::use(value)), ...); },
                       values_);
            statement_.alloc();
            statement_.prepare(named(text));
            statement_.define_and_bind();
        }
        Statement(Session& session, const std::string& text)
            : Statement(session, text, std::tuple<>()) {}

        template <class References>
        void run(const References& values) {
            values_ = values;
            statement_.execute(!reads_);
        }
        bool fetch() { return statement_.fetch(); }

    private:
        const bool reads_;
        Values values_;
        soci::statement statement_;
    };

    template <class Record, class... Arguments>
    class Query {
    public:
        Query(Session& session, const char* text) : statement_(session, text, fieldsOf(record_)) {}

        std::vector<Record> operator()(const Arguments&... arguments) {
            std::vector<Record> records;
            statement_.run(std::tie(arguments...));
            while (statement_.fetch())
                records.emplace_back(std::move(record_));
            return records;
        }

    private:
        Record record_;
        Statement<std::tuple<Arguments...>> statement_;
    };

    template <class Row>
    using Insert = InsertByRow<Session, Statement<Row>, Row>;
};

}  // namespace

std::unique_ptr<Contestant> makeSoci(const Place& place) {
    return std::make_unique<LibraryContestant<Soci>>(place);
}

}  // namespace bench
