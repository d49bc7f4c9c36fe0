#include "dbaccess/reader/Skeleton.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <thread>
#include <vector>

#include "dbaccess/stats/StatementForm.h"

namespace dbaccess {
namespace {

using namespace std::string_literals;

/// The text, "|" and the values, texts in <>; the rows of several runs behind "/". A "-" in front:
/// not for servers.
std::string shown(const Skeleton& skeleton) {
    std::string all = (skeleton.forServers ? "" : "-") + skeleton.text;
    for (std::size_t i = 0; i < skeleton.values.size(); ++i) {
        const Value& value = skeleton.values[i];
        const auto* text = std::get_if<std::string_view>(&value);
        const bool newRow = skeleton.valuesPerRow != 0 && i % skeleton.valuesPerRow == 0;
        all += newRow ? "/" : "|";
        all += text == nullptr ? std::to_string(std::get<std::int64_t>(value))
                               : "<" + std::string(*text) + ">";
    }
    return all;
}

TEST(StatementForm, HoldsNoValue) {
    const std::pair<const char*, const char*> cases[] = {
        {"select a , 'v' from `t x` where b=-1.5 and c in ('v',0x76) limit 3;",
         "select a , ? from `t x` where b=-? and c in (?,?) limit ?"},
        {"set password = \"v\" /* v */ # v", "set password = ?"},
        {"select N'v', _utf8'v' 'v', x'76'", "select N?, _utf8?, x?"},
        {"select 'it''s' as a, '\\\\', v", "select ? as a, ?..."},
        {"select 'O'v'", "select ?v..."},
    };
    for (const auto& [text, form] : cases)
        EXPECT_EQ(form, formOf(text));
    EXPECT_GT(1100U, formOf("do 'v'" + std::string(5000, '+') + "1").size());
}

TEST(Skeleton, TakesOutWhatMayBeBound) {
    const std::pair<std::string, std::string> cases[] = {
        // operands, in the clauses that take them
        {"select a from t where b='x' and c >= 5;", "select a from t where b=? and c >= ?|<x>|5"},
        {"update t set a='x',b=1 where c<>'y'", "update t set a=?,b=? where c<>?|<x>|1|<y>"},
        {"delete from t where a!=\"x\"", "delete from t where a!=?|<x>"},
        {"select 'x',1 from t u join t on u.a=1 order by a=1",
         "select 'x',1 from t u join t on u.a=? order by a=1|1"},
        {"select a from t where b in ('x',1) limit 1",
         "select a from t where b in ('x',1) limit 1"},
        {"select a from t where 1=b and b like 'x' and c<=>1 and d=-1 and e=1.5",
         "select a from t where 1=b and b like 'x' and c<=>1 and d=-1 and e=1.5"},
        {"select a=1 from t group by a=1 having a=1", "select a=1 from t group by a=1 having a=1"},
        // the text of what stands in a list is its column's name
        {"select (select a from t where b=1)=1, 2 from t where c=(select 1 from t where d=1)",
         "select (select a from t where b=1)=1, 2 from t where c=(select 1 from t where d=?)|1"},
        {"select extract(day from a)=1 from t where b=1",
         "select extract(day from a)=1 from t where b=?|1"},
        {"select a from (select b from t where c=1) u where d=2",
         "select a from (select b from t where c=?) u where d=?|1|2"},
        {"delete from t where a=1 returning (select b from t where c=1)",
         "delete from t where a=? returning (select b from t where c=1)|1"},
        // rows
        {"insert into t(a) values('x',-5,+5,- 5,null,1.5,'a' + 1)",
         "insert into t(a) values(?,?,?,?,null,1.5,'a' + 1)|<x>|-5|5|-5"},
        {"replace t value ('x',1), ('y',2),('',3) ;", "replace t value (?,?)/<x>|1/<y>|2/<>|3"},
        {"insert into t values('x',1),('y',null)", "insert into t values(?,?),(?,null)|<x>|1|<y>"},
        {"insert into t values('x'),('y') returning a",
         "insert into t values(?),(?) returning a|<x>|<y>"},
        {"insert into t values('x',f()),('y',f())", "insert into t values(?,f()),(?,f())|<x>|<y>"},
        {"insert into t values(null),(null)", "insert into t values(null),(null)"},
        {"insert into t values('x', null), ( 'y',null )",
         "insert into t values(?, null), ( ?,null )|<x>|<y>"},
        {"replace t values('x',null) , ('y',null)", "replace t values(?,null)/<x>/<y>"},
        {"insert into t values('x'),('y','z')", "insert into t values(?),(?,?)|<x>|<y>|<z>"},
        {"insert into t values('x'),('y'),", "insert into t values(?),(?),|<x>|<y>"},
        {"insert into t values('x'),,('y')('z')", "insert into t values(?),,(?)('z')|<x>|<y>"},
        {"insert into t(`values`) values(1) on duplicate key update a='x'",
         "insert into t(`values`) values(?) on duplicate key update a=?|1|<x>"},
        // numbers
        {"update t set a=007,b=9223372036854775807,c=9223372036854775808,d=0x41,e=1e5",
         "update t set a=?,b=?,c=9223372036854775808,d=0x41,e=1e5|7|9223372036854775807"},
        {"insert t values(-9223372036854775808,-9223372036854775809)",
         "insert t values(?,-9223372036854775809)|-9223372036854775808"},
        // literals close to words, adjacent ones, escapes
        {"select a from t where b='x'and c='y'or d=N'z'",
         "select a from t where b=? and c=? or d=N'z'|<x>|<y>"},
        {"select a from t where b='x' 'y'/**/\"z\" and c='it''s' and d='\\n\\%\\0'",
         "select a from t where b=? and c=? and d=?|<xyz>|<it's>|<\n\\%\0>"s},
        {"select a from t where b=1--;", "select a from t where b=?--;|1"},
        {"select a from t where b=/*'*/'x'-- 'y'\n", "select a from t where b=/*'*/?-- 'y'\n|<x>"},
        // servers
        {"select count(*) from t where a=1", "select count(*) from t where a=?|1"},
        {"select * from t where a=1", "-select * from t where a=?|1"},
        {"select t.* from t", "-select t.* from t"},
        {"update t set a=@b", "-update t set a=@b"},
        {"select @@port", "-select @@port"},
        {"insert t values('x') union select 'y'", "-insert t values(?) union select 'y'|<x>"},
        {"select row_count()", "-select row_count()"},
        {"with a as (select 1) select 1 where 1=1", "-with a as (select 1) select 1 where 1=1"},
        {"values (1)", "-values (1)"},
        {"insert t values(/*?*/1),(/*'x'*/2)", "insert t values(/*?*/?),(/*'x'*/?)|1|2"},
        // nothing to keep
        {"set a=1", "-"},
        {"create table t(a int)", "-"},
        {"", "-"},
        {"insert into t values('x", "-"},
        {"select a from t where b='\xFF'", "-"},
        {"select a from t where b=?", "-"},
    };
    for (const auto& [text, skeleton] : cases)
        for (int i = 0; i < 2; ++i)
            EXPECT_EQ(skeleton, shown(skeletonOf(text)));
}

/// What a fresh thread, which remembers nothing, makes of the text.
std::string alone(const std::string& text) {
    std::string result;
    std::thread([&] { result = shown(skeletonOf(text)); }).join();
    return result;
}

/// A statement of random pieces. With another seed for its literals it looks alike.
std::string statement(unsigned int seed, unsigned int literals) {
    static const std::vector<std::string> kStarts = {
        "select a from t where b=", "insert into t values(",    "update t set a=", "select 1, ",
        "delete from t where a =",  "replace t values(1,'x'),("};
    static const std::vector<std::string> kPieces = {
        "",      " ",         ",",        "=",          "b=",       " and c=", "-",
        "--",    "-- ",       "+",        "(",          ")",        "),(",     "/**/",
        "/*'*/", "#'\n",      "\n",       "\t",         ".",        "N",       "x",
        "e5",    "0x41",      "1e5",      ".5",         "5.",       "`a`",     "\"b\"",
        "''",    "'\\n'",     "'\\''",    "'\xC3\xA9'", "\xC3\xA9", "'\xFF'",  "?",
        ";",     " where a=", " select ", " values(",   "*",        "@",       "null",
        "'",     "\\",        "$",        "_",          "!=",       "<=>",     {'\0'}};
    static const std::vector<std::string> kTexts = {
        "''", "'x'", "'5'", "'a b;--'", "'?'", "'\xF0\x9F\x98\x80'", "'select'", "'\n\t'"};
    static const std::vector<std::string> kNumbers = {
        "0", "5", "42", "007", "9223372036854775807", "9223372036854775808"};
    std::mt19937 random(seed);
    std::mt19937 literal(literals);
    const auto oneOf = [](std::mt19937& generator, const std::vector<std::string>& all) {
        return all[generator() % all.size()];
    };
    std::string text = oneOf(random, kStarts);
    for (auto count = 1 + random() % 7; count > 0; --count) {
        const auto kind = random() % 4;
        text += kind == 0   ? oneOf(literal, kTexts)
                : kind == 1 ? oneOf(literal, kNumbers)
                            : oneOf(random, kPieces);
    }
    return text;
}

TEST(Skeleton, IsTheSameWhenItsLikeWasSeenBefore) {
    constexpr unsigned int kStatements = 4000;
    int taken = 0;
    for (unsigned int seed = 0; seed < kStatements; ++seed) {
        const std::string text = statement(seed, 0);
        const std::string first = alone(text);
        std::string last;
        std::thread([&] {
            for (unsigned int like = 1; like < 4; ++like) {
                const std::string other = statement(seed, like);
                EXPECT_EQ(alone(other), shown(skeletonOf(other))) << testing::PrintToString(other);
            }
            last = shown(skeletonOf(text));
        }).join();
        EXPECT_EQ(first, last) << testing::PrintToString(text);
        EXPECT_EQ(first, shown(skeletonOf(text))) << testing::PrintToString(text);
        taken += first.find('|') == std::string::npos ? 0 : 1;
    }
    EXPECT_GT(taken, static_cast<int>(kStatements / 4));
}

}  // namespace
TEST(Skeleton, RowsLikeTheFirstAreReadAsAnyOther) {
    const auto insertOf = [](unsigned int seed, const std::string& comment) {
        std::string text = "insert into t values";
        for (unsigned int row = 0; row < 4; ++row) {
            const std::string pieces = statement(seed, row);
            text += (row == 0 ? "(" : ",(") + comment +
                    pieces.substr(pieces.find_last_of("=(,") + 1) + ",'x')";
        }
        return text;
    };
    int split = 0;
    for (unsigned int seed = 0; seed < 4000; ++seed) {
        std::string slow = alone(insertOf(seed, "/*?*/"));  // its bytes alone do not tell
        for (std::size_t at = 0; (at = slow.find("/*?*/")) != std::string::npos;)
            slow.erase(at, 5);
        EXPECT_EQ(slow, alone(insertOf(seed, "")));
        split += slow.find("values(?,?)") != std::string::npos ? 1 : 0;
    }
    EXPECT_GT(split, 100);
}

}  // namespace dbaccess
