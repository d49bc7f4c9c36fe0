#ifndef DBSERVICE_BASE_EXPORT_H
#define DBSERVICE_BASE_EXPORT_H

/// Marks what libDBService.so exports; everything else is built with hidden visibility.
#define DBSERVICE_API __attribute__((visibility("default")))

#endif
