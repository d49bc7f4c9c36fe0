// What callers of the access layer rely on, on both engines.
#include "dbaccess/DataAccess.h"

#include <gmock/gmock.h>

#include "tests/support/engines/EngineTest.h"

namespace dbaccess {
namespace {

class DataAccessTest : public EngineTest {
protected:
    DataAccessTest() {
        expectOk(execute(
            access().engine() == Engine::Server
                ? "create table t(k VARCHAR(255) NOT NULL PRIMARY KEY, n INT, v LONGTEXT)"
                : "create table t(k TEXT NOT NULL PRIMARY KEY CONSTRAINT too_long CHECK(length(k)<=255), n INTEGER "
                  "CHECK(n BETWEEN -2147483648 AND 2147483647), v TEXT) STRICT, WITHOUT ROWID"));
    }

    int transaction(std::deque<std::string> statements) {
        return access().Update(dbName(), statements);
    }
};

TEST_P(DataAccessTest, CountsAreOfAffectedRows) {
    EXPECT_EQ(1, access().Insert(dbName(), "insert into t(k,n) values('a', 1);"));
    EXPECT_EQ(2, access().Insert(dbName(), "insert into t(k,n) values('b', 2),('c', 3);"));
    EXPECT_EQ(1,
              access().Update(dbName(), "update t set n = '1' where k = 'a'"));  // was so already
    EXPECT_EQ(0, access().Update(dbName(), "update t set n = '5' where k = 'unknown'"));
    EXPECT_EQ(1, execute("replace into t(k,n) values('a', 9);"));
    EXPECT_EQ(3, execute("replace into t(k,n) values('a', 9),('b', 8),('d', 7);"));
    EXPECT_EQ(0, execute("select k from t"));
    EXPECT_EQ(2, execute("delete from t where k='a' or k='b'"));
    EXPECT_EQ(2, execute("delete from t"));
    EXPECT_EQ(0, execute("-- only a comment"));
}

TEST_P(DataAccessTest, FailuresHaveOneNumberOnBothEngines) {
    struct Case {
        int number;
        const char* sqlState;
        std::string text;
    };
    expectOk(execute("insert into t(k,n) values('a', 1)"));
    const Case cases[] = {
        {1062, "23000", "insert into t(k,n) values('a', 2)"},
        {1064, "42000", "insert into t(k,n) values('O'Hare', 2)"},
        {1064, "42000", "insert into t(k) values('open)"},
        {1054, "42S22", "select nosuch from t"},
        {1052, "23000", "select k from t,(select k from t) u"},
        {1146, "42S02", "select k from nosuch"},
        {1048, "23000", "insert into t(k) values(null)"},
        {1366, "22007", "insert into t(k,n) values('b', 'abc')"},
        {1064, "42000", "/*! begin */"},
        {1235, "42000", "begin"},
        {1235, "42000", "flush tables with read lock"},
        {1235, "42000", "use mysql"},
    };
    for (const Case& oneCase : cases) {
        SCOPED_TRACE(oneCase.text.substr(0, 80));
        EXPECT_EQ(-oneCase.number, execute(oneCase.text));
        EXPECT_EQ(oneCase.number, LastError().number);
        EXPECT_EQ(oneCase.sqlState, LastError().sqlState);
        EXPECT_FALSE(LastError().message.empty());
    }
    EXPECT_EQ(nullptr, access().Query(dbName(), "select nosuch from t"));
    EXPECT_EQ("1", query("select n as v from t"));  // nothing of it came through
    EXPECT_EQ(0, LastError().number);
    EXPECT_EQ("", LastError().message);
}

TEST_P(DataAccessTest, ListsTakeEffectTogetherOrNotAtAll) {
    EXPECT_EQ(3, transaction({"insert into t(k,n) values('a',1),('b',2)",
                              "update t set n='5' where k='a'"}));
    EXPECT_EQ(-1062, transaction({"insert into t(k) values('c')", "delete from t where k='a'",
                                  "insert into t(k) values('b')"}));
    EXPECT_EQ("a|b", query("select k as v from t order by k"));
    EXPECT_EQ(-1064, transaction({"delete from t", "nonsense"}));
    EXPECT_EQ(-1235, transaction({"delete from t", "create table u(k int)"}));
    EXPECT_EQ(-1235, transaction({"delete from t", "commit"}));
    EXPECT_EQ(-1235, transaction({"delete from t", "call p()"}));
    EXPECT_EQ(0, transaction({}));
    EXPECT_EQ("a|b", query("select k as v from t order by k"));
    expectOk(execute("insert into t(k) values('after')"));  // no transaction was left open
    EXPECT_EQ("3", query("select count(*) as v from t"));
}

TEST_P(DataAccessTest, TextsOverThePacketLimitAreRefusedAlone) {
    const std::string head = "insert into t(k,v) values('big','";
    std::size_t largest = 16'777'214;
    if (access().engine() == Engine::Server)
        largest = std::stoul(query("select @@max_allowed_packet as v")) - 2;
    if (largest > 64 << 20) GTEST_SKIP() << "this server takes texts of " << largest << " bytes";
    const auto sized = [&](std::size_t size) {
        return head + std::string(size - head.size() - 2, 'x') + "')";
    };
    EXPECT_EQ(-1153, execute(sized(largest + 1)));
    EXPECT_EQ(-1153, execute(sized(2 * largest)));
    EXPECT_EQ(-1153, transaction({"insert into t(k) values('a')", sized(largest + 1)}));
    EXPECT_EQ("0", query("select count(*) as v from t"));
    EXPECT_EQ(1, execute(sized(largest)));
    EXPECT_EQ(largest - head.size() - 2, query("select v from t").size());
}

TEST_P(DataAccessTest, DatabasesAreNamedByEachCall) {
    const auto single = newAccess();  // one connection, which no call may lose
    ASSERT_TRUE(single->Initialize(1, 1, false, false));
    EXPECT_EQ(-1046, single->Execute("", "select k from t"));
    std::deque<std::string> list{"insert into t(k) values('a')"};
    const std::string other = secondDbName();
    expectOk(single->Execute("", "create database " + other));
    EXPECT_EQ(-1007, single->Execute("", "create database " + other));
    expectOk(single->Execute("", "create database if not exists " + other));
    for (const auto& [name, result] :
         {std::pair(dbName(), 1), {other, -1146}, {other + "_none", -1049}}) {
        expectOk(execute("delete from t"));
        EXPECT_EQ(result, single->Execute(name, "insert into t(k) values('b')"));
        EXPECT_EQ(result, single->Update(name, list));
    }
    EXPECT_EQ(0, single->Execute(dbName(), "select k from t"));

    expectOk(execute("create table named(`1a` int)"));
    EXPECT_EQ(-1054, execute("update named set 1b=1"));
    EXPECT_EQ(0, execute("update named set 1a=1"));
    if (GetParam() == Engine::Embedded) return;  // drops no database
    expectOk(access().Execute("", "drop database " + dbName()));
    EXPECT_EQ(-1049, execute("delete from named"));
    expectOk(access().Execute("", "create database " + dbName()));
    EXPECT_EQ(-1146, execute("delete from named"));
}

TEST_P(DataAccessTest, StatementsWithoutRowsGiveAnEmptySet) {
    ResultSet* rows = access().Query(dbName(), "insert into t(k) values('a')");
    ASSERT_NE(nullptr, rows);
    EXPECT_EQ(0, rows->rowsCount());
    EXPECT_FALSE(rows->next());
    DataAccess::ReleaseResulitSet(rows);
    DataAccess::ReleaseResulitSet(nullptr);
}

TEST_P(DataAccessTest, ASetOutlivesItsDataAccess) {
    auto own = newAccess();
    expectOk(own->Execute(dbName(), "insert into t(k,v) values('a','kept')"));
    ResultSet* rows = own->Query(dbName(), "select v from t");
    own.reset();
    ASSERT_NE(nullptr, rows);
    std::string value;
    EXPECT_TRUE(rows->next() && rows->getString("v", value));
    EXPECT_EQ("kept", value);
    DataAccess::ReleaseResulitSet(rows);
}

TEST_P(DataAccessTest, ColumnsThatAnotherConnectionRenames) {
    expectOk(execute("insert into t(k,n,v) values('a',7,'text')"));
    EXPECT_EQ("text", query("select * from t"));
    const auto other = newAccess();
    expectOk(other->Execute(dbName(), "alter table t rename column v to w"));
    expectOk(other->Execute(dbName(), "alter table t rename column n to v"));
    EXPECT_EQ("7", query("select * from t"));
}

TEST(DataAccessHost, IllFormedHostsAreReported) {
    DataAccess access("db1;port=1", 3306, "", "");
    EXPECT_FALSE(access.Initialize(1, 1, true, true));
    EXPECT_EQ(2005, LastError().number);
    EXPECT_EQ(-2005, access.Execute("vms", "select 1"));
    EXPECT_EQ(nullptr, access.Query("vms", "select 1"));
}

INSTANTIATE_TEST_SUITE_P(Engines, DataAccessTest, kEngines, engineName);

}  // namespace
}  // namespace dbaccess
