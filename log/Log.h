#ifndef DBSERVICE_LOG_LOG_H
#define DBSERVICE_LOG_LOG_H

#include "base/Export.h"

/// The levels of `Qz_Write_Log`. A number between two of them counts as the lower one.
enum QzLogLevel {
    kQzLogDebug = 0,  ///< also below
    kQzLogInfo = 100,
    kQzLogWarning = 200,
    kQzLogError = 300,  ///< also above
};

/// Writes one line to the log of the process.
///
/// Where to: standard error, or the file named by the environment variable DBSERVICE_LOG_FILE
/// (appended to). A file of DBSERVICE_LOG_FILE_SIZE MiB (10; 0: any size) is renamed, NAME.log to
/// NAME.1.log, and DBSERVICE_LOG_FILES (5) such older ones are kept. From which level on:
/// DBSERVICE_LOG_LEVEL, one of "debug", "info", "warning" (the default), "error", "off". They are
/// read once, at the first use; a file that cannot be opened is reported on standard error, which
/// is then used instead.
///
/// @param level     a `QzLogLevel`.
/// @param location  who speaks, as "Initialize"; null is written as nothing.
/// @param message   the line; null is written as nothing.
///
/// Threads: any number at once; lines do not mix. Never throws.
DBSERVICE_API void Qz_Write_Log(int level, const char* location, const char* message);

#endif
