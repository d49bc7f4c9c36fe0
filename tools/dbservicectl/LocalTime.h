#ifndef DBSERVICECTL_LOCALTIME_H
#define DBSERVICECTL_LOCALTIME_H

#include <string>

#include "dbservice/convenience/Times.h"

namespace dbservicectl {

/// The time that somebody wrote: "2026-03-02" or "2026-03-02 08:00", with seconds or not, in the
/// local zone, or with an offset behind it, as "2026-03-02T08:00:00+01:00". Throws a Failure for
/// any other text, and for a local time that a change of the clocks leaves out or brings twice.
dbservice::Time timeIn(const std::string& text);

/// As "2026-03-02 08:00:00+01:00", in the local zone.
std::string localText(dbservice::Time time);

}  // namespace dbservicectl

#endif
