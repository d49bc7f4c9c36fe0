// Whatever the library sends, a server and the embedded engine answer alike: success or failure,
// error number, affected rows, and the rows themselves.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <memory>
#include <set>

#include "dbaccess/DataAccess.h"
#include "dbaccess/error/ErrorNumber.h"
#include "schema/Schema.h"
#include "tests/integration/StatementGenerator.h"
#include "tests/support/engines/PrivateServer.h"
#include "tests/support/engines/TemporaryDirectory.h"

namespace dbaccess {
namespace {

constexpr const char* kDatabase = "differential";
constexpr int kMostFailures = 20;

using Texts = std::vector<std::string>;

std::string join(const Texts& texts, const char* separator) {
    std::string result;
    for (const std::string& text : texts)
        result += text + separator;
    return result.substr(0, result.size() - 1);
}

/// For a failure; the values are the test's own.
std::string readable(const std::string& text) {
    return testing::PrintToString(text.substr(0, 2000));
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

/// Whether these answers to a statement with hostile values may differ.
bool knownDifference(const std::string& text, const std::string& server,
                     const std::string& embedded) {
    const int serverError = -std::atoi(server.c_str());
    const int embeddedError = -std::atoi(embedded.c_str());
    const auto are = [&](int a, int b) { return serverError == a && embeddedError == b; };
    const auto has = [&](const std::string& part) { return contains(text, part); };
    // Where they write, servers do not take a text for a truth value or a number; SQLite does.
    if (serverError == 1292) return has("' or ") || has("' and ") || has("%");
    // Servers compare two literals (not columns) without regard to blanks at their ends.
    if (has("'='1 ")) return true;
    // Servers look whether a text is UTF-8 where they store it, the embedded engine beforehand.
    if (embeddedError == kIncorrectValue || embeddedError == kInvalidUtf8)
        if (std::any_of(kIllFormedTexts.begin(), kIllFormedTexts.end(), has)) return true;
    // The limit of a long text falls into a character.
    if (are(kIncorrectValue, kDataTooLong)) return text.size() > 65535;
    // Of two faults in one statement, either may be found first.
    if (are(kSyntaxError, kInvalidUtf8) || are(kInvalidUtf8, kSyntaxError)) return true;
    if (are(kValueCountMismatch, kUnknownColumn) || are(kUnknownColumn, kValueCountMismatch))
        return has("nosuch");
    // Without quotes these are a name and a variable to servers; SQLite's parameters are refused.
    if (embeddedError == kSyntaxError && (has(", $1") || has(", @a"))) return true;
    // Servers do not look at what stands behind a NUL behind the end of the statement.
    return embeddedError == kSyntaxError && has(std::string(";\0", 2));
}

class Differential : public testing::Test {
protected:
    static void SetUpTestSuite() { privateServer_ = std::make_unique<PrivateServer>(); }
    static void TearDownTestSuite() { privateServer_.reset(); }

    Differential()
        : server_(privateServer_->socket(), 0, PrivateServer::user(), privateServer_->password()),
          embedded_("sqlite:" + directory_.path(), 0, "", "") {
        for (DataAccess* access : {&server_, &embedded_}) {
            EXPECT_TRUE(access->Initialize(1, 1, true, true));
            EXPECT_EQ(0, schema::Create(*access, kDatabase));
            EXPECT_EQ(0, access->Execute(kDatabase, "SET NAMES utf8"));
        }
    }
    ~Differential() override { server_.Execute("", std::string("drop database ") + kDatabase); }

    /// Runs a text of the form on both engines and compares. @param place  names it in a failure.
    void compare(const StatementForm& form, const std::string& text, const std::string& place) {
        noteTable(form);
        check(form.text, text, place, answer(server_, form, text), answer(embedded_, form, text));
    }

    /// The same for statements in one transaction.
    void compareList(const std::vector<StatementForm>& forms, std::deque<std::string> texts,
                     const std::string& place) {
        for (const StatementForm& form : forms)
            noteTable(form);
        const std::string server = resultOf(server_.Update(kDatabase, texts));
        check("a list", join({texts.begin(), texts.end()}, "\n"), place, server,
              resultOf(embedded_.Update(kDatabase, texts)));
    }

    /// Compares all rows of the tables that statements were about since the last time.
    void compareContents(const std::string& place) {
        for (const std::string& table : std::set<std::string>(touched_)) {
            const StatementForm all = contentOf(table);
            compare(all, all.text, place + ", then the content");
            if (answer(server_, all, all.text).empty()) defaultIds_.erase(table);
        }
        touched_.clear();
    }

    /// Rows affected, "-1064 42000" for an error, or a query's rows as "1,a|2,b".
    std::string answer(DataAccess& access, const StatementForm& form,
                       const std::string& text) const {
        if (form.columns.empty())
            return resultOf(text.size() % 2 == 0 ? access.Insert(kDatabase, text)
                                                 : access.Execute(kDatabase, text));
        ResultSet* set = access.Query(kDatabase, text);
        if (set == nullptr) return resultOf(-LastError().number);
        Texts rows;
        Texts order;
        while (set->next())
            rows.push_back(rowOf(form, *set, order));
        DataAccess::ReleaseResulitSet(set);
        // There is one order by SN; by another column, rows with the same value may change places.
        if (form.order != "SN") std::sort(rows.begin(), rows.end());
        return join(rows, "|") + (order.empty() ? "" : " in the order " + join(order, "|"));
    }

    DataAccess& server() { return server_; }
    DataAccess& embedded() { return embedded_; }
    int knownDifferences() const { return knownDifferences_; }

private:
    static std::string resultOf(std::int64_t result) {
        const std::string number = std::to_string(result);
        return result < 0 ? number + " " + LastError().sqlState : number;
    }

    std::string rowOf(const StatementForm& form, ResultSet& set, Texts& order) const {
        Texts row;
        for (const std::string& column : form.columns) {
            std::string value = "NULL";
            if (set.getString(column, value) && value.empty()) value = "''";
            // What the engines number by themselves, they number differently.
            const bool idsDiffer = defaultIds_.count(form.table) != 0;
            if (column == "SN" || (column == "Id" && idsDiffer)) value = "number";
            if (column == form.order) order.push_back(value);
            row.push_back(value);
        }
        return join(row, ",");
    }

    void noteTable(const StatementForm& form) {
        touched_.insert(form.table);
        const bool adds = contains(form.text, " into ") && !contains(form.text, ",Id)");
        if (adds) defaultIds_.insert(form.table);
    }

    void check(const std::string& form, const std::string& text, const std::string& place,
               const std::string& server, const std::string& embedded) {
        if (server == embedded) return;
        if (knownDifference(text, server, embedded)) {
            ++knownDifferences_;
        } else if (++failures_ <= kMostFailures) {
            ADD_FAILURE() << place << "\n  form: " << form << "\n  text: " << readable(text)
                          << "\n  server: " << readable(server)
                          << "\n  embedded: " << readable(embedded);
        }
        if (server.front() == '-' && embedded.front() == '-') return;
        for (const std::string& table : touched_)
            for (DataAccess* access : {&server_, &embedded_})
                access->Execute(kDatabase, "delete from " + table);
    }

    const TemporaryDirectory directory_;
    DataAccess server_;
    DataAccess embedded_;
    std::set<std::string> touched_;     // tables
    std::set<std::string> defaultIds_;  // tables with rows that statements gave no Id
    int failures_ = 0;
    int knownDifferences_ = 0;
    static std::unique_ptr<PrivateServer> privateServer_;
};

std::unique_ptr<PrivateServer> Differential::privateServer_;

TEST_F(Differential, PlainValues) {
    ValueSource values(1, false);
    for (const StatementForm& form : statementForms()) {
        for (int i = 0; i < 3; ++i)
            compare(form, values.fill(form), "plain values");
        compareContents(form.text);
    }
    EXPECT_EQ(0, knownDifferences());
}

int settingOf(const char* name, int otherwise) {
    const char* value = std::getenv(name);
    return value == nullptr ? otherwise : std::atoi(value);
}

/// DIFFERENTIAL_SEED and DIFFERENTIAL_STATEMENTS in the environment make another or a longer run.
TEST_F(Differential, HostileValues) {
    const int seed = settingOf("DIFFERENTIAL_SEED", 1);
    const int count = settingOf("DIFFERENTIAL_STATEMENTS", 4000);
    const std::vector<StatementForm> forms = statementForms();
    ValueSource values(seed, true);
    const auto nextForm = [&]() -> const StatementForm& {
        for (;;) {  // tables are emptied seldom
            const StatementForm& form = forms[values.below(forms.size())];
            if (form.text != "delete from " + form.table || values.below(8) == 0) return form;
        }
    };
    for (int i = 0; i < count; ++i) {
        const std::string place =
            "seed " + std::to_string(seed) + ", statement " + std::to_string(i);
        std::vector<StatementForm> list;
        std::deque<std::string> texts;
        for (std::size_t length = 1 + values.below(3); i % 20 == 0 && length > 0; --length) {
            list.push_back(nextForm());
            texts.push_back(values.fill(list.back()));
        }
        if (!list.empty()) {
            compareList(list, texts, place);
            compareContents(place);
        }
        const StatementForm& form = nextForm();
        compare(form, values.fill(form), place);
    }
    EXPECT_LT(knownDifferences(), count / 10);
}

/// Of a statement about the rows below; a query's one column is Guid.
StatementForm formOf(const std::string& text) {
    const bool isQuery = text.compare(0, 6, "select") == 0 || text.compare(0, 1, "(") == 0;
    return {text, "device", isQuery ? Texts{"Guid"} : Texts{}, ""};
}

const char* const kRows[] = {
    "insert into device(Guid,Mac,HttpPort,Id) values('k1','a',1,1),('k2','12abc',2,2)",
    "insert into device(Guid,Mac,HttpPort,Id) values('K3','',1,3),('k_',NULL,NULL,4)",
    "insert into channel(Guid,Device_Guid,Num,Id) values('c1','k1',1,1),('c2','k2',2,2)",
    "insert into archiveInfo(Guid,ArchiveTime) values('a','2024')"};

TEST_F(Differential, OtherTexts) {
    const std::string kTexts[] = {
        ";;",
        "-- only a comment",
        "select Guid from device;;",
        "select Guid from device; select Guid from device",
        "select Guid from device --x",
        "select 5 as Guid*/",
        "select 5 as Guid # '",
        std::string("select 5 as Guid -- \0 '", 23),
        "select 5 --\n as Guid",
        "select /* ' */ - --5 as Guid",
        "select 'a'\n/* c */ \"b\"\"'\" as Guid",
        R"(select '\%\_\x\n\Z\'''\\' as Guid)",
        "SELECT `Guid` FROM device AS `d`",
        "select nosuch(1) as Guid",
        "select Guid from device,channel",
        "select Guid from device order by Id limit 1,2",
        "select Guid from device where Mac is null or Mac = NULL",
        "select Guid from device where HttpPort=''",
        "select Guid from device where HttpPort in (1,'2') and HttpPort between '1' and 2",
        "select Guid from device where Guid like 'K%' or Guid like 'k=_' escape '='",
        "select Guid from device where Guid>'k1' && Guid<'k9' || not HttpPort=1",
        "select Guid from device where ((Guid='k1')",
        "select Guid from device where Guid='k1')",
        "select Guid from device where Guid in (select Device_Guid from channel)",
        "select Guid from device union select Guid,Num from channel",
        "select d.Guid from device d left join channel c on c.Device_Guid=d.Guid where c.Num>1",
        "select case when sum(HttpPort)=4 then 'a' else count(Mac) end as Guid from device",
        "insert into device(Guid) values('n1'),('k1')",
        "insert into device(Mac) values('x')",
        "insert into device(Guid) values('\xFF')",
        "insert into device values('a')",
        "insert into device(Guid) select 'n2'",
        "insert or ignore into device(Guid) values('a')",
        "insert into device(Guid,HttpPort) values('n3',' 12 '),('n4','1e2'),('n5',+5),('n6',- 5)",
        "insert into device(Guid,HttpPort) values('n7',007),('n8',true),('n9',1+1),('m1','+5')",
        "insert into device(Guid,HttpPort) values('m2','')",
        "insert into device(Guid,HttpPort) values('m2','-99999999999999999999')",
        "insert into device(Guid,Mac) values('m3',7),('m4',-007),('m5',true),('m6',(5))",
        "update device set Guid=NULL where Guid='k1'",
        "update device set HttpPort=HttpPort+1,Mac=Guid",
        "update device set HttpPort=2147483648 where Guid='none'",
        "use differential",
        "drop table if exists nosuch",
        "pragma table_info(device)"};
    for (const char* text : kRows)
        compare(formOf(text), text, "rows");
    for (const std::string& text : kTexts) {
        compare(formOf(text), text, "other texts");
        compareContents(text);
    }
    EXPECT_EQ(0, knownDifferences());
}

/// What callers with statements of their own must know, see docs/engines.md.
TEST_F(Differential, DifferencesThatStay) {
    struct Difference {
        std::string text;
        std::string server;
        std::string embedded;
    };
    const Difference kDifferences[] = {
        // names of tables and databases
        {"select Guid from archiveinfo", "-1146", "a"},
        {"select d.Guid from differential.archiveInfo d", "a", "-1146"},
        {"select table_name as Guid from information_schema.tables where 1=2", "", "-1146"},
        // texts as numbers and truth values
        {"select Guid from device where HttpPort='1abc'", "K3|k1", ""},
        {"select Guid from device where Guid=0", "K3|k1|k2|k_", ""},
        {"update device set Mac='a' or 'b' where Guid='k1'", "-1292", "1"},
        // what a column takes
        {"insert into device(Guid,HttpPort) values('d1','1.5')", "1", "-1264"},
        {"insert into device(Guid,HttpPort) values('d2','12abc')", "-1265", "-1366"},
        {"update device set Mac='" + std::string(256, ' ') + "' where Guid='k1'", "1", "-1406"},
        // texts that are not UTF-8
        {"update device set Mac='\xFF' where Guid='none'", "0", "-1366"},
        {"delete from device where Guid='\xFF'", "0", "-1366"},
        {"update device set Mac='\xED\xA0\x80' where Guid='k1'", "1", "-1366"},
        // literals and operators
        {"select 1.50 as Guid", "1.50", "1.5"},
        {"select 1e3 as Guid", "1000", "1000.0"},
        {"select 0x41 as Guid", "A", "65"},
        {"select x'41' as Guid", "A", "-1064"},
        {"select 'a'='A' as Guid", "1", "0"},
        {"select 5/2 as Guid", "2.5000", "2"},
        {"select 5 div 2 as Guid", "2", "-1064"},
        {"select 9223372036854775807+1 as Guid", "-1690", "9.22337203685478e+18"},
        {"select Guid from device where HttpPort<=>NULL", "k_", "-1064"},
        {R"(select Guid from device where Guid like 'k\_')", "k_", ""},
        {"select @@port>0 as Guid", "1", "-1064"},
        {"select /*! 1 as */ Guid", "1", "-1064"},
        // functions
        {"select length('\xC3\xA9') as Guid", "2", "1"},
        {"select upper('\xC3\xA9') as Guid", "\xC3\x89", "\xC3\xA9"},
        {"select concat('a','b') as Guid", "ab", "-1305"},
        // forms of statements
        {"(select Guid from device where Guid='k1')", "k1", "-1064"},
        {"select Guid from device where Guid='k1' for update", "k1", "-1064"},
        {"insert into device set Guid='d3'", "1", "-1064"},
        {"insert device(Guid) values('d4')", "1", "-1064"},
        {"insert into device(Guid,Mac) values('d5',DEFAULT)", "1", "-1064"},
        {"insert ignore into device(Guid) values('k1')", "0", "-1064"},
        {"insert into device(Guid) values('k2') on duplicate key update Mac='z'", "2", "-1064"},
        {"update device d set d.Mac='b' where d.Guid='k1'", "1", "-1064"},
        {"truncate table channel", "0", "-1064"},
        {"show tables", "0", "-1064"},
        {"drop table nosuch", "-1051", "-1146"},
        {"set nosuch=1", "-1193", "0"},
        // what only the embedded engine takes
        {"select Guid from device where Guid in ()", "-1064", ""},
        {"select Guid from device where Guid glob 'K*'", "-1064", "K3"},
        {"insert into device(Guid,Guid) values('d7','d8')", "-1110", "1"},
    };
    for (const char* text : kRows)
        compare(formOf(text), text, "rows");
    for (const auto& [text, atServer, atEmbedded] : kDifferences) {
        const auto given = [&, form = formOf(text)](DataAccess& access) {
            const std::string whole = answer(access, form, form.text);
            return whole.substr(0, whole.find(' '));  // without the SQLSTATE
        };
        EXPECT_EQ(atServer, given(server())) << text;
        EXPECT_EQ(atEmbedded, given(embedded())) << text;
    }
}

std::string repeated(const std::string& piece, int count) {
    std::string text;
    for (; count > 0; --count)
        text += piece;
    return text;
}

TEST_F(Differential, LongTexts) {
    std::vector<std::string> texts;
    for (const char* character : {"x", "\xC3\xA9", "\xF0\x9F\x93\xB7"})
        for (const int count : {255, 256})
            texts.push_back("insert into device(Guid) values('" + repeated(character, count) +
                            "')");
    for (const int count : {65535, 65536})
        texts.push_back("insert into devicedriverinfo(Id,Source) values(1,'" +
                        repeated("x", count) + "')");
    std::string rows = "insert into device(Guid) values('0')";
    std::string either = " where Guid='0'";
    for (int i = 1; i < 2500; ++i) {
        rows += ",('" + std::to_string(i) + "')";
        either += " or Guid='" + std::to_string(i % 300) + "'";
    }
    for (const std::string& text :
         {rows, rows + ",('2499')", "select Guid from device" + either,
          "update device set Mac='x'" + either, "delete from device" + either + " or",
          "delete from device" + either + " and Id>0"})
        texts.push_back(text);
    for (const std::string& text : texts) {
        compare(formOf(text), text, "long texts");
        compareContents("long texts");
    }
    EXPECT_EQ(0, knownDifferences());
}

}  // namespace
}  // namespace dbaccess
