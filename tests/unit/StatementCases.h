#ifndef TESTS_UNIT_STATEMENTCASES_H
#define TESTS_UNIT_STATEMENTCASES_H

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

#include "dbservice/DBService.h"
#include "tests/support/ScriptedDataAccess.h"

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

    /// One call of an operation and the access layer's calls that it makes, as "Insert insert into".
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
