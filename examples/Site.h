#ifndef EXAMPLES_SITE_H
#define EXAMPLES_SITE_H

#include <string>
#include <vector>

#include "dbservice/DBService.h"

namespace demo {

/// What the program does with the records of one kind, in this order.
template <class Record>
struct Plan {
    std::vector<Record> stored;
    std::vector<Record> changed;  ///< some of `stored`, with other values
    std::vector<Record> deleted;  ///< some of `stored`
};

/// A site as its file describes it. Its texts are escaped, ready for the service: that copies texts
/// into statements as they are, and the name Porter's Yard would end its literal after Porter.
struct Site {
    std::string name;
    Plan<dbservice::T_ServerInfo> servers;
};

/// Reads a site description: JSON whose members are named as the fields of the records; a record's
/// member "then" holds the fields to change later, or "delete". Throws std::runtime_error that names
/// the file and the place in it.
Site readSite(const std::string& file);

}  // namespace demo

#endif
