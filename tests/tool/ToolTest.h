#ifndef TESTS_TOOL_TOOLTEST_H
#define TESTS_TOOL_TOOLTEST_H

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "tests/support/engines/EngineTest.h"
#include "tests/support/engines/TemporaryDirectory.h"

/// What a run of the program came to.
struct ToolRun {
    int exit = -1;      ///< 128 and the signal's number where one ended it
    std::string data;   ///< its standard output
    std::string notes;  ///< its standard error
};

/// Runs dbservicectl as a program of its own, not on a terminal.
/// @param input  what it reads from standard input.
ToolRun runTool(const std::vector<std::string>& arguments, const std::string& input = "");

/// Runs the tool on the test's database.
class ToolTest : public EngineTest {
protected:
    /// The options that lead to the database.
    std::vector<std::string> connection(const std::string& database) const;

    /// Runs a command on a database.
    ToolRun toolOn(const std::string& database, const std::vector<std::string>& arguments,
                   const std::string& input = "") const;

    /// Runs a command on the test's, and expects it to end with this exit code.
    ToolRun tool(const std::vector<std::string>& arguments, int exit = 0,
                 const std::string& input = "") const;

    std::string inScratch(const std::string& name) const { return scratch_.path() + "/" + name; }

private:
    TemporaryDirectory scratch_;
};

#endif
