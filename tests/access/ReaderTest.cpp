#include "dbaccess/reader/Statement.h"
#include "dbaccess/reader/TokenReader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace dbaccess {
namespace {

using namespace std::string_literals;

TEST(StatementKind, IsToldByTheFirstWords) {
    const struct {
        StatementKind kind;
        std::vector<std::string> texts;
    } kCases[] = {
        {StatementKind::Read,
         {"select 1", "SELECT 1", " \n/* a */ -- b\n# c\n select 1",
          "((select 1) union (select 2))", "show tables", "desc t", "explain select 1",
          "values (1)", "with a as (select 1), b as (delete) select 1"}},
        {StatementKind::Write,
         {"", ";", "-- x", "insert into t values('x", "replace into t values(1)",
          "update t set a=1", "delete from t", "selection", "'select'", "--select 1", "/* select 1",
          "/*! select 1 */", "analyze update t set a=1"}},
        {StatementKind::Write,
         {"with a as (select 1) update t set a=1", "with a as (select 1) insert into t select 1",
          "set global a=1", "SET @@global.a=1", "set a=1, persist b=2", "set names 'utf8",
          "set statement a=1 for select 1", "set global autocommit=1"}},
        {StatementKind::Session,
         {"set names utf8", "SET NAMES utf8;", "set sql_mode='a,autocommit=1'", "set @a=1",
          "set session a=1, @@local.b=(select max(a, autocommit) from t)", "set @autocommit=1",
          "set character set utf8", "set session transaction read only"}},
        {StatementKind::Transaction,
         {"begin", "start transaction", "Commit", "rollback", "savepoint a", "release savepoint a",
          "lock tables t read", "unlock tables", "xa begin 'a'", "set autocommit=0",
          "set @@autocommit=0", "set @@session . autocommit=0", "set local `AutoCommit` = 0",
          "set names utf8, autocommit=0", "flush tables with read lock",
          "flush tables t for export", "backup stage start"}},
        {StatementKind::Definition,
         {"create table t(a int)", "alter table t add b int", "drop table t", "rename table t to u",
          "truncate t", "grant all on t to u", "revoke all on t from u", "analyze table t",
          "optimize table t", "repair table t", "flush tables", "start slave", "set password = 'x'",
          "set default role none", "call p()"}},
        {StatementKind::Use, {"use vms", "/* a */ USE `vms`"}},
    };
    for (const auto& expected : kCases)
        for (const std::string& text : expected.texts)
            EXPECT_EQ(kindOf(text), expected.kind) << text;
}

TEST(StatementSummary, NamesVerbAndTableButNeverAValue) {
    const std::pair<std::string, std::string> kCases[] = {
        {"Insert Into device(Guid) values('secret')", "insert device"},
        {"replace into vms.device values('secret')", "replace device"},
        {"update ignore device set a='secret'", "update device"},
        {"select Guid,1 from device where a='secret'", "select device"},
        {"(select a from (select b from device))", "select device"},
        {"delete from device", "delete device"},
        {"create table if not exists device(a int)", "create device"},
        {"create trigger t after insert on device", "create device"},
        {"truncate table device", "truncate device"},
        {"set password = 'secret'", "set"},
        {"select 'secret' from device", "select"},
        {"insert into 'device'", "insert"},
        {"insert into `device`", "insert"},
        {"update", "update"},
        {"delete from " + std::string(65, 'x'), "delete"},
        {"secret from device", "statement"},
        {"'secret'", "statement"},
        {"", "statement"},
        {"/*! insert into device */", "statement"},
    };
    for (const auto& [text, summary] : kCases)
        EXPECT_EQ(summaryOf(text), summary) << text;
}

TEST(SessionKey, IsTheSubjectOfTheSet) {
    const std::pair<std::string, std::string> kCases[] = {
        {"SET NAMES utf8", "names"},
        {"set character set utf8", "names"},
        {"set Sql_Mode='a,b=c'", "sql_mode"},
        {"set session sql_mode=''", "sql_mode"},
        {"set @@local.sql_mode=''", "sql_mode"},
        {"set `sql_mode`=(1,2)", "sql_mode"},
        {"set @sql_mode=1", "@sql_mode"},
        {"set names utf8, sql_mode=''", "names,sql_mode"},
        {"set session transaction READ only", "transaction read"},
        {"select 1", ""},
        {"set", ""},
    };
    for (const auto& [text, key] : kCases)
        EXPECT_EQ(sessionKeyOf(text), key) << text;
}

/// The tokens, each between bars: literals by value in <>, names with their backticks; at the end
/// the error, if there is one.
std::string tokensOf(std::string_view text) {
    std::string tokens = "|";
    TokenReader reader(text);
    for (Token token = reader.next(); token.kind != TokenKind::End; token = reader.next()) {
        if (token.kind == TokenKind::Bad) return tokens + std::to_string(reader.error());
        tokens += token.kind == TokenKind::Text ? '<' + std::string(token.value()) + '>'
                                                : std::string(token.source);
        tokens += token.kind == TokenKind::Number ? "#|" : "|";
    }
    return tokens;
}

TEST(TokenReader, FollowsTheLexicalRulesOfServers) {
    const std::pair<std::string, std::string> kCases[] = {
        {"", "|"},
        {"a.b$c_1 `x``y;'` \xC3\xA9", "|a|.|b$c_1|`x``y;'`|\xC3\xA9|"},
        {"select\v1\f", "|select|1#|"},
        // numbers
        {"12 1.5 .5 1. 1e3 1.5e-3 0x1F", "|12#|1.5#|.5#|1.#|1e3#|1.5e-3#|0x1F#|"},
        {"-5,+5", "|-|5#|,|+|5#|"},
        {"1a 1e 0X41 0x 1e3a 1.5a 1e+", "|1a|1e|0X41|0x|1e3#|a|1.5#|a|1e|+|"},
        // signs
        {"a<=>b<>c<=d!=e||f&&g:=h<<i", "|a|<=>|b|<>|c|<=|d|!=|e||||f|&&|g|:=|h|<<|i|"},
        {"a==b->c@@d@e", "|a|=|=|b|-|>|c|@@|d|@|e|"},
        // literals
        {"'a''b' , \"a\"\"b\" , 'a\"b'", "|<a'b>|,|<a\"b>|,|<a\"b>|"},
        {R"('\n\t\r\b\Z\\\'\"\%\_\q\N')", "|<\n\t\r\b\x1a\\'\"\\%\\_qN>|"},
        {R"('a\0b')", "|<a\0b>|"s},
        {"'a\0b\n'"s, "|<a\0b\n>|"s},
        {"'a' \"b\"\n'c'/* d */'e'-- f\n'g'", "|<abceg>|"},
        {"'a\\\xC3\xA9' '\xF0\x9F\x98\x80' ''", "|<a\xC3\xA9\xF0\x9F\x98\x80>|"},
        {"'' ''", "|<>|"},
        {"x'41'", "|x|<41>|"},
        {"'a'b", "|<a>|b|"},
        // comments
        {"a/*b*/c#d\ne--\tf\ng--h", "|a|c|e|g|-|-|h|"},
        {"a--", "|a|"},
        {"--5 /* '\xFF\0 */ -- '"s, "|-|-|5#|"},
        {"/*+ a */ b /**/ c /***/", "|b|c|"},
        {"a /* /* */ b", "|a|b|"},
        // the end
        {"a;", "|a|"},
        {" a ; ;; -- b\n/* c */", "|a|"},
        {"a; b", "|a|1064"},
        {"a;;'", "|a|1064"},
        {"a; /* b", "|a|1064"},
        {"a--;#", "|a|-|-|1064"},
        // what no server takes
        {"'a' /* b", "|<a>|1064"},
        {"a\0"s, "|a|1064"},
        {"a\\b", "|a|1064"},
        {"a /*!b*/", "|a|1064"},
        {"a /*M!b*/", "|a|1064"},
        {"a\x7F", "|a|1064"},
        {"a \xFF", "|a|1300"},
    };
    for (const auto& [text, tokens] : kCases)
        EXPECT_EQ(tokensOf(text), tokens) << text;

    const std::pair<std::string, std::vector<std::string>> kIllFormed[] = {
        {"|1064", {"'abc", R"('abc\')", "'a' 'b", "'\\", "`a``", "`a\0`"s}},
        {"|1064", {"/* a", "/*/", "[", "]", "?", ":a"}},
        // not UTF-8: cut short, overlong, surrogate, above U+10FFFF, lone continuation
        {"|1366", {"'\xC3'", "'\xE2\x82'", "'a\xC0\xAF'", "'\xE0\x9F\xBF'"}},
        {"|1366", {"'\xED\xA0\x80'", "'\xF4\x90\x80\x80'", "'\x80'"}},
        {"|1300", {"`\xFF`", "1\xFF", "\xF0\x9F\x98\x80"}},
    };
    for (const auto& [error, texts] : kIllFormed)
        for (const std::string& text : texts)
            EXPECT_EQ(tokensOf(text), error) << text;
}

TEST(TokenReader, StaysAtTheEndAndTellsItsPlace) {
    const std::string text = "a ; x";
    TokenReader reader(text);
    reader.next();
    for (int i = 0; i < 2; ++i) {
        const Token token = reader.next();
        EXPECT_EQ(token.kind, TokenKind::Bad);
        EXPECT_EQ(token.source.data() - text.data(), 2);
    }
    TokenReader body(text);
    body.setCompound(true);
    body.next();
    EXPECT_TRUE(isSign(body.next(), ";"));
    EXPECT_TRUE(isWord(body.next(), "x"));
    EXPECT_EQ(body.next().kind, TokenKind::End);
    EXPECT_EQ(body.next().kind, TokenKind::End);
}

}  // namespace
}  // namespace dbaccess
