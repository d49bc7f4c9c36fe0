#ifndef DBSERVICECTL_LOADER_H
#define DBSERVICECTL_LOADER_H

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tools/dbservicectl/Entities.h"
#include "tools/dbservicectl/Inserts.h"
#include "tools/dbservicectl/Progress.h"
#include "tools/dbservicectl/Session.h"
#include "tools/dbservicectl/Sha256.h"

namespace dbservicectl {

/// What becomes of what is in the database that is filled.
struct Filling {
    bool replace = false;  ///< it is deleted, after a question
    bool resume = false;   ///< it came from an interrupted run, which is gone on with
};

/// Fills a database with rows that come from elsewhere, and proves that they are there. The
/// configuration is written in one transaction, events in chunks. All operations throw a Failure.
class Loader {
public:
    /// Makes what is missing in the database, and refuses one that is not empty unless told
    /// otherwise. The session outlives it.
    Loader(Session& session, const Target& target, const Filling& filling);

    /// @param rows        how many will come, for who watches.
    /// @param lastSerial  the largest `SN` that is not to be given to an alarm again.
    void expect(std::uint64_t rows, std::uint64_t lastSerial) {
        expected_ = rows;
        lastSerial_ = lastSerial;
    }

    /// Takes a row: all of the configuration before those of events, and the rows of each table in
    /// the order of their keys.
    void add(const schema::Table& table, const std::vector<Cell>& row);

    /// Writes the rest, reads all back, and shows counts and checksums of both sides. A Failure for
    /// a difference.
    void finish();

private:
    struct Events {
        std::size_t keyAt = 0;             // among the columns
        std::optional<std::int64_t> last;  // key of the last row that was there
        std::optional<Inserts> inserts;
        std::uint64_t written = 0;
    };

    void makeRoom(const Filling& filling);
    void deleteEvents(const Entity& entity);
    void writeConfiguration();
    void addEvent(const schema::Table& table, const std::vector<Cell>& row);
    void writeEvents(const schema::Table& table, const std::string& statement, std::size_t rows);
    void writeRest();
    void keepSerial();
    std::string howFar() const;

    Session& session_;
    const Target target_;
    std::unique_ptr<dbaccess::DataAccess> access_;
    std::deque<std::string> configuration_;
    std::map<const schema::Table*, Inserts> inserts_;  // of the configuration
    std::map<const schema::Table*, Events> events_;
    bool configurationIsThere_ = false;
    std::uint64_t expected_ = 0;
    std::uint64_t lastSerial_ = 0;
    std::uint64_t taken_ = 0;
    std::optional<Progress> progress_;
    Digests digests_;
};

}  // namespace dbservicectl

#endif
