#ifndef DBSERVICECTL_SNAPSHOT_H
#define DBSERVICECTL_SNAPSHOT_H

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "schema/Tables.h"
#include "tools/dbservicectl/Output.h"
#include "tools/dbservicectl/Session.h"

namespace dbservicectl {

/// A whole database as it was at one moment, while others go on writing to it. Reading needs no
/// more memory for ten million rows than for one. All operations throw a Failure.
class Snapshot {
public:
    /// The values of all columns of the table, in their order.
    using Take = std::function<void(const std::vector<Cell>& row)>;

    /// On a server a transaction. Of the embedded engine a copy of the file, which lies among the
    /// system's temporary files (TMPDIR, else /var/tmp) and is gone with the program.
    static std::unique_ptr<Snapshot> of(const Target& target);

    Snapshot() = default;
    Snapshot(const Snapshot&) = delete;
    Snapshot& operator=(const Snapshot&) = delete;
    virtual ~Snapshot() = default;

    /// How many rows it has, for who shows a progress; 0 when that takes too long to count.
    virtual std::uint64_t count(const schema::Table& table) = 0;

    /// The largest `SN` that was ever given to an alarm, be it there or not: it is not to be given
    /// again. 0 when the database does not tell.
    virtual std::uint64_t lastSerial() = 0;

    /// In the order of their keys.
    virtual void forEachRow(const schema::Table& table, const Take& take) = 0;
};

}  // namespace dbservicectl

#endif
