#ifndef TESTS_UNIT_OPERATIONS_H
#define TESTS_UNIT_OPERATIONS_H

#include <gmock/gmock.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "dbservice/DBService.h"
#include "tests/unit/ScriptedDataAccess.h"

namespace dbservice {

/// The service, over the scripted access layer, with the database "vms"; for a while in each check
/// an object that is not connected.
DBService& db();

/// What a call answers, as a text. A list or record goes back to its Release operation, null too.
struct Answer {
    Answer(int number) : text(std::to_string(number)) {}
    Answer(bool truth) : text(truth ? "true" : "false") {}
    template <class Result, class Object>
    Answer(Result* result, void (Object::*release)(Result*), Object& object = db())
        : text(result == nullptr ? "null" : described(*result, 0)) {
        (object.*release)(result);
    }

    std::string text;

private:
    template <class List>
    static auto described(const List& list, int) -> decltype(std::to_string(list.count)) {
        EXPECT_EQ(list.count == 0, list.items == nullptr);
        return std::to_string(list.count) + " records";
    }
    template <class Record>
    static std::string described(const Record&, long) {
        return scripted::script().reads.empty() ? "a default record" : "a record";
    }
};

using Call = std::function<Answer()>;

/// What an operation is to answer.
struct Answers {
    std::vector<const char*> toResults;  ///< to 5, 1, 0, -1 and -1062 from the access layer
    std::vector<const char*> toRows;     ///< to two rows, no rows, and a failed query
    const char* toNothing;               ///< when not connected, and without records
};

/// 0 for any count, or the error.
const Answers kZero = {{"0", "0", "0", "-1", "-1062"}, {}, "-1"};
/// The count, or the error.
const Answers kCount = {{"5", "1", "0", "-1", "-1062"}, {}, "-1"};
const Answers kListOrNull = {{}, {"2 records", "null", "null"}, "null"};
const Answers kListOrEmpty = {{}, {"2 records", "0 records", "null"}, "null"};
const Answers kRecordOrNull = {{}, {"a record", "null", "null"}, "null"};
const Answers kRecordOrDefault = {{}, {"a record", "a default record", "null"}, "null"};
const Answers kWhetherAny = {{}, {"true", "false", "false"}, "false"};

/// A connected service; queries find rows whose columns hold their own names.
class ScriptedService : public testing::Test {
protected:
    ScriptedService();
    ~ScriptedService() override;
};

/// A test has the name of a section of statements.txt and checks its operations in their order.
class Operations : public ScriptedService {
protected:
    /// Checks what a call sends, reads and answers. @param name  of the operation in the file.
    void check(const std::string& name, const Answers& answers, const Call& call);

    /// Checks that a call sends nothing and answers so.
    static void checkNothingSent(const char* answer, const Call& call);

    /// An insert or update of one record.
    template <class Record>
    void single(const std::string& name, const Record& record,
                int (DBService::*operation)(const Record&)) {
        check(name, kZero, [&] { return (db().*operation)(record); });
    }

    /// An operation on an array, which sends nothing for a null one and for counts of 0 and -1.
    template <class Record, class Operation>
    void batch(const std::string& name, const Answers& answers, const std::vector<Record>& records,
               Operation operation) {
        SCOPED_TRACE(name);
        const Record* array = records.data();
        const Record* none = nullptr;
        check(name, answers, [&] { return operation(array, static_cast<int>(records.size())); });
        checkNothingSent(answers.toNothing, [&] { return operation(none, 2); });
        checkNothingSent(answers.toNothing, [&] { return operation(array, 0); });
        checkNothingSent(answers.toNothing, [&] { return operation(array, -1); });
    }
    template <class Record>
    void batch(const std::string& name, const Answers& answers, const std::vector<Record>& records,
               int (DBService::*operation)(const Record*, int)) {
        batch(name, answers, records, [&](const Record* array, int count) {
            return Answer((db().*operation)(array, count));
        });
    }

    /// An operation by one key: with it, and as "name (empty key)" with an empty one.
    template <class Result, class Text, class... Release>
    void keyed(const std::string& name, const Answers& answers, const std::string& key,
               Result (DBService::*operation)(Text), Release... release) {
        check(name, answers, [&] { return Answer((db().*operation)(key), release...); });
        check(name + " (empty key)", answers,
              [&] { return Answer((db().*operation)(""), release...); });
    }

    /// Whether the calls go through the service, not to a DAO of the test's own.
    bool throughService_ = true;

private:
    void TearDown() override;

    std::vector<std::string> checked_;
};

/// The records of two rows whose columns hold their own names.
template <class List, class Object>
auto recordsOf(List* list, void (Object::*release)(List*), Object& object = db()) {
    if (list == nullptr || list->count != 2)
        throw std::runtime_error("two rows are not two records");
    std::vector<std::remove_pointer_t<decltype(list->items)>> records(list->items,
                                                                      list->items + list->count);
    (object.*release)(list);
    return records;
}

/// The same for a query that gives one record.
template <class Record, class Object>
Record recordOf(Record* found, void (Object::*release)(Record*), Object& object = db()) {
    if (found == nullptr) throw std::runtime_error("a row is no record");
    Record record(*found);
    (object.*release)(found);
    return record;
}

}  // namespace dbservice

#endif
