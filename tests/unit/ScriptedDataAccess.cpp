#include "tests/unit/ScriptedDataAccess.h"

#include <algorithm>

#include "dbaccess/DataAccess.h"

namespace scripted {

Script& script() {
    static Script theScript;
    return theScript;
}

namespace {

class ScriptedSet final : public dbaccess::ResultSet {
public:
    explicit ScriptedSet(Rows rows) : rows_(std::move(rows)), ownNames_(false) {
        ++script().openSets;
    }
    /// Two rows whose columns hold their own names.
    ScriptedSet() : rows_{{}, {{}, {}}}, ownNames_(true) { ++script().openSets; }
    ~ScriptedSet() override { --script().openSets; }

    int rowsCount() const override {
        return rows_.announced >= 0 ? rows_.announced : static_cast<int>(rows_.rows.size());
    }
    bool next() override { return ++row_ <= rows_.rows.size(); }

    bool getString(std::string column, std::string& value) override {
        const auto found = find("string", column);
        if (found) value = *found;
        return found.has_value();
    }
    bool getInt(std::string column, int* value) override {
        const auto found = find("int", column);
        if (found) *value = std::stoi(*found);
        return found.has_value();
    }
    unsigned int getUInt(std::string column) override {
        return static_cast<unsigned int>(std::stoul(find("uint", column).value_or("0")));
    }
    std::uint64_t getUInt64(std::string column) override {
        return std::stoull(find("uint64", column).value_or("0"));
    }

private:
    /// The column's value in the current row; none when it is NULL.
    std::optional<std::string> find(const std::string& type, const std::string& column) {
        if (ownNames_ && row_ == 1) {
            script().reads.push_back(type + " " + column);
            rows_.columns.push_back(column);
        }
        if (row_ == 0 || row_ > rows_.rows.size()) return std::nullopt;
        const auto& columns = rows_.columns;
        const auto at = std::find(columns.begin(), columns.end(), column);
        if (at == columns.end()) return std::nullopt;
        const auto place = static_cast<std::size_t>(at - columns.begin());
        if (!ownNames_) return rows_.rows[row_ - 1][place];
        return (type == "string" ? column : std::to_string(place + 1)) + (row_ == 2 ? "2" : "");
    }

    Rows rows_;
    const bool ownNames_;
    std::size_t row_ = 0;
};

void note(const std::string& operation, const std::string& dbName, const std::string& text) {
    script().calls.push_back(operation + " " + dbName + ": " + text);
}

std::int64_t nextResult() {
    if (script().results.empty()) return 1;
    const std::int64_t result = script().results.front();
    script().results.pop_front();
    return result;
}

}  // namespace
}  // namespace scripted

namespace dbaccess {

using scripted::note;
using scripted::script;

class DataAccess::Impl {};

DataAccess::DataAccess(const std::string& host, unsigned int port, const std::string& user,
                       const std::string& password) {
    note("connect", host, std::to_string(port) + " " + user + " " + password);
}

DataAccess::~DataAccess() {
    note("disconnect", "", "");
}

bool DataAccess::Initialize(unsigned int minConnections, unsigned int maxConnections,
                            bool autoReconnect, bool waitForConnection) {
    note("Initialize", "",
         std::to_string(minConnections) + " " + std::to_string(maxConnections) + " " +
             std::to_string(autoReconnect) + " " + std::to_string(waitForConnection));
    return script().initializes;
}

ResultSet* DataAccess::Query(std::string dbName, std::string statement) {
    note("Query", dbName, statement);
    if (script().queries.empty()) {
        if (!script().columnsHoldTheirNames) return new scripted::ScriptedSet(scripted::Rows{});
        if (statement.rfind("select max(Id)", 0) != 0) return new scripted::ScriptedSet;
        return new scripted::ScriptedSet(scripted::Rows{{"Id"}, {{"1000"}}});
    }
    const auto rows = script().queries.front();
    script().queries.pop_front();
    return rows ? new scripted::ScriptedSet(*rows) : nullptr;
}

std::int64_t DataAccess::Insert(std::string dbName, std::string statement) {
    note("Insert", dbName, statement);
    return scripted::nextResult();
}

int DataAccess::Update(std::string dbName, std::string statement) {
    note("Update", dbName, statement);
    return static_cast<int>(scripted::nextResult());
}

int DataAccess::Update(std::string dbName, std::deque<std::string>& statements) {
    for (const std::string& statement : statements)
        note("Update list", dbName, statement);
    return static_cast<int>(scripted::nextResult());
}

int DataAccess::Execute(std::string dbName, std::string statement) {
    note("Execute", dbName, statement);
    return static_cast<int>(scripted::nextResult());
}

void DataAccess::ReleaseResulitSet(ResultSet* set) {
    if (set != nullptr) ++script().releasedSets;
    delete set;
}

}  // namespace dbaccess
