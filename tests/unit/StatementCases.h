#ifndef TESTS_UNIT_STATEMENTCASES_H
#define TESTS_UNIT_STATEMENTCASES_H

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

#include "dbservice/DBService.h"
#include "tests/unit/ScriptedDataAccess.h"

/// A DBService over the scripted access layer, with the database "vms".
class ScriptedService : public testing::Test {
protected:
    ScriptedService() {
        scripted::script() = {};
        dbservice::DB_CONNECTION_PROPERTY settings;
        settings.dbName = "vms";
        dbservice::DBService::Initialize(settings);
        scripted::script() = {};
    }
    ~ScriptedService() override {
        dbservice::DBService::Cleanup();
        EXPECT_EQ(0, scripted::script().openSets);
    }

    static dbservice::DBService& service() { return *dbservice::DBService::GetDBServiceObject(); }

    /// One call of an operation and the access layer's calls that it makes, as "Insert insert
    /// into".
    struct StatementCase {
        const char* name;
        std::function<void()> call;
        std::vector<std::string> expected;
    };

    /// `largestId` is what the next-Id query finds, where there is one.
    static void check(const std::vector<StatementCase>& cases, const std::string& largestId = "7") {
        for (const StatementCase& oneCase : cases) {
            SCOPED_TRACE(oneCase.name);
            scripted::script() = {};
            scripted::script().queries.push_back(scripted::Rows{{"Id"}, {{largestId}}});
            oneCase.call();
            std::vector<std::string> calls;
            for (std::string call : scripted::script().calls) {
                const auto dbName = call.find(" vms:");
                ASSERT_NE(std::string::npos, dbName) << call;
                calls.push_back(call.erase(dbName, 5));
            }
            EXPECT_EQ(oneCase.expected, calls);
        }
    }

    /// Gives the next query one row in which a text column holds its own name and a number its
    /// position in `reads` ("string Guid", "int Num", ...), runs `call`, and expects the columns to
    /// be read in this order and the last statement to be `echo`: an update with the record that
    /// was read shows that each column went to its member.
    static void checkReads(const std::vector<std::string>& reads, const std::function<void()>& call,
                           const std::string& echo) {
        scripted::Rows answer{{}, {{}}};
        for (const std::string& read : reads) {
            const std::string column = read.substr(read.find(' ') + 1);
            answer.columns.push_back(column);
            answer.rows[0].push_back(
                read.rfind("string", 0) == 0 ? column : std::to_string(answer.columns.size()));
        }
        scripted::script() = {};
        scripted::script().queries.push_back(answer);
        call();
        EXPECT_EQ(reads, scripted::script().reads);
        EXPECT_EQ(echo, scripted::script().calls.back());
    }

    /// What an operation answers to each result of the access layer.
    static std::vector<int> resultsOf(const std::function<int()>& operation) {
        std::vector<int> results;
        for (const std::int64_t result : {5, 1, 0, -1, -1062}) {
            scripted::script() = {};
            scripted::script().results.push_back(result);
            results.push_back(operation());
        }
        return results;
    }
};

/// Of `resultsOf`: 0 for any count, or the access layer's own value.
inline std::vector<int> folded() {
    return {0, 0, 0, -1, -1062};
}
inline std::vector<int> passedThrough() {
    return {5, 1, 0, -1, -1062};
}

#endif
