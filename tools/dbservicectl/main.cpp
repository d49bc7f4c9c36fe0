// The command-line tool for those who look after a site's database.
#include <fmt/format.h>
#include <stdlib.h>

#include <clocale>
#include <cstdio>
#include <exception>

#include "tools/dbservicectl/Arguments.h"
#include "tools/dbservicectl/Failure.h"
#include "tools/dbservicectl/Interrupt.h"

int main(int argc, char** argv) {
    // What goes wrong is told once, by this program.
    ::setenv("DBSERVICE_LOG_LEVEL", "off", 0);
    std::setlocale(LC_CTYPE, "C.UTF-8");
    dbservicectl::watchForInterrupt();
    try {
        return dbservicectl::runCommand(argc, argv);
    } catch (const dbservicectl::Failure& failure) {
        fmt::print(stderr, "dbservicectl: {}\n", failure.what());
        if (!failure.next().empty()) fmt::print(stderr, "  {}\n", failure.next());
        return static_cast<int>(failure.exit());
    } catch (const std::exception& error) {
        fmt::print(stderr, "dbservicectl: {}\n", error.what());
        return static_cast<int>(dbservicectl::Exit::Failed);
    }
}
