#ifndef DBSERVICECTL_SITEFILE_H
#define DBSERVICECTL_SITEFILE_H

#include <string>
#include <vector>

#include "tools/dbservicectl/Entities.h"
#include "tools/dbservicectl/Output.h"

namespace dbservicectl {

/// What a file says of the records of one kind.
struct SiteTable {
    const Entity* entity = nullptr;
    std::vector<std::vector<Cell>> rows;  ///< the values of all columns, in their order
};

/// A site's configuration as a file holds it: JSON whose members are named as the kinds of records,
/// each a list of records whose members are named as the columns.
struct SiteFile {
    std::vector<SiteTable> tables;
    std::vector<std::string> errors;    ///< "site.json:12: devices[2].HttpPort: is not ..."
    std::vector<std::string> warnings;  ///< of references to records that the file does not have
};

/// Reads a file to its end, or to where it is no JSON any more. Throws a Failure when it cannot be
/// read at all.
SiteFile readSiteFile(const std::string& path);

/// The tables as a file, records in the order of their keys, so that equal configurations have
/// equal files. Throws a Failure for a text that is not UTF-8.
std::string siteText(std::vector<SiteTable> tables);

}  // namespace dbservicectl

#endif
