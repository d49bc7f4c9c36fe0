// Any text as a statement: what the reader, the skeletons and the rewriting for SQLite say of it
// agrees with each other, and with what SQLite makes of it.
#include <sqlite3.h>

#include <algorithm>

#include "dbaccess/EscapeText.h"
#include "dbaccess/sqlite/SqliteText.h"
#include "tests/fuzz/Fuzz.h"

namespace dbaccess {
namespace {

constexpr const char* kTable = "create table t(a varchar(20) primary key,b int not null,c text)";

/// What is the same in two ways to write a statement: texts decoded, no plus signs, whole numbers
/// in their shortest form.
std::string meaningOf(const std::string& text) {
    TokenReader reader(text);
    std::string meaning;
    for (Token token; reader.read(token);) {
        if (isSign(token, "+")) continue;
        std::string_view source = token.source;
        if (source.find_first_not_of("0123456789") == std::string::npos) {
            source.remove_prefix(std::min(source.find_first_not_of('0'), source.size() - 1));
            const std::size_t signAt = meaning.size() - 2;
            if (source == "0" && signAt < meaning.size() && meaning.substr(signAt) == "-\n")
                meaning.resize(signAt);
        }
        const bool isText = token.kind == TokenKind::Text;
        meaning.append(isText ? "'" : "").append(isText ? token.value() : source) += '\n';
    }
    return meaning;
}

/// The statement that the skeleton stands for: with its values in their places, or with others.
std::string filled(const Skeleton& skeleton, bool others) {
    const std::string& from = skeleton.text;
    std::string text;
    std::size_t row = 0;  // where it begins in the skeleton
    std::size_t next = 0;
    do {
        std::size_t copied = next == 0 ? 0 : row;
        if (next != 0) text += ',';
        TokenReader reader(from);
        reader.setParameters(true);
        for (Token token; reader.read(token);) {
            const auto place = static_cast<std::size_t>(token.source.data() - from.data());
            if (next == 0 && isSign(token, "(")) row = place;
            if (token.kind != TokenKind::Parameter) continue;
            text.append(from, copied, place - copied);
            copied = place + 1;
            const Value& value = skeleton.values[next++];
            const auto* const number = std::get_if<std::int64_t>(&value);
            text += number != nullptr ? std::to_string(others ? 7 : *number)
                    : others          ? "'x'"
                                      : '\'' + EscapeText(std::string(std::get<0>(value))) + '\'';
        }
        text.append(from, copied);
    } while (next < skeleton.values.size());
    return text;
}

void checkSkeleton(const Statement& statement) {
    // A comment in front makes sure that all of the text is read, whatever was seen before.
    const std::string slow = "/**/" + statement.text;
    const Skeleton full = skeletonOf(slow);
    if (!full.text.empty()) {
        require(meaningOf(filled(full, false)) == meaningOf(slow), "the values have their places");
        skeletonOf(filled(statement.skeleton(), true));  // looks alike
    }
    for (const Skeleton& quick : {statement.skeleton(), skeletonOf(statement.text)})
        require(quick.text == (full.text.empty() ? "" : full.text.substr(4)) &&
                    quick.values == full.values && quick.valuesPerRow == full.valuesPerRow &&
                    (full.text.empty() || quick.forServers == full.forServers),
                "the quick look agrees with the full reading");
}

void checkRewriting(const Statement& statement, sqlite3* database) {
    const sqlite::SqliteText sqlite = sqlite::toSqlite(statement);
    const std::string& text = sqlite.text;
    if (sqlite.error != 0 || text.empty()) return;
    sqlite3_stmt* prepared = nullptr;
    const char* rest = nullptr;
    sqlite3_prepare_v2(database, text.data(), static_cast<int>(text.size()), &prepared, &rest);
    if (prepared == nullptr) return;
    require(rest == text.data() + text.size(), "it is one statement");
    const auto places = static_cast<std::size_t>(sqlite3_bind_parameter_count(prepared));
    require(places == statement.skeleton().valuesOfRun(), "each value has its place");
    require(statement.kind == StatementKind::Write || statement.kind == StatementKind::Definition ||
                (statement.kind == StatementKind::Read && sqlite3_stmt_readonly(prepared) != 0),
            "what may be sent twice changes nothing");
    sqlite3_finalize(prepared);
}

/// Known are the numbers with a state of their own, and those that say why none fits.
void checkEngine(const Statement& statement, Connection& connection) {
    require(!connection.begin("fuzz").error, "a transaction begins, whatever was run before");
    const Outcome outcome = connection.run("fuzz", statement);
    const int number = outcome.error.number;
    require(std::string_view("HY000") != sqlStateOf(number) || number == kOutOfMemory ||
                number == kNoDefaultValue || number == kInvalidUtf8,
            "the number is one that a statement can have");
    connection.rollback();
}

}  // namespace

void tryInput(const std::string& input) {
    static const std::unique_ptr<Connection> connection = openDatabase(kTable);
    static sqlite3* database = nullptr;
    if (database == nullptr) {
        sqlite3_hard_heap_limit64(256 << 20);
        sqlite3_open(":memory:", &database);
        sqlite3_exec(database, kTable, nullptr, nullptr, nullptr);
    }
    const Statement statement(input);
    summaryOf(input);
    sessionKeyOf(input);
    checkSkeleton(statement);
    checkRewriting(statement, database);
    checkEngine(statement, *connection);
}

}  // namespace dbaccess
