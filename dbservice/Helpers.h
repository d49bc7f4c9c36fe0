#ifndef DBSERVICE_HELPERS_H
#define DBSERVICE_HELPERS_H

#include <string>

#include "base/Export.h"

namespace dbservice {

/// Decimal text of a number, as "-5".
DBSERVICE_API std::string Itostr(int value);

/// Decimal text of an unsigned number, as "4294967295".
DBSERVICE_API std::string Uitostr(unsigned int value);

/// A new random UUID as its 36-character lower-case text: what callers give records as their
/// `Guid`. Also writes it to standard output, on a line of its own; callers rely on that trace.
/// Threads: any number at once.
DBSERVICE_API std::string getGuid();

}  // namespace dbservice

#endif
