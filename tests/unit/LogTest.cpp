#include "log/Log.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#include "tests/support/Threads.h"

namespace {

using ::testing::AllOf;
using ::testing::ContainsRegex;
using ::testing::Gt;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Lt;
using ::testing::MatchesRegex;

constexpr char kLineHead[] =
    "20[0-9]{2}-[0-9]{2}-[0-9]{2}T[0-9:]{8}\\.[0-9]{3}[+-][0-9]{2}:[0-9]{2} ";

constexpr int kLevels[] = {-1, 99, 100, 199, 200, 299, 300, 2147483647};

// Tells the new process the directory of the test that started it.
constexpr char kDirectoryVariable[] = "LOG_TEST_DIRECTORY";

/// The settings are read once per process, so each case writes from a new one, which runs the test
/// again up to the write. It leaves without any clean-up, as a crash would: every line must be out
/// by then.
class LogTest : public ::testing::Test {
protected:
    LogTest() {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        const char* inherited = std::getenv(kDirectoryVariable);
        if (inherited == nullptr) {
            std::string name = (std::filesystem::temp_directory_path() / "log-XXXXXX").string();
            directory_ = ::mkdtemp(name.data());
            set(kDirectoryVariable, directory_);
        } else {
            directory_ = inherited;
        }
        set("DBSERVICE_LOG_FILE", "");
        set("DBSERVICE_LOG_LEVEL", "");
    }
    ~LogTest() override {
        for (const char* name : {kDirectoryVariable, "DBSERVICE_LOG_FILE", "DBSERVICE_LOG_LEVEL",
                                 "DBSERVICE_LOG_FILE_SIZE"})
            ::unsetenv(name);
        std::filesystem::remove_all(directory_);
    }

    static void set(const char* name, const std::string& value) {
        ::setenv(name, value.c_str(), 1);
    }

    const std::string& directory() const { return directory_; }

    static std::string contentOf(const std::string& file) {
        std::ifstream stream(file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    static void expectOnStandardError(const std::function<void()>& work,
                                      const ::testing::Matcher<const std::string&>& output) {
        EXPECT_EXIT((work(), ::_exit(0)), ::testing::ExitedWithCode(0), output);
    }

private:
    std::string directory_;
};

TEST_F(LogTest, LinesAreFilteredByLevel) {
    constexpr int kNone = 0;
    const std::pair<const char*, int> cases[] = {{"", 200},        {"debug", -1},  {"info", 100},
                                                 {"warning", 200}, {"error", 300}, {"off", kNone},
                                                 {"loud", 200}};
    for (const auto& [setting, lowest] : cases) {
        SCOPED_TRACE(setting);
        set("DBSERVICE_LOG_LEVEL", setting);
        std::string lines;
        if (setting == std::string("loud")) lines = "[^\n]* is 'loud', using 'warning'\n";
        for (const int level : kLevels)
            if (lowest != kNone && level >= lowest)
                lines += "[^\n]* Test: at " + std::to_string(level) + "\\.\n";
        expectOnStandardError(
            [] {
                for (const int level : kLevels)
                    Qz_Write_Log(level, "Test", ("at " + std::to_string(level) + ".").c_str());
            },
            MatchesRegex(lines));
    }
}

TEST_F(LogTest, ALineTellsTimeLevelThreadAndPlace) {
    expectOnStandardError(
        [] { Qz_Write_Log(200, "Initialize", "slow"); },
        MatchesRegex(kLineHead + std::string("warning [0-9]+ Initialize: slow\n")));
}

TEST_F(LogTest, OneMessageIsOneLineWhateverItHolds) {
    struct Case {
        const char* location;
        const char* message;
        const char* written;
    };
    const Case cases[] = {
        {nullptr, nullptr, " error [0-9]+ \n$"},
        {nullptr, "alone", " error [0-9]+ alone\n$"},
        {"Pool", nullptr, " error [0-9]+ Pool: \n$"},
        {"a\nb", "c\r\nd\x1b[2J\te\x7f", " a\\\\nb: c\\\\x0d\\\\nd\\\\x1b\\[2J\\\\x09e\\\\x7f\n$"},
        {"Pool", "{} {0} %s caf\xC3\xA9", " Pool: \\{\\} \\{0\\} %s caf\xC3\xA9\n$"},
    };
    for (const Case& item : cases) {
        expectOnStandardError([&] { Qz_Write_Log(300, item.location, item.message); },
                              ContainsRegex(item.written));
    }
}

TEST_F(LogTest, TheFileIsAppendedTo) {
    const std::string file = directory() + "/service.log";
    std::ofstream(file) << "kept\n";
    set("DBSERVICE_LOG_FILE", file);
    expectOnStandardError([] { Qz_Write_Log(300, "Pool", "lost"); }, IsEmpty());
    EXPECT_THAT(contentOf(file),
                MatchesRegex("kept\n" + std::string(kLineHead) + "error [0-9]+ Pool: lost\n"));
}

TEST_F(LogTest, AFullFileMakesRoomForAnother) {
    set("DBSERVICE_LOG_FILE", directory() + "/service.log");
    set("DBSERVICE_LOG_FILE_SIZE", "1");
    const auto work = [] {
        for (int i = 0; i < 20; ++i)
            Qz_Write_Log(300, "Test", std::string(400000, 'x').c_str());
    };
    expectOnStandardError(work, IsEmpty());
    for (const char* name : {"/service.log", "/service.5.log"})
        EXPECT_THAT(contentOf(directory() + name).size(), AllOf(Gt(400000U), Lt(1U << 20U)))
            << name;
    EXPECT_FALSE(std::filesystem::exists(directory() + "/service.6.log"));
}

TEST_F(LogTest, AFileThatCannotBeOpenedIsReported) {
    set("DBSERVICE_LOG_FILE", directory());
    expectOnStandardError([] { Qz_Write_Log(300, "Pool", "lost"); },
                          AllOf(HasSubstr(directory() + " for writing"), HasSubstr("error"),
                                HasSubstr("Pool: lost\n")));
}

TEST_F(LogTest, LinesOfThreadsDoNotMix) {
    const std::string file = directory() + "/service.log";
    set("DBSERVICE_LOG_FILE", file);
    expectOnStandardError(
        [] {
            inThreads(8, [](int thread) {
                for (int i = 0; i < 100; ++i)
                    Qz_Write_Log(300, "Test", std::string(200, "abcdefgh"[thread]).c_str());
            });
        },
        IsEmpty());
    std::ifstream stream(file);
    int lines = 0;
    for (std::string line; std::getline(stream, line); ++lines) {
        const std::string message = line.substr(line.find("Test: ") + 6);
        ASSERT_EQ(std::string(200, line.back()), message) << line;
    }
    EXPECT_EQ(800, lines);
}

}  // namespace
