// A statement that comes again is kept prepared: its answers stay those of the text.
#include <gmock/gmock.h>

#include <deque>

#include "dbaccess/DataAccess.h"
#include "tests/support/engines/EngineTest.h"
#include "tests/support/engines/TestServer.h"

namespace dbaccess {
namespace {

const std::string kColumns = "k VARCHAR(255) PRIMARY KEY, n INT";

/// One connection, on which every text comes again.
class KeptStatements : public EngineTest {
protected:
    KeptStatements() : one_(newAccess()) {
        EXPECT_TRUE(one_->Initialize(1, 1, true, true));
        run("create table t(" + kColumns + ")");
        session_ = session();
    }
    /// What breaks a connection is sent again as text, and would be unseen.
    void TearDown() override { EXPECT_EQ(session_, session()); }

    std::string session() {
        return ::query(*one_, dbName(),
                       onServer() ? "select connection_id() as v" : "select 1 as v");
    }

    bool onServer() const { return GetParam() == Engine::Server; }
    int run(const std::string& text) { return one_->Execute(dbName(), text); }

    /// All of a column's values as text and as numbers, or the negated error number.
    std::string rows(const std::string& text, const std::string& column = "v") {
        ResultSet* const set = one_->Query(dbName(), text);
        if (set == nullptr) return std::to_string(-LastError().number);
        std::string all;
        for (std::string value = "NULL"; set->next(); value = "NULL") {
            set->getString(column, value);
            int number = 0;
            set->getInt(column, &number);
            all += value + "/" + std::to_string(number) + "/" +
                   std::to_string(set->getUInt64(column)) + " ";
        }
        DataAccess::ReleaseResulitSet(set);
        return all;
    }

    /// The first value, whatever the statement goes as: a text that never came before, and the one
    /// that is sent as text, then prepared, then kept.
    void always(const std::string& value, const std::string& text,
                const std::string& column = "v") {
        static int number = 0;
        const std::string first = rows("/*" + std::to_string(++number) + "*/" + text, column);
        EXPECT_EQ(value, first.substr(0, first.find('/'))) << text;
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ(first, rows(text, column)) << text;
    }
    void always(int result, const std::string& text) {
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ(result, run(text)) << text.substr(0, 200);
    }

    std::unique_ptr<DataAccess> one_;
    std::string session_;
};

/// An insert or replace of so many rows `('k0',0),('k1',1)`, and of a last one.
std::string batch(const std::string& verb, int rows, const std::string& last) {
    std::string text = verb + " into t values";
    for (int i = 0; i < rows; ++i)
        text += "('k" + std::to_string(i) + "'," + std::to_string(i) + "),";
    return text + last;
}

TEST_P(KeptStatements, TablesChangeUnderThem) {
    const std::string all = "select * from t where k='a'";
    const std::string one = "select n as v from t where k='a'";
    const std::string add = "insert into t values('b',2)";
    run("insert into t values('a',1)");
    always("NULL", all);
    always("1", one);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(1, run(add));
        EXPECT_EQ(1, run("delete from t where k='b'"));
    }
    run("alter table t add v int default 7");
    always("7", all);
    always("1", one);
    always(-1136, add);
    // What has once gone as text does so on: types that are kept come first.
    const std::pair<const char*, const char*> types[] = {{"varchar(20)", "text"},
                                                         {"bigint", "-3"},
                                                         {"datetime", "2024-05-06 07:08:09"},
                                                         {"double", "0.5"}};
    for (const auto& [type, value] : types) {
        SCOPED_TRACE(type);
        run("drop table t");
        always("-1146", one);
        always(-1146, add);
        run(std::string("create table t(k varchar(255), n ") + type + ")");
        run(std::string("insert into t values('a','") + value + "')");
        always(value, one);
        if (!onServer()) continue;
        run("alter table t modify n varchar(40)");
        always(value, one);
        run(std::string("alter table t modify n ") + type);
        always(value, one);
    }

    const std::string other = secondDbName();
    expectOk(one_->Execute("", "create database " + other));
    EXPECT_EQ(-1146, one_->Execute(other, add));
    EXPECT_EQ(-1146, one_->Execute(other, add));
    expectOk(one_->Execute(other, "create table t(" + kColumns + ")"));
    expectOk(one_->Execute(other, "insert into t values('a',20)"));
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ("20", ::query(*one_, other, one));
        EXPECT_EQ("0.5", ::query(*one_, dbName(), one));
    }
}

