// Whatever the library sends, a server and the embedded engine answer alike: success or failure,
// error number, affected rows, and the rows themselves.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <memory>
#include <set>

#include "dbaccess/DataAccess.h"
#include "schema/Schema.h"
#include "tests/integration/StatementGenerator.h"
#include "tests/support/engines/PrivateServer.h"
#include "tests/support/engines/TemporaryDirectory.h"

namespace dbaccess {
namespace {

constexpr const char* kDatabase = "differential";
constexpr int kMostFailures = 20;

using Row = std::vector<std::string>;

/// What an engine said to a statement.
struct Answer {
    std::int64_t result = 0;  ///< affected rows, or the negated error number
    std::vector<Row> rows;
    Row order;  ///< the values of the column that orders the rows, in their order

    bool operator==(const Answer& other) const {
        return result == other.result && rows == other.rows && order == other.order;
    }
};

/// With long runs of one character shortened and all but printable ASCII as \xHH. The values are the
/// test's own.
std::string readable(const std::string& text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find_first_not_of(text[at], at), text.size());
        char code[32] = {text[at]};
        if (text[at] < ' ')
            std::snprintf(code, sizeof code, "\\x%02X", static_cast<unsigned char>(text[at]));
        const bool run = end - at > 8;
        result += run ? code + ("{" + std::to_string(end - at) + "}") : code;
        at = run ? end : at + 1;
    }
    return result;
}

