#ifndef TESTS_UNIT_SCRIPTEDDATAACCESS_H
#define TESTS_UNIT_SCRIPTEDDATAACCESS_H

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

// A dbaccess::DataAccess that takes the real one's place at link time. It writes down every call
// and answers what a test has laid out.

namespace scripted {

/// An answer to Query.
struct Rows {
    std::vector<std::string> columns;
    std::vector<std::vector<std::string>> rows;
    int announced = -1;  ///< what rowsCount says; -1: the truth
};

struct Script {
    // What happened.
    std::vector<std::string> calls;  ///< as "Insert vms: insert into ..."
    std::vector<std::string> reads;  ///< columns asked for in a row of own names, as "int Num"
    int releasedSets = 0;
    int openSets = 0;

    // What is to happen. A write without an answer gives 1, a query without one gives no rows.
    bool initializes = true;
    std::deque<std::int64_t> results;
    std::deque<std::optional<Rows>> queries;  ///< nullopt: the query fails
    /// Queries without an answer find 1000 for the largest Id, else two rows whose columns hold
    /// their own names: a text its name, a number its place among the columns asked for. In the
    /// second row a 2 stands behind each value.
    bool columnsHoldTheirNames = false;
};

/// The script of all scripted objects; a test begins with `script() = {}`.
Script& script();

}  // namespace scripted

#endif