TEST_P(KeptStatements, BatchesTakeEffectAsAWhole) {
    run("drop table t");
    run(onServer() ? "create table t(" + kColumns + ")"
                   : "create table t(k text not null primary key constraint too_long check("
                     "length(k)<=255), n integer check(n between -9 and 2147483647)) strict");
    const std::pair<int, std::string> refused[] = {
        {1062, "('k0',1)"},         {1406, "('" + std::string(256, 'x') + "',1)"},
        {1264, "('x',2147483648)"}, {1366, "('x','abc')"},
        {1048, "(null,1)"},
    };
    for (const int count : {3, 300}) {
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(count + 1, run(batch("insert", count, "('last',1)")));
            EXPECT_EQ(count + 1, run(batch("replace", count, "('last',1)")));
            EXPECT_EQ(2, run("replace into t values('k0','5'),('last',6)"));
            EXPECT_EQ(1, run("replace into t values('k0',-5)"));
            EXPECT_EQ(3, run("insert into t values('x',1),('y','2'),('',3)"));
            EXPECT_EQ("3|-5", ::query(*one_, dbName(),
                                      "select n as v from t where k='' or k='k0' order by k"));
            always("6", "select n as v from t where k='last'");
            always("2", "select n as v from t where k='y'");
            EXPECT_EQ(count + 4, run("delete from t"));
        }
        for (const auto& [number, last] : refused) {
            SCOPED_TRACE(last.substr(0, 20));
            std::deque<std::string> list{"insert into t values('a',1),('b',2)",
                                         batch("replace", count, "('last',1)"),
                                         batch("replace", count, last)};
            if (number == 1062) list = {list[0], "delete from t", batch("insert", count, last)};
            for (int i = 0; i < 3; ++i) {
                EXPECT_EQ(-number, run(list[2]));
                EXPECT_EQ(-number, one_->Update(dbName(), list));
                EXPECT_EQ("0", ::query(*one_, dbName(), "select count(*) as v from t"));
            }
        }
    }
}

TEST_P(KeptStatements, ColumnsThatAreNamedByTheirText) {
    run("insert into t values('k1',1),('k2',2)");
    always("1", "select (select n from t where k='k1') from t where k='k2'",
           "(select n from t where k='k1')");
}

TEST_P(KeptStatements, EachRunsOnce) {
    if (onServer() && !testServer().isMariaDb)
        GTEST_SKIP() << "MySQL has neither RETURNING nor sequences";
    const std::string add = "insert into t values(";
    int n = 0;
    for (const char* row : {"'k1',1", "'k2',2", "'k3',3", "'k4',4"}) {
        const std::string expected = std::to_string(++n);
        EXPECT_EQ(expected, ::query(*one_, dbName(), (add + row).append(") returning n as v")));
        EXPECT_EQ(expected, ::query(*one_, dbName(), "select count(*) as v from t"));
    }
    if (!onServer()) return;
    run("create sequence s");
    for (int i = 1; i < 5; ++i)  // a double makes it go as text
        EXPECT_EQ(std::to_string(i), ::query(*one_, dbName(), "select nextval(s) as v, 1e0"));
}

struct OfType {
    std::string type;
    std::string literal;
    std::string value;
};

class KeptOnServer : public KeptStatements {};

TEST_P(KeptOnServer, ValuesOfAllTypes) {
    const std::string longText(100000, 'x');
    const OfType cases[] = {
        {"tinyint", "-128", "-128"},
        {"tinyint", "127", "127"},
        {"tinyint unsigned", "255", "255"},
        {"bool", "true", "1"},
        {"smallint", "-32768", "-32768"},
        {"smallint unsigned", "'65535'", "65535"},
        {"mediumint", "-8388608", "-8388608"},
        {"mediumint unsigned", "16777215", "16777215"},
        {"int", "'-2147483648'", "-2147483648"},
        {"int unsigned", "4294967295", "4294967295"},
        {"bigint", "-9223372036854775808", "-9223372036854775808"},
        {"bigint", "9223372036854775807", "9223372036854775807"},
        {"bigint unsigned", "18446744073709551615", "18446744073709551615"},
        {"bigint unsigned", "'9223372036854775808'", "9223372036854775808"},
        {"int(8) zerofill", "42", "00000042"},
        {"decimal(20,5)", "-7", "-7.00000"},
        {"decimal(65)", "'" + std::string(65, '9') + "'", std::string(65, '9')},
        {"float", "3", "3"},
        {"double", "'-1.5e300'", "-1.5e300"},
        {"year", "2155", "2155"},
        {"year", "0", "0000"},
        {"year", "'0'", "2000"},
        {"date", "20240229", "2024-02-29"},
        {"time", "'-838:59:59'", "-838:59:59"},
        {"datetime(6)", "'9999-12-31 23:59:59.999999'", "9999-12-31 23:59:59.999999"},
        {"timestamp", "'2038-01-19 03:14:07'", "2038-01-19 03:14:07"},
        {"bit(8)", "65", "A"},
        {"enum('a','2')", "2", "2"},
        {"enum('a','2')", "'a'", "a"},
        {"varbinary(9)", "'\xC3\xA9'", "\xC3\xA9"},
        {"longtext", "'" + longText.substr(0, 251) + "'", longText.substr(0, 251)},
        {"longtext", "'" + longText + "'", longText},
        {"varchar(9)", "-007", "-7"},
        {"varchar(9)", "''", ""},
        {"varchar(9)", "null", "NULL"},
        {"int", "null", "NULL"},
    };
    run("set time_zone='+00:00'");
    int number = 0;  // a statement that has gone as text does so on: a table for each type
    for (const auto& [type, literal, value] : cases) {
        const std::string t = "t" + std::to_string(++number);
        SCOPED_TRACE(type + " " + literal.substr(0, 40));
        run(std::string("create table ").append(t).append("(k int, v ").append(type).append(")"));
        const auto filled = [&, &value = literal](const std::string& form) {
            std::string text;
            for (const char c : form)
                text += c == '#' ? t : c == '?' ? value : std::string(1, c);
            return text;
        };
        for (const char* rows : {"(1,?)", "(2,?)", "(3,?)"})
            EXPECT_EQ(1, run(filled(std::string("insert into # values") + rows)));
        for (const char* rows : {"(0,?),(4,?)", "(0,?),(5,?)", "(0,?),(6,?)"})
            EXPECT_EQ(2, run(filled(std::string("insert into # values") + rows)));
        for (const char* row : {"1", "3", "6"})
            always(value, filled("select v from # where k=") + row);
        always(9, filled("update # set v=?"));
        always(value, filled("select v from # where k=3"));
        always("end", filled("select v,'end' as behind from # where k=3"), "behind");
        if (value != "NULL" && type != "float")
            always("9", filled("select count(*) as v from # where v=?"));
    }
}

