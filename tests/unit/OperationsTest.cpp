#include "tests/unit/Operations.h"

#include <algorithm>
#include <ctime>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <stdexcept>

#include "tests/unit/StatementFile.h"

namespace dbservice {

using scripted::script;
using testing::IsEmpty;

namespace {

DBService* theDb = nullptr;

template <class Named>
const Named& named(const std::vector<Named>& all, const std::string& name) {
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const Named& one) { return one.name == name; });
    if (found == all.end()) throw std::runtime_error("statements.txt has no " + name);
    return *found;
}

/// The section that has the name of the running test.
const Section& section() {
    return named(statementFile(), testing::UnitTest::GetInstance()->current_test_info()->name());
}

/// "NOW" in place of the times from `start` on.
std::string withoutTimes(std::string text, std::time_t start) {
    for (std::time_t time = start; time <= std::time(nullptr); ++time)
        text = std::regex_replace(text, std::regex(std::to_string(time)), "NOW");
    return text;
}

std::string joined(const std::vector<std::string>& texts) {
    std::string result;
    for (const std::string& text : texts)
        result += (result.empty() ? "" : ", ") + text;
    return result;
}

/// The sets of the call are released.
std::string answerOf(const Call& call) {
    std::string text = call().text;
    EXPECT_EQ(0, script().openSets);
    return text;
}

void checkSent(const Operation& operation, const Call& call) {
    script() = {};
    script().columnsHoldTheirNames = true;
    const std::time_t start = std::time(nullptr);
    const bool readsRecords = answerOf(call).find("record") != std::string::npos;
    EXPECT_EQ(readsRecords ? section().reads : "", joined(script().reads));

    for (std::size_t i = 0; i < std::max(operation.sent.size(), script().calls.size()); ++i) {
        std::string expected = "nothing";
        std::string sent = "nothing";
        if (i < operation.sent.size())
            expected = operation.sent[i].verb + " vms: " + operation.sent[i].text;
        if (i < script().calls.size()) sent = withoutTimes(script().calls[i], start);
        EXPECT_EQ(expected, sent);
    }
}

void checkAnswers(const Answers& answers, const Call& call) {
    constexpr int kResults[] = {5, 1, 0, -1, -1062};
    for (std::size_t i = 0; i < answers.toResults.size(); ++i) {
        script() = {};
        script().results = {kResults[i]};
        EXPECT_EQ(answers.toResults[i], answerOf(call)) << "to " << kResults[i];
    }
    constexpr const char* kOutcomes[] = {"two rows", "no rows", "a failed query"};
    for (std::size_t i = 0; i < answers.toRows.size(); ++i) {
        script() = {};
        script().columnsHoldTheirNames = i == 0;
        if (i == 2) script().queries = {std::nullopt};
        EXPECT_EQ(answers.toRows[i], answerOf(call)) << "to " << kOutcomes[i];
    }
}

}  // namespace

DBService& db() {
    return *theDb;
}

ScriptedService::ScriptedService() {
    DB_CONNECTION_PROPERTY settings;
    settings.dbName = "vms";
    DBService::Initialize(settings);
    theDb = DBService::GetDBServiceObject();
    script() = {};
    script().columnsHoldTheirNames = true;
}

ScriptedService::~ScriptedService() {
    DBService::Cleanup();
    EXPECT_EQ(0, script().openSets);
}

void Operations::check(const std::string& name, const Answers& answers, const Call& call) {
    SCOPED_TRACE(name);
    checked_.push_back(name);
    checkSent(named(section().operations, name), call);
    checkAnswers(answers, call);
    if (!throughService_) return;
    DBService notConnected;
    theDb = &notConnected;
    checkNothingSent(answers.toNothing, call);
    theDb = DBService::GetDBServiceObject();
}

void Operations::checkNothingSent(const char* answer, const Call& call) {
    script() = {};
    EXPECT_EQ(answer, call().text);
    EXPECT_THAT(script().calls, IsEmpty());
}

void Operations::TearDown() {
    std::vector<std::string> inFile;
    for (const Operation& operation : section().operations)
        inFile.push_back(operation.name);
    EXPECT_EQ(inFile, checked_);
}

TEST(StatementFile, EachSectionHasItsTest) {
    std::set<std::string> tests;
    const auto& program = *testing::UnitTest::GetInstance();
    for (int i = 0; i < program.total_test_suite_count(); ++i) {
        const testing::TestSuite& suite = *program.GetTestSuite(i);
        for (int j = 0; j < suite.total_test_count(); ++j)
            tests.insert(suite.name() + std::string(".") + suite.GetTestInfo(j)->name());
    }
    for (const Section& section : statementFile())
        EXPECT_EQ(1U, tests.count("Operations." + section.name)) << section.name;
}

TEST(StatementFile, EachOperationOfTheServiceIsInIt) {
    std::map<std::string, int> inFile;
    for (const Section& section : statementFile()) {
        for (const Operation& operation : section.operations)
            ++inFile[operation.name.substr(0, operation.name.find(' '))];
    }
    int overloads = 0;
    std::ifstream header(SOURCE_DIR "/dbservice/DBService.h");
    const std::regex declaration(
        R"(^    \S+ ((Insert|Update|Delete|Query|IsExist)[A-Z]\w*|Login)\()");
    std::smatch found;
    for (std::string line; std::getline(header, line);) {
        if (!std::regex_search(line, found, declaration)) continue;
        ++overloads;
        EXPECT_LE(0, --inFile[found[1]]) << found[1] << " has more overloads than entries";
    }
    EXPECT_LT(100, overloads);
}

}  // namespace dbservice
