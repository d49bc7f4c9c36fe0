#ifndef DBSERVICE_DBACCESS_ESCAPETEXT_H
#define DBSERVICE_DBACCESS_ESCAPETEXT_H

#include <string>

#include "base/Export.h"

namespace dbaccess {

/// Makes a text safe to stand between single quotes in a statement, on both engines: the database
/// then reads back just this text, whatever is in it. Escape each text that you do not control
/// before it goes into a record, a key or a raw statement, once; what queries return is not
/// escaped. Threads: any number at once.
DBSERVICE_API std::string EscapeText(const std::string& text);

}  // namespace dbaccess

#endif
