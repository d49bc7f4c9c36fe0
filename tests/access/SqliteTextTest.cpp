#include "dbaccess/sqlite/SqliteText.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "dbaccess/reader/Statement.h"
#include "tests/access/SqliteTest.h"

namespace dbaccess::sqlite {
namespace {

using namespace std::string_literals;

/// The text with its values behind it, as "select a = ? <1> <'x'>", or the error number. "each 2"
/// stands before the values when there is a run of the text for each two of them.
std::string rewritten(const std::string& statement) {
    const Statement whole(statement);
    const Skeleton& skeleton = whole.skeleton();
    const SqliteText result = toSqlite(whole);
    if (result.error != 0) return std::to_string(result.error);
    std::string text = result.text;
    if (skeleton.valuesPerRow != 0) text += " each " + std::to_string(skeleton.valuesPerRow);
    for (const Value& value : skeleton.values) {
        const auto* number = std::get_if<std::int64_t>(&value);
        text += number ? " <" + std::to_string(*number) + ">"
                       : " <'" + std::string(std::get<0>(value)) + "'>";
    }
    return text;
}

TEST(SqliteText, BindsOnlyWhereAValueMeansTheSame) {
    const std::pair<std::string, std::string> kCases[] = {
        // operands of SET, WHERE and ON
        {"update t set a = 'x',b=\"y\" where c<>5",
         "update t set a = ?,b=? where c<>? <'x'> <'y'> <5>"},
        {"update t set a = 'x'b = 'y'", "update t set a = ? b = ? <'x'> <'y'>"},
        {"select * from t where a>='x' 'y' or b!=7",
         "select * from t where a>=? or b!=? <'xy'> <7>"},
        {"select * from t join u on a='x' where b='y'",
         "select * from t join u on a=? where b=? <'x'> <'y'>"},
        {"delete from t where a in (select b from u where c='x') and d='y'",
         "delete from t where a in (select b from u where c=?) and d=? <'x'> <'y'>"},
        {"select 'x', a='x' from t where b='y' order by c='x' limit 5",
         "select 'x', a='x' from t where b=? order by c='x' limit 5 <'y'>"},
        {"select * from t where a like 'x' and b in ('y',1) and c between 1 and 2",
         "select * from t where a like 'x' and b in ('y',1) and c between 1 and 2"},
        {"select * from t where a=1.5 or a=-5 or a=1e3 or a=9223372036854775808 or a=007",
         "select * from t where a=1.5 or a= -5 or a=1e3 or a=9223372036854775808 or a=? <7>"},
        {"values('x',1)", "values('x',1)"},
        // rows
        {"insert into t values('x',5,-5,+ 6,null)",
         "insert into t values(?,?,?,?,null) <'x'> <5> <-5> <6>"},
        {"replace into t values(-9223372036854775808, 9223372036854775807)",
         "replace into t values(?, ?) <-9223372036854775808> <9223372036854775807>"},
        {"insert into t values(-9223372036854775809,1.5,1+1,'a'||'b',(select 'x'),-'5')",
         "insert into t values(-9223372036854775809,1.5,1+1,'a' OR 'b',(select 'x'),-'5')"},
        {"insert into t(a) select 'x' from u where b='y'",
         "insert into t(a) select 'x' from u where b=? <'y'>"},
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
         {"select ?", "select :a", "select @a", "select @@a", "select a:=1", "select $a",
          "select 1a", "select 'x", "select 1; select 2", "select 1;'", "select (1", "select 1)",
          "select \\N", "select 1 /*!+1*/"}},
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

TEST(SqliteText, SplitsRowsOfOneShape) {
    const std::pair<std::string, std::string> kCases[] = {
        {"insert into t values('a',1),('b',-2),('c','d');",
         "insert into t values(?,?) each 2 <'a'> <1> <'b'> <-2> <'c'> <'d'>"},
        {"insert into t values ('a', null), ( 'b',null )",
         "insert into t values (?, null), ( ?,null ) <'a'> <'b'>"},
        {"replace into t values('a',null) , ('b',null)",
         "replace into t values(?,null) each 1 <'a'> <'b'>"},
        // shapes differ, or there is nothing to bind
        {"insert into t values('a',1),('b',null)",
         "insert into t values(?,?),(?,null) <'a'> <1> <'b'>"},
        {"insert into t values('a'),('b','c')", "insert into t values(?),(?,?) <'a'> <'b'> <'c'>"},
        {"insert into t values(null),(null)", "insert into t values(null),(null)"},
        // a computed row must not see the rows before it
        {"insert into t values('a',(select max(b) from t)),('c',(select max(b) from t))",
         "insert into t values(?,(select max(b) from t)),(?,(select max(b) from t)) <'a'> <'c'>"},
        // the engine sees the mistake
        {"insert into t values('a'),", "insert into t values(?), <'a'>"},
        {"insert into t values('a'),('b'),", "insert into t values(?),(?), <'a'> <'b'>"},
        {"insert into t values('a')('b')", "insert into t values(?)('b') <'a'>"},
        {"insert into t values('a'),('b')('c')", "insert into t values(?),(?)('c') <'a'> <'b'>"},
        {"insert into t values('a'),,('b')", "insert into t values(?),,(?) <'a'> <'b'>"},
        {"insert into t values;", "insert into t values"},
    };
    for (const auto& [statement, text] : kCases)
        EXPECT_EQ(rewritten(statement), text);
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

/// Whatever pieces and bytes are put together: one statement or none, with a value for each
/// parameter.
TEST(SqliteText, NeverLetsASecondStatementThrough) {
    const std::string kBegins[] = {"select ", "insert into t values",
                                   "update t set a=", "create trigger r after insert on t begin "};
    const std::string kPieces[] = {" where ", " or ",  "('a',1)", "drop table t", "case when ",
                                   " end",    "; end", "-- ",     "/*",           "*/",
                                   "||",      "'x'",   "''"};
    constexpr std::string_view kSigns("(),'\"\\;-#\n`.=?@a5 \0\xC3\xA9", 21);
    sqlite3* database = nullptr;
    sqlite3_open(":memory:", &database);
    sqlite3_exec(database, "create table t(a text, b int)", nullptr, nullptr, nullptr);
    std::mt19937 random(1);
    for (int i = 0; i < 50000; ++i) {
        std::string statement = kBegins[random() % std::size(kBegins)];
        for (auto left = random() % 10; left > 0; --left) {
            const auto kind = random() % 8;
            if (kind == 0) statement += static_cast<char>(random());
            if (kind <= 3) statement += kPieces[random() % std::size(kPieces)];
            if (kind > 3) statement += kSigns[random() % kSigns.size()];
        }
        summaryOf(statement);
        sessionKeyOf("set " + statement);
        kindOf("set " + statement);
        const Statement whole(statement);
        const Skeleton& skeleton = whole.skeleton();
        const SqliteText sqlite = toSqlite(whole);
        sqlite3_stmt* prepared = nullptr;
        const char* tail = nullptr;
        if (sqlite.error == 0 &&
            sqlite3_prepare_v2(database, sqlite.text.c_str(), -1, &prepared, &tail) == SQLITE_OK) {
            EXPECT_EQ(tail, sqlite.text.data() + sqlite.text.size()) << sqlite.text;
            const std::size_t perRow = skeleton.valuesOfRun();
            const int parameters = sqlite3_bind_parameter_count(prepared);
            EXPECT_EQ(perRow, static_cast<std::size_t>(parameters)) << sqlite.text;
            EXPECT_TRUE(perRow == 0 || skeleton.values.size() % perRow == 0) << sqlite.text;
        }
        sqlite3_finalize(prepared);
    }
    sqlite3_close(database);
}

}  // namespace
}  // namespace dbaccess::sqlite
