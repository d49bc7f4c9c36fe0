// The commands that the documents show, run in their order as they stand there but for names of
// hosts, accounts, databases and files.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>

#include "tests/tool/ToolTest.h"

namespace {

/// The lines of code blocks that run the tool.
std::vector<std::string> commandsOf(const std::string& document) {
    std::ifstream stream(SOURCE_DIR "/" + document);
    std::vector<std::string> commands;
    for (std::string line; std::getline(stream, line);)
        if (std::regex_search(line, std::regex("^ {4,}([A-Z_]+=[^ ]+ )?dbservicectl ")))
            commands.push_back(line.substr(line.find_first_not_of(' ')));
    EXPECT_LT(2U, commands.size()) << document;
    return commands;
}

class DocsTest : public ToolTest {
protected:
    DocsTest() {
        std::filesystem::create_directory(inScratch("vms"));
        std::filesystem::create_symlink(SOURCE_DIR "/examples", inScratch("examples"));
        std::ofstream(inScratch("password")) << password() << '\n';
        for (const auto& [name, value] :
             {std::pair("HOST", place()), {"USER", user()}, {"PASSWORD", password()}})
            ::setenv((std::string("DBSERVICE_") + name).c_str(), value.c_str(), 1);
        ::setenv("DBSERVICE_DATABASE", secondDbName().c_str(), 1);
    }
    ~DocsTest() override {
        for (const char* name : {"HOST", "USER", "PASSWORD", "DATABASE"})
            ::unsetenv((std::string("DBSERVICE_") + name).c_str());
        access().Execute("", "drop database if exists " + secondDbName() + "_trial");
    }

    std::string place() const {
        return testServer().isPrivate ? host() + ":" + std::to_string(port()) : host();
    }

    /// What the document says of another place and account, said of these.
    std::string here(std::string command) const {
        const std::pair<const char*, std::string> kHere[] = {
            {"/var/lib/vms", inScratch("vms")},
            {"/etc/vms/password", inScratch("password")},
            {"--(to|host) (db1|localhost)\\b", "--$1 " + place()},
            {"--database vms(_trial)?\\b", "--database " + secondDbName() + "$1"},
            {"--(to-)?user vms(_setup)?\\b", "--$1user " + user()},
            {"--ask-password|DBSERVICE_SSL_CA=[^ ]*", ""},
            {"mariadb -u root -p", "cat"},
            {"^dbservicectl (import|restore) (?!.*--)",
             "dbservicectl --database " + dbName() + " $1 "},
            {"^dbservicectl copy", "dbservicectl copy --to-database " + dbName()},
        };
        for (const auto& [there, text] : kHere)
            command = std::regex_replace(command, std::regex(there), text);
        return command;
    }

    void expectToRun(const std::string& command) {
        expectOk(access().Execute("", "drop database " + dbName()));  // imports want it empty
        createSchema();
        const std::string script =
            "cd " + inScratch("") +
            " && dbservicectl() { " TOOL
            " \"$@\" --yes <<<$'secret\\nsecret'; } && set -o pipefail && { " +
            here(command) + "\n} >out 2>err";
        const int status = std::system(
            ("bash -c '" + std::regex_replace(script, std::regex("'"), R"('\'')") + "'").c_str());
        std::ifstream notes(inScratch("err"));
        EXPECT_EQ(0, status) << command << '\n' << notes.rdbuf();
    }
};

TEST_P(DocsTest, EveryCommandRuns) {
    for (const char* document : {"README.md", "docs/operations.md", "docs/scale.md"})
        for (const std::string& command : commandsOf(document))
            expectToRun(command);
}

INSTANTIATE_TEST_SUITE_P(Engines, DocsTest, ::testing::Values(dbaccess::Engine::Server),
                         engineName);

}  // namespace
