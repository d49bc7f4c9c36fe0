#include <Poco/Data/Data.h>
#include <Poco/Data/MySQL/Connector.h>
#include <Poco/Data/SQLite/Connector.h>
#include <Poco/Data/Session.h>
#include <Poco/Data/Statement.h>
#include <Poco/Data/TypeHandler.h>

#include "bench/LibraryContestant.h"

namespace Poco::Data {

/// How a record is read of a row, as the library asks for it.
template <class Record>
class RecordHandler {
public:
    static std::size_t size() {
        return std::tuple_size_v<decltype(bench::fieldsOf(std::declval<Record&>()))>;
    }

    static void prepare(std::size_t position, const Record&,
                        const AbstractPreparator::Ptr& preparator) {
        Record record;
        const auto one = [&](auto& field) {
            TypeHandler<std::decay_t<decltype(field)>>::prepare(position++, field, preparator);
        };
        std::apply([&](auto&... fields) { (one(fields), ...); }, bench::fieldsOf(record));
    }

    static void extract(std::size_t position, Record& record, const Record&,
                        AbstractExtractor::Ptr extractor) {
        const auto one = [&](auto& field) { extractor->extract(position++, field); };
        std::apply([&](auto&... fields) { (one(fields), ...); }, bench::fieldsOf(record));
    }
};

template <>
class TypeHandler<bench::Device> : public RecordHandler<bench::Device> {};
template <>
class TypeHandler<bench::T_AlarmInfo> : public RecordHandler<bench::T_AlarmInfo> {};
template <>
class TypeHandler<bench::T_FaceCapture> : public RecordHandler<bench::T_FaceCapture> {};
template <>
class TypeHandler<bench::Number> : public RecordHandler<bench::Number> {};

}  // namespace Poco::Data

namespace bench {
namespace {

namespace Keywords = Poco::Data::Keywords;

Poco::Data::Session connect(const Place& place) {
    if (place.engine == dbaccess::Engine::Server) {
        Poco::Data::MySQL::Connector::registerConnector();
        return {"MySQL", "host=" + place.host + ";port=" + std::to_string(place.port) +
                             ";user=" + place.user + ";password=" + place.password +
                             ";db=" + place.database + ";character-set=utf8mb4"};
    }
    Poco::Data::SQLite::Connector::registerConnector();
    return {"SQLite", place.file(), 10};
}

/// Statements prepared once for each session, exchanging values with variables.
struct PocoData {
    class Session : public Poco::Data::Session {
    public:
        explicit Session(const Place& place)
            : Poco::Data::Session(connect(place)),
              onServer_(place.engine == dbaccess::Engine::Server) {
            if (!onServer_) *this << "pragma synchronous=full", Keywords::now;
        }

        /// Against a server `begin` switches off what `commit` does not switch on again.
        void commit() {
            Poco::Data::Session::commit();
            if (onServer_) setFeature("autoCommit", true);
        }

    private:
        const bool onServer_;
    };

    /// With parameters of the types of a tuple.
    template <class Values>
    class Statement {
    public:
        Statement(Session& session, const std::string& text) : statement_(session << text) {
            std::apply([&](auto&... value) { (statement_.addBind(Keywords::use(value)), ...); },
                       values_);
        }
        template <class Record>
        Statement(Session& session, const std::string& text, std::vector<Record>& records)
            : Statement(session, text) {
            statement_.addExtract(Keywords::into(records));
        }

        template <class References>
        void run(const References& values) {
            values_ = values;
            statement_.execute();
        }

    private:
        Values values_;
        Poco::Data::Statement statement_;
    };

    template <class Record, class... Arguments>
    class Query {
    public:
        Query(Session& session, const char* text) : statement_(session, text, records_) {}

        std::vector<Record> operator()(const Arguments&... arguments) {
            statement_.run(std::tie(arguments...));
            return std::exchange(records_, {});
        }

    private:
        std::vector<Record> records_;
        Statement<std::tuple<Arguments...>> statement_;
    };

    template <class Row>
    using Insert = InsertByRow<Session, Statement<Row>, Row>;
};

}  // namespace

std::unique_ptr<Contestant> makePoco(const Place& place) {
    return std::make_unique<LibraryContestant<PocoData>>(place);
}

}  // namespace bench
