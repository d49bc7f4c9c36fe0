#ifndef DBSERVICE_CONVENIENCE_H
#define DBSERVICE_CONVENIENCE_H

// All of dbservice/convenience/: what most callers would otherwise write for themselves, header
// only, beside the fixed interface. docs/convenience.md shows it at work.

#include "dbservice/convenience/Escaped.h"
#include "dbservice/convenience/Events.h"
#include "dbservice/convenience/Guid.h"
#include "dbservice/convenience/Held.h"
#include "dbservice/convenience/Lists.h"
#include "dbservice/convenience/Results.h"
#include "dbservice/convenience/Settled.h"
#include "dbservice/convenience/Times.h"

#endif
