// Whatever the library sends, a server and the embedded engine answer alike: success or failure,
// error number, affected rows, and the rows themselves. So does a server that is sent the whole
// texts, where the library lets it keep prepared statements.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <fstream>
#include <regex>
#include <set>

#include "dbaccess/DataAccess.h"
#include "dbaccess/error/ErrorNumber.h"
#include "schema/Schema.h"
#include "tests/integration/StatementGenerator.h"
#include "tests/support/engines/TemporaryDirectory.h"
#include "tests/support/engines/TestServer.h"

namespace dbaccess {
namespace {

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

/// Of two literals (not columns) MariaDB disregards blanks at the end, MySQL control characters.
bool comparesLiterals(const std::string& text) {
    for (const char next : {' ', '\\', '\n', '\b', '\x1a', '\0'})
        if (contains(text, std::string("'='1") + next)) return true;
    return false;
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
    if (comparesLiterals(text)) return true;
    // Servers look whether a text is UTF-8 where they store it, the embedded engine beforehand.
    if (embeddedError == kIncorrectValue || embeddedError == kInvalidUtf8)
        if (std::any_of(kIllFormedTexts.begin(), kIllFormedTexts.end(), has)) return true;
    // The limit of a long text falls into a character.
    if (are(kIncorrectValue, kDataTooLong)) return text.size() > 65535;
    // Of two faults in one statement, either may be found first.
    if (are(kSyntaxError, kInvalidUtf8) || are(kInvalidUtf8, kSyntaxError)) return true;
    if (are(kValueCountMismatch, kUnknownColumn) || are(kUnknownColumn, kValueCountMismatch))
        return has("nosuch");
    // A name with characters of 4 bytes is ill-formed to MariaDB, but not to MySQL.
    if (are(kUnknownColumn, kInvalidUtf8)) return !testServer().isMariaDb;
    // A variable to servers; SQLite's parameters are refused.
    if (embeddedError == kSyntaxError && has(", @a")) return true;
    // Servers do not look at what stands behind a NUL behind the end of the statement.
    return embeddedError == kSyntaxError && has(std::string(";\0", 2));
}

class Differential : public testing::Test {
protected:
    Differential()
        : server_(at_.host, at_.port, at_.user, at_.password),
          texts_(at_.host, at_.port, at_.user, at_.password),
          embedded_("sqlite:" + directory_.path(), 0, "", "") {
        for (DataAccess* access : {&server_, &texts_, &embedded_}) {
            EXPECT_TRUE(access->Initialize(1, 1, true, true));
            EXPECT_EQ(0, schema::Create(*access, databaseOf(*access)));
            EXPECT_EQ(0, access->Execute(databaseOf(*access), "SET NAMES utf8"));
        }
    }
    ~Differential() override {
        for (const std::string& database : {database_, textsDatabase_})
            server_.Execute("", "drop database " + database);
    }

    /// Runs a text of the form on both engines and compares. @param place  names it in a failure.
    void compare(const StatementForm& form, const std::string& text, const std::string& place) {
        noteTable(form);
        const std::string server = answer(server_, form, text);
        EXPECT_EQ(readable(answer(texts_, form, once(text))), readable(server))
            << place << ": sent as text, and as it is\n  form: " << form.text
            << "\n  text: " << readable(text);
        check(form.text, text, place, server, answer(embedded_, form, text));
    }

