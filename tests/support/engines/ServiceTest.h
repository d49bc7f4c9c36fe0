#ifndef TESTS_SUPPORT_ENGINES_SERVICETEST_H
#define TESTS_SUPPORT_ENGINES_SERVICETEST_H

#include <gmock/gmock.h>

#include <string>
#include <type_traits>
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

/// A record with one text.
template <class Record>
Record keyed(std::string Record::*key, const std::string& text) {
    Record record{};
    record.*key = text;
    return record;
}

/// Copies of a list's records, none for no list. Releases the list.
template <class List, class Owner>
auto records(List* list, void (Owner::*release)(List*), Owner& owner = service()) {
    std::vector<std::remove_reference_t<decltype(*list->items)>> result;
    for (int i = 0; list != nullptr && i < list->count; ++i)
        result.push_back(list->items[i]);
    (owner.*release)(list);
    return result;
}

/// One member of all records, joined by "|".
template <class Record>
std::string joined(const std::vector<Record>& records, std::string Record::*member) {
    std::string result;
    for (const Record& record : records)
        result += (&record == &records.front() ? "" : "|") + record.*member;
    return result;
}

#endif