TEST_P(KeptOnServer, TheSessionChanges) {
    run("alter table t modify k varchar(3), modify n varchar(20)");
    const std::string longer = "insert into t values('long','x')";
    run(R"(insert into t values('k','k\\'),('\\','k'),('é','é'))");
    const auto count = [&](const std::string& condition, const char* rows) {
        always(rows, "select count(*) as v from t where " + condition);
    };
    const auto asPinned = [&] {
        always(-1406, longer);
        count(R"(n='k\\')", "1");
        count(R"(k="k")", "1");
        count("k='é'", "1");
    };
    asPinned();
    run("set sql_mode=''");
    always(1, "replace into t values('long','x')");
    run("delete from t where n='x'");
    run("set sql_mode='STRICT_TRANS_TABLES,NO_BACKSLASH_ESCAPES'");
    always(-1406, longer);
    count(R"(n='k\')", "1");
    count(R"(n='k\\')", "0");
    run("set sql_mode='STRICT_TRANS_TABLES,ANSI_QUOTES'");
    count(R"(k="k")", "3");
    run("set sql_mode='STRICT_TRANS_TABLES'");
    asPinned();
    run("set names latin1");
    count("k='é'", "0");
    run("set names utf8");
    asPinned();
}

TEST_P(KeptOnServer, ServersThatKeepNothing) {
    if (!testServer().isPrivate) GTEST_SKIP() << "sets what concerns the whole server";
    always("0", "select count(*) as v from t");
    run("insert into t values('a',1)");
    expectOk(execute("set global max_prepared_stmt_count=0"));
    always("1", "select count(*) as v from t");
    always("1", "select n as v from t");
    always(1, "update t set n=1 where k='a'");
    always(-1062, "insert into t values('b',1),('a',1)");
    expectOk(execute("set global max_prepared_stmt_count=16382"));
    always("1", "select n as v from t");

    always("1", "select sum(n) as v from t");
    expectOk(execute("kill " + session_));
    always("1", "select sum(n) as v from t");
    EXPECT_NE(session_, session());
    session_ = session();
    always(1, "update t set n=1 where k='a'");
}

TEST_P(KeptOnServer, AnErrorBehindTheFirstRowsIsTold) {
    run("insert into t values('a',1),('b',2),('c',2)");
    always("-1242", "select (select n from t same where same.n=t.n) as v from t where k>='a'");
}

/// Without it the other tests were about nothing.
TEST_P(KeptOnServer, TheyAreKept) {
    const auto executed = [&] {
        return std::stoi(rows("show session status like 'Com_stmt_execute'", "Value"));
    };
    const int before = executed();
    for (int i = 0; i < 4; ++i) {
        run("insert into t values('a',1),('b',2)");
        run("delete from t");
        rows("select n as v from t where k='a'");
        rows("select * from t where k='a'");
        rows("select 1.5e0 as v from t where k='a'");
    }
    // The inserts' rows ask for array binding, which MySQL does not have.
    EXPECT_EQ(before + (testServer().isMariaDb ? 3 * 3 : 2 * 3), executed());
}

INSTANTIATE_TEST_SUITE_P(Engines, KeptOnServer, testing::Values(Engine::Server), engineName);
INSTANTIATE_TEST_SUITE_P(Engines, KeptStatements, kEngines, engineName);

}  // namespace
}  // namespace dbaccess