    /// The same for statements in one transaction.
    void compareList(const std::vector<StatementForm>& forms, std::deque<std::string> texts,
                     const std::string& place) {
        for (const StatementForm& form : forms)
            noteTable(form);
        const std::string server = resultOf(server_.Update(database_, texts));
        const std::string embedded = resultOf(embedded_.Update(database_, texts));
        const std::string list = join({texts.begin(), texts.end()}, "\n");
        std::transform(texts.begin(), texts.end(), texts.begin(), once);
        EXPECT_EQ(resultOf(texts_.Update(textsDatabase_, texts)), server)
            << place << readable(list);
        check("a list", list, place, server, embedded);
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
            return resultOf(text.size() % 2 == 0 ? access.Insert(databaseOf(access), text)
                                                 : access.Execute(databaseOf(access), text));
        ResultSet* set = access.Query(databaseOf(access), text);
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

    const std::string& database() const { return database_; }
    DataAccess& server() { return server_; }
    DataAccess& embedded() { return embedded_; }
    int knownDifferences() const { return knownDifferences_; }

private:
    const std::string& databaseOf(const DataAccess& access) const {
        return &access == &texts_ ? textsDatabase_ : database_;
    }

    /// The same statement as a text that never comes again: no server keeps it.
    static std::string once(const std::string& text) {
        static int number = 0;
        if (text == ";;") return text;  // with a comment it is no longer empty
        return "/*" + std::to_string(++number) + "*/" + text;
    }

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
        if (server == embedded && !comparesLiterals(text)) return;  // it may have stored the result
        if (knownDifference(text, server, embedded)) {
            ++knownDifferences_;
        } else if (++failures_ <= kMostFailures) {
            ADD_FAILURE() << place << "\n  form: " << form << "\n  text: " << readable(text)
                          << "\n  server: " << readable(server)
                          << "\n  embedded: " << readable(embedded);
        }
        if (server.front() == '-' && embedded.front() == '-') return;
        for (const std::string& table : touched_)
            for (DataAccess* access : {&server_, &texts_, &embedded_})
                access->Execute(databaseOf(*access), "delete from " + table);
    }

    const std::string database_ = uniqueName();
    const std::string textsDatabase_ = uniqueName();
    const TemporaryDirectory directory_;
    const TestServer& at_ = testServer();
    DataAccess server_;
    DataAccess texts_;  // the same server, which is sent each text once only
    DataAccess embedded_;
    std::set<std::string> touched_;     // tables
    std::set<std::string> defaultIds_;  // tables with rows that statements gave no Id
    int failures_ = 0;
    int knownDifferences_ = 0;
};

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

/// One of callers_texts.txt.
struct CallersText {
    std::string text;
    bool differs = false;
    std::string server;
    std::string embedded;
};

std::string withBytes(std::string text) {
    static const std::regex kBytes("<([0-9A-F]{2})( x ([0-9]+))?>");
    for (std::smatch found; std::regex_search(text, found, kBytes);) {
        const std::size_t count = found[3].matched ? std::stoul(found[3]) : 1;
        const std::string bytes(count, static_cast<char>(std::stoi(found[1], nullptr, 16)));
        text = found.prefix().str() + bytes + found.suffix().str();
    }
    return text;
}

std::vector<CallersText> callersTexts(bool differ) {
    std::vector<CallersText> texts;
    std::ifstream file(SOURCE_DIR "/tests/integration/callers_texts.txt");
    const auto answerIn = [](const std::string& line) {
        return line.substr(std::min<std::size_t>(14, line.size()));
    };
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#') continue;
        if (line[0] != ' ') {
            texts.push_back({withBytes(line), false, "", ""});
        } else {
            CallersText& last = texts.back();
            last.differs = true;
            const std::string who = line.substr(4, 10);
            if (who != "mysql     ")
                (who == "server    " ? last.server : last.embedded) = answerIn(line);
            else if (!testServer().isMariaDb)
                last.server = answerIn(line);
        }
    }
    texts.erase(std::remove_if(texts.begin(), texts.end(),
                               [&](const CallersText& text) { return text.differs != differ; }),
                texts.end());
    EXPECT_FALSE(texts.empty());
    return texts;
}

TEST_F(Differential, CallersTexts) {
    for (const char* text : kRows)
        compare(formOf(text), text, "rows");
    for (const CallersText& text : callersTexts(false)) {
        compare(formOf(text.text), text.text, "callers' texts");
        compareContents(text.text);
    }
    EXPECT_EQ(0, knownDifferences());
}

TEST_F(Differential, DifferencesThatStay) {
    for (const char* text : kRows)
        compare(formOf(text), text, "rows");
    for (const auto& [known, differs, atServer, atEmbedded] : callersTexts(true)) {
        const std::string text = std::regex_replace(known, std::regex("<DATABASE>"), database());
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
