#include "dbaccess/sqlite/SqliteText.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <memory>
#include <string>
#include <vector>

#include "dbaccess/reader/Statement.h"
#include "tests/access/SqliteTest.h"

namespace dbaccess::sqlite {
namespace {

using namespace std::string_literals;

/// The text with its values behind it, as "select a = ? <1> <'x'>", or the error number.
std::string rewritten(const std::string& statement) {
    const Statement whole(statement);
    const SqliteText result = toSqlite(whole);
    if (result.error != 0) return std::to_string(result.error);
    std::string text = result.text;
    for (const Value& value : whole.skeleton().values) {
        const auto* number = std::get_if<std::int64_t>(&value);
        text += number ? " <" + std::to_string(*number) + ">"
                       : " <'" + std::string(std::get<0>(value)) + "'>";
    }
    return text;
}

TEST(SqliteText, MeansTheSameToSqlite) {
    const std::pair<std::string, std::string> kCases[] = {
        {"update t set a = 'x'b = 'y'", "update t set a = ? b = ? <'x'> <'y'>"},
        {"insert into t values(-9223372036854775809,1.5,1+1,'a'||'b',(select 'x'),-'5')",
         "insert into t values(-9223372036854775809,1.5,1+1,'a' OR 'b',(select 'x'),-'5')"},
        // definitions
        {"create table t(a text default 'it''s', check(a='x\\ny'))",
         "create table t(a text default 'it''s', check(a='x\ny'))"},
        {"create trigger r after insert on t when new.a = 5 begin update t set a='x';"
         " select case when 1 then 2 end; end;",
         "create trigger r after insert on t when new.a = 5 begin update t set a='x';"
         " select case when 1 then 2 end; end"},
        // tokens neither fuse nor part
        {"select--5/*c*/,a||b&&(c)||`d`#e", "select- -5 ,a OR b AND(c)OR `d`"},
        {"select a.where=5,a.or,'a'5,'a'b from t where a='x'5",
         "select a.where=5,a.or,'a' 5,'a' b from t where a=? 5 <'x'>"},
        {"-- nothing but a comment", ""},
        {"select/**/a\n\t,b\vfrom t ; -- end", "select a ,b from t"},
        {"select 'a\\'b\"', \"c'd\", 'a\0b'"s, "select 'a''b\"', 'c''d', CAST(x'610062' AS TEXT)"},
        {"select a->b, c==d, x'41'", "select a- >b, c= =d, x '41'"},
    };
    for (const auto& [statement, text] : kCases)
        EXPECT_EQ(rewritten(statement), text) << statement;
}

TEST(SqliteText, RefusesWhatServersRefuse) {
    const std::pair<int, std::vector<std::string>> kCases[] = {
        {1065, {"", " \n", ";", " ;;"}},
        {1366, {"insert into t values('\xFF')", "select '\xED\xA0\x80'"}},
        {1300, {"select \xFF", "\xC3(", "select `\xFF`"}},
        {1064,
         {"attach 'a' as b", "DETACH b", "pragma x", "vacuum", "reindex", "analyze",
          "explain select 1", "begin", "end", "nonsense", "'x'",
          "insert or replace into t values(1)", "update or ignore t"}},
        {1064,
         {"select ?", "select :a", "select @a", "select @@a", "select a:=1", "select 'x",
          "select 1; select 2", "select 1;'", "select (1", "select 1)", "select \\N",
          "select 1 /*!+1*/"}},
        {1064,
         {"create table t(a int); drop table t",
          "create trigger r after insert on t begin select 1; end; drop table t",
          "insert into t values('x'),(1", "insert into t values(1),(@a)",
          "insert into t values(1),('"}},
    };
    for (const auto& [error, statements] : kCases)
        for (const std::string& statement : statements)
            EXPECT_EQ(toSqlite(Statement(statement)).error, error) << statement;
    const SqliteText result = toSqlite(Statement("select 'a', secret?"));
    EXPECT_EQ(result.errorMessage, "You have an error in your SQL syntax, at byte 18");
}

std::string repeated(std::string_view piece, int times, std::string_view between) {
    std::string text;
    for (int i = 0; i < times; ++i)
        text.append(i == 0 ? "" : between).append(piece);
    return text;
}

TEST_F(SqliteTest, LongOrChainsAreGroupedAndNothingElse) {
    EXPECT_EQ(0, run("create table t(a text primary key, n int)"));
    EXPECT_EQ(2, run("insert into t values('x',1),('y',2)"));
    const std::string terms = repeated("a='-' and (n=1 or n=2 or n=2)", 1000, " or ");
    const std::string cases = repeated("case when 1 or 0 or 0 then 0 end", 300, " or ");
    const std::pair<std::string, std::string> kCases[] = {
        {terms + " or a='x'", " 1"},
        {"a='y'||" + repeated("a='-'", 40000, "||") + " order by n", " 2"},
        {terms + " or n=1 union select n from t where " + cases + " or n=2", " 1 2"},
        {cases + " or exists(select 1 from t where 1=0 or 1=1 limit 1) order by n", " 1 2"},
        {terms + " or", "-1064"},
        {terms + " or or n=1", "-1064"},
        {"or " + terms, "-1064"},
        // unbalanced, but balanced with the parentheses of the groups
        {"a='-') or (n=1 or " + terms, "-1064"},
        {terms + ") or (n=1", "-1064"},
    };
    for (const auto& [condition, outcome] : kCases)
        EXPECT_EQ(values("select n as v from t where " + condition), outcome)
            << condition.substr(0, 40);
    const std::string shortChain = "select 1 where " + repeated("1=n", 200, " or ");
    EXPECT_EQ(toSqlite(Statement(shortChain)).text, shortChain);
}

TEST_F(SqliteTest, MoreLiteralsThanSqliteHasParameters) {
    const std::string rows = repeated("('x',7)", 40000, ",");
    EXPECT_EQ(Statement("insert into t values" + rows).skeleton().values.size(), 80000U);
    EXPECT_EQ(Statement("insert into t values('x',null)," + rows).skeleton().values.size(), 30000U);
    EXPECT_EQ(0, run("create table t(a text, n integer)"));
    EXPECT_EQ(0, run("create index i on t(n)"));
    EXPECT_EQ(40000, run("insert into t values" + rows));
    EXPECT_EQ(40001, run("insert into t values('x',null)," + rows));
    EXPECT_EQ(" 80000", values("select count(n) v from t where " + repeated("n=7", 40000, " or ")));
}

}  // namespace
}  // namespace dbaccess::sqlite