std::string readable(const Answer& answer) {
    std::string result = std::to_string(answer.result);
    for (const Row& row : answer.rows) {
        result += "\n    ";
        for (const std::string& value : row)
            result += "|" + readable(value);
    }
    return result;
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

bool isIllFormed(const std::string& text) {
    return std::any_of(kIllFormedTexts.begin(), kIllFormedTexts.end(),
                       [&](const std::string& piece) { return contains(text, piece); });
}

/// Why the engines may differ on a statement; null when they may not.
const char* knownDifference(const std::string& text, std::int64_t server, std::int64_t embedded) {
    if (server == -1292 && contains(text, "' or "))
        return "a server refuses to take a text for a truth value in a write";
    if ((embedded == -1366 || embedded == -1300) && isIllFormed(text))
        return "a server refuses ill-formed UTF-8 only where it is stored, the embedded engine anywhere";
    if (server == -1366 && embedded == -1406 && text.size() > 65535)
        return "the limit of a long text falls into a character: 1366 on a server";
    if (server == -1064 && embedded == -1300)
        return "a statement with two faults: the embedded engine looks at all characters first";
    if (server == -1136 && embedded == -1054)
        return "a statement with two faults: a server counts all rows' values before it knows names";
    return nullptr;
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

    /// Runs a text of the form on both engines and compares. @param place  names the run.
    void compare(const StatementForm& form, const std::string& text, const std::string& place) {
        noteDefaultIds(form);
        check(form, text, place, answer(server_, form, text), answer(embedded_, form, text));
    }

    /// The same for some statements in one transaction.
    void compareList(const std::vector<StatementForm>& forms, std::deque<std::string> texts,
                     const std::string& place) {
        std::string all;
        for (const std::string& text : texts)
            all += text + "\n";
        for (const StatementForm& form : forms)
            noteDefaultIds(form);
        check({"list", forms.front().table, {}, ""}, all, place,
              {server_.Update(kDatabase, texts), {}, {}},
              {embedded_.Update(kDatabase, texts), {}, {}});
    }

    /// Compares all rows of the tables that were touched since the last time.
    void compareContents(const std::string& place) {
        for (const std::string& table : std::set<std::string>(std::move(touched_))) {
            const StatementForm all = contentOf(table);
            compare(all, all.text, place + ", content");
            if (answer(server_, all, all.text).rows.empty()) defaultIds_.erase(table);
        }
        touched_.clear();
    }

    Answer answer(DataAccess& access, const StatementForm& form, const std::string& text) const {
        Answer answer;
        if (form.columns.empty()) {
            answer.result = text.size() % 2 == 0 ? access.Insert(kDatabase, text)
                                                 : access.Execute(kDatabase, text);
            return answer;
        }
        ResultSet* set = access.Query(kDatabase, text);
        if (set == nullptr) {
            answer.result = -LastError().number;
            return answer;
        }
        while (set->next())
            answer.rows.push_back(rowOf(form, *set, answer.order));
        DataAccess::ReleaseResulitSet(set);
        // SN is one number for each row; with others more than one order may be right.
        if (form.order != "SN") std::sort(answer.rows.begin(), answer.rows.end());
        return answer;
    }

    DataAccess& server() { return server_; }
    DataAccess& embedded() { return embedded_; }
    int knownDifferences() const { return knownDifferences_; }

private:
    Row rowOf(const StatementForm& form, ResultSet& set, Row& order) const {
        Row row;
        for (const std::string& column : form.columns) {
            std::string value = "(null)";
            set.getString(column, value);
            // What engines number by themselves, they number differently.
            if (column == "SN" || (column == "Id" && defaultIds_.count(form.table) != 0))
                value = "(number)";
            if (column == form.order) order.push_back(value);
            row.push_back(value);
        }
        return row;
    }

    void noteDefaultIds(const StatementForm& form) {
        const std::string verb = form.text.substr(0, 6);
        touched_.insert(form.table);
        if ((verb == "insert" || verb == "replac") && !contains(form.text, ",Id)"))
            defaultIds_.insert(form.table);
    }

    void check(const StatementForm& form, const std::string& text, const std::string& place,
               const Answer& server, const Answer& embedded) {
        if (server == embedded) return;
        if (knownDifference(text, server.result, embedded.result) != nullptr) {
            ++knownDifferences_;
        } else if (++failures_ <= kMostFailures) {
            ADD_FAILURE() << place << "\n  form: " << form.text << "\n  text: " << readable(text)
                          << "\n  server: " << readable(server)
                          << "\n  embedded: " << readable(embedded);
        }
        if (server.result < 0 && embedded.result < 0) return;
        for (const std::string& table : touched_)
            for (DataAccess* access : {&server_, &embedded_})
                access->Execute(kDatabase, "delete from " + table);
    }

    const TemporaryDirectory directory_;
    DataAccess server_;
    DataAccess embedded_;
    std::set<std::string> defaultIds_;  // tables
    std::set<std::string> touched_;     // tables
    int failures_ = 0;
    int knownDifferences_ = 0;
    static std::unique_ptr<PrivateServer> privateServer_;
};

std::unique_ptr<PrivateServer> Differential::privateServer_;

int settingOf(const char* name, int otherwise) {
    const char* value = std::getenv(name);
    return value == nullptr ? otherwise : std::atoi(value);
}

TEST_F(Differential, PlainValues) {
    ValueSource values(1, false);
    for (const StatementForm& form : statementForms()) {
        for (int i = 0; i < 3; ++i)
            compare(form, values.fill(form), "plain values");
        compareContents("plain values");
    }
    EXPECT_EQ(0, knownDifferences());
}

/// DIFFERENTIAL_SEED and DIFFERENTIAL_STATEMENTS in the environment make another run, or a longer one.
TEST_F(Differential, HostileValues) {
    const int seed = settingOf("DIFFERENTIAL_SEED", 1);
    const int count = settingOf("DIFFERENTIAL_STATEMENTS", 4000);
    const std::vector<StatementForm> forms = statementForms();
    ValueSource values(static_cast<unsigned>(seed), true);
    const auto next = [&]() -> const StatementForm& {
        for (;;) {
            const StatementForm& form = forms[values.below(forms.size())];
            if (form.text != "delete from " + form.table || values.below(8) == 0) return form;
        }
    };
    for (int i = 0; i < count; ++i) {
        const std::string place =
            "seed " + std::to_string(seed) + ", statement " + std::to_string(i);
        if (i % 20 != 0) {
            const StatementForm& form = next();
            compare(form, values.fill(form), place);
            continue;
        }
        std::vector<StatementForm> list;
        std::deque<std::string> texts;
        for (std::size_t length = 1 + values.below(3); length > 0; --length) {
            list.push_back(next());
            texts.push_back(values.fill(list.back()));
        }
        compareList(list, texts, place);
        compareContents(place);
    }
    EXPECT_LT(knownDifferences(), count / 10);
}

}  // namespace
}  // namespace dbaccess
