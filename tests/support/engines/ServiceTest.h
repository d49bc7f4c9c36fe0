#ifndef TESTS_SUPPORT_ENGINES_SERVICETEST_H
#define TESTS_SUPPORT_ENGINES_SERVICETEST_H

#include <gmock/gmock.h>

#include <string>
#include <thread>
#include <vector>

#include "dbservice/DBService.h"
#include "tests/support/engines/EngineTest.h"

/// The service, initialised on a fresh database with the schema.
class ServiceTest : public EngineTest {
protected:
    ServiceTest() {
        createSchema();
        const dbservice::DB_CONNECTION_PROPERTY settings(host(), static_cast<int>(port()), user(),
                                                         password(), dbName(), 1, 4, true, true);
        EXPECT_EQ(1, dbservice::DBService::Initialize(settings));
    }
    ~ServiceTest() override { dbservice::DBService::Cleanup(); }
};

inline dbservice::DBService& service() {
    return *dbservice::DBService::GetDBServiceObject();
}

/// One member of all records of a list, joined by "|"; "null" for no list. Releases the list.
template <class List, class Record>
std::string joined(List* list, std::string Record::*member,
                   void (dbservice::DBService::*release)(List*)) {
    if (list == nullptr) return "null";
    std::string result;
    for (int i = 0; i < list->count; ++i) {
        result += (i == 0 ? "" : "|") + list->items[i].*member;
    }
    (service().*release)(list);
    return result;
}

#endif
