#include "tests/tool/ToolTest.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace {

std::string contentOf(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

ToolRun runTool(const std::vector<std::string>& arguments, const std::string& input) {
    const TemporaryDirectory directory;
    const std::string in = directory.path() + "/in";
    const std::string out = directory.path() + "/out";
    const std::string err = directory.path() + "/err";
    std::ofstream(in, std::ios::binary) << input;
    const pid_t child = ::fork();
    if (child == 0) {
        if (std::freopen(in.c_str(), "r", stdin) == nullptr ||
            std::freopen(out.c_str(), "w", stdout) == nullptr ||
            std::freopen(err.c_str(), "w", stderr) == nullptr)
            std::_Exit(127);
        std::vector<std::string> words{TOOL};
        words.insert(words.end(), arguments.begin(), arguments.end());
        std::vector<char*> pointers;
        for (std::string& word : words)
            pointers.push_back(word.data());
        pointers.push_back(nullptr);
        ::execv(TOOL, pointers.data());
        std::_Exit(127);
    }
    int status = 0;
    EXPECT_EQ(child, ::waitpid(child, &status, 0));
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), contentOf(out),
            contentOf(err)};
}

std::vector<std::string> ToolTest::connection(const std::string& database) const {
    std::vector<std::string> words{"--host", host(), "--database", database};
    if (!user().empty()) words.insert(words.end(), {"--user", user()});
    if (port() != 0) words.insert(words.end(), {"--port", std::to_string(port())});
    if (!password().empty()) {
        const std::string file = inScratch("password");
        std::ofstream(file) << password() << '\n';
        words.insert(words.end(), {"--password-file", file});
    }
    return words;
}

ToolRun ToolTest::toolOn(const std::string& database, const std::vector<std::string>& arguments,
                         const std::string& input) const {
    std::vector<std::string> words = connection(database);
    words.insert(words.end(), arguments.begin(), arguments.end());
    return runTool(words, input);
}

ToolRun ToolTest::tool(const std::vector<std::string>& arguments, int exit,
                       const std::string& input) const {
    ToolRun run = toolOn(dbName(), arguments, input);
    EXPECT_EQ(exit, run.exit) << ::testing::PrintToString(arguments) << '\n' << run.notes;
    return run;
}
