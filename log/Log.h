#ifndef DBSERVICE_LOG_LOG_H
#define DBSERVICE_LOG_LOG_H

#include "base/Export.h"

/// Writes one line to the log of the process.
///
/// Where to: standard error, or the file named by the environment variable DBSERVICE_LOG_FILE
/// (appended to). From which level on: DBSERVICE_LOG_LEVEL, one of "debug", "info", "warning" (the
/// default), "error", "off". Both are read once, at the first line; a file that cannot be opened is
/// reported on standard error, which is then used instead.
///
/// @param level     below 100 debug, below 200 info, below 300 warning, 300 and above error.
/// @param location  who speaks, as "Initialize"; null is written as nothing.
/// @param message   the line; null is written as nothing.
/// Threads: any number at once; lines do not mix. Never throws.
DBSERVICE_API void Qz_Write_Log(int level, const char* location, const char* message);

#endif
