#ifndef DBSERVICECTL_BACKUPFILE_H
#define DBSERVICECTL_BACKUPFILE_H

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "schema/Tables.h"
#include "tools/dbservicectl/NewFile.h"
#include "tools/dbservicectl/Output.h"
#include "tools/dbservicectl/Sha256.h"

namespace dbservicectl {

// A backup is a file of lines, each a JSON value: an object that tells format, version and origin;
// for each table an object with its columns, then its rows as arrays; and after each thousand rows
// at most, as at the end, an object with the number of rows and the SHA-256 of all lines before it.
// A text that is not UTF-8 stands as {"hex": "..."}.

/// What a backup says of itself.
struct BackupInfo {
    std::string library;           ///< its version
    std::string made;              ///< UTC
    std::string engine;            ///< "server" or "embedded"
    std::string database;          ///< its name
    std::uint32_t lastSerial = 0;  ///< see `Snapshot`
    std::uint64_t rows = 0;        ///< known when all of it is read
};

/// Writes a backup. All operations throw a Failure that names the file.
class BackupWriter {
public:
    BackupWriter(NewFile& file, const BackupInfo& info);

    /// The rows that follow are of this table.
    void begin(const schema::Table& table);
    /// @param row  the values of all columns, in their order.
    void add(const std::vector<Cell>& row);
    /// Writes the last line.
    void finish();

    std::uint64_t rows() const { return rows_; }

private:
    void writeLine(const std::string& line);
    void writeCheck(bool last);

    NewFile& file_;
    std::vector<schema::Column> columns_;
    Sha256 checksum_;
    std::uint64_t rows_ = 0;
    std::uint64_t unchecked_ = 0;
};

/// Reads a backup from its first line to its last and hands over each row: the values of all
/// columns of the table, in their order, with NULL for a column that the file does not have. Throws
/// a Failure that says where the file was cut off or changed; rows before that place have been
/// handed over then.
BackupInfo readBackup(
    const std::string& path,
    const std::function<void(const schema::Table& table, const std::vector<Cell>& row)>& take);

}  // namespace dbservicectl

#endif
