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
    explicit ScriptedSet(Rows rows) : rows_(std::move(rows)) { ++script().openSets; }
    ~ScriptedSet() override { --script().openSets; }

    int rowsCount() const override {
        return rows_.announced >= 0 ? rows_.announced : static_cast<int>(rows_.rows.size());
    }
    bool next() override { return ++row_ <= rows_.rows.size(); }

    bool getString(std::string column, std::string& value) override {
        const std::string* found = find("string " + column, column);
        if (found != nullptr) value = *found;
        return found != nullptr;
    }
    bool getInt(std::string column, int* value) override {
        const std::string* found = find("int " + column, column);
        if (found != nullptr) *value = std::stoi(*found);
        return found != nullptr;
    }
    unsigned int getUInt(std::string column) override {
        const std::string* found = find("uint " + column, column);
        return found == nullptr ? 0 : static_cast<unsigned int>(std::stoul(*found));
    }
    std::uint64_t getUInt64(std::string column) override {
        const std::string* found = find("uint64 " + column, column);
        return found == nullptr ? 0 : std::stoull(*found);
    }

private:
    const std::string* find(std::string read, const std::string& column) {
        script().reads.push_back(std::move(read));
        const auto at = std::find(rows_.columns.begin(), rows_.columns.end(), column);
        if (at == rows_.columns.end() || row_ == 0 || row_ > rows_.rows.size()) return nullptr;
        return &rows_.rows[row_ - 1][static_cast<std::size_t>(at - rows_.columns.begin())];
    }

    const Rows rows_;
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
    if (script().queries.empty()) return new scripted::ScriptedSet({});
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
