#ifndef TESTS_FUZZ_FUZZ_H
#define TESTS_FUZZ_FUZZ_H

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/reader/TokenReader.h"
#include "dbaccess/sqlite/SqliteConnector.h"
#include "tests/support/engines/TemporaryDirectory.h"

namespace dbaccess {

/// What each program of this folder is: it tries one input.
void tryInput(const std::string& input);

/// Ends the program when something that holds for all inputs does not hold for this one, which the
/// fuzzer then writes to a file.
inline void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "It does not hold: %s\n", what);
    std::abort();
}

/// Short enough for inputs that make something run for ever.
inline Settings shortLimits() {
    Settings settings;
    settings.timeouts.connect = settings.timeouts.call = std::chrono::seconds(1);
    settings.timeouts.lock = std::chrono::milliseconds(250);
    settings.timeouts.answer = std::chrono::milliseconds(500);
    return settings;
}

/// Of the program's own.
inline const std::string& directory() {
    static const TemporaryDirectory made;
    return made.path();
}

/// Connects to the embedded databases in the directory. With a text for it, a database "fuzz" is
/// made first.
inline std::unique_ptr<Connection> openDatabase(const char* firstStatement = nullptr) {
    Error error;
    auto connection =
        sqlite::makeConnector(directory(), shortLimits())->connect(TimePoint::max(), error);
    require(firstStatement == nullptr ||
                (!connection->run("", Statement("create database fuzz")).error &&
                 !connection->run("fuzz", Statement(firstStatement)).error),
            "the database is made");
    return connection;
}

}  // namespace dbaccess

extern "C" [[gnu::used]] inline int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                                           std::size_t size) {
    dbaccess::tryInput({reinterpret_cast<const char*>(data), size});
    return 0;
}

#endif
