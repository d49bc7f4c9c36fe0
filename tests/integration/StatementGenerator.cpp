#include "tests/integration/StatementGenerator.h"

#include <algorithm>
#include <iterator>
#include <regex>
#include <set>
#include <sstream>

#include "schema/Tables.h"
#include "tests/unit/StatementFile.h"

const std::vector<std::string> kIllFormedTexts = {"\xFF", "\xC0\xAF", "\xF0\x9F\x8E",
                                                  "\xED\xA0\x80"};

namespace {

using Texts = std::vector<std::string>;

/// What the library's own statements leave out: rows of alarms, which callers insert by themselves,
/// and a join that is not refused.
constexpr const char* kMoreForms[] = {
    "insert into alarminfo(Guid,DeviceGuid,ChannelGuid,AlarmLevel,AlarmMethod,BeginTime,EndTime,"
    "AlarmContent,AlarmSource) values('{key}', '{key}', '{key}', {number},{number},'{text}', "
    "'{text}', '{text}', '{text}');",
    "select Type,Num from channel,usercameras where User_Guid='{key}' order by Num",
};

Texts split(const char* words) {
    std::istringstream stream(words);
    return {std::istream_iterator<std::string>(stream), {}};
}

void replaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

/// The names of the table's columns that callers give values to.
std::string columnsOf(const std::string& table) {
    using schema::Type;
    const auto& tables = schema::tables();
    const auto found = std::find_if(tables.begin(), tables.end(),
                                    [&](const auto& known) { return known.name == table; });
    std::string names;
    for (const schema::Column& column : schema::columnsOf(*found))
        if (column.type != Type::SerialNumber && column.type != Type::RowNumber)
            names += (names.empty() ? "" : ",") + column.name;
    return names;
}

StatementForm formOf(const std::string& text) {
    static const std::regex kTable("(from|into|update) (\\w+)");
    std::smatch table;
    std::regex_search(text, table, kTable);
    StatementForm form{text, table[2], {}, ""};
    if (text.rfind("select ", 0) != 0) return form;
    std::string list = text.substr(7, text.find(" from ") - 7);
    if (list == "*") list = columnsOf(form.table);
    if (list == "max(Id) as Id") list = "Id";
    replaceAll(list, ",", " ");
    form.columns = split(list.c_str());
    const std::size_t order = text.find(" order by ");
    if (order != std::string::npos) form.order = text.substr(order + 10);
    return form;
}

/// A statement of statements.txt with places for its values, which tell what they are.
std::string withPlaces(std::string text) {
    static const std::regex kValue(R"('[^']*'|-?\b\d+\b|\bNOW\b)");
    static const std::regex kId("'?100\\d'?");
    static const std::regex kNumber("'?(-?\\d+|NOW)'?");
    replaceAll(text, ", Source)", ", {bare})");
    std::string form;
    std::size_t at = 0;
    for (std::sregex_iterator value(text.begin(), text.end(), kValue), end; value != end; ++value) {
        const std::string given = value->str();
        const std::string place = std::regex_match(given, kId)              ? "{id}"
                                  : std::regex_match(given, kNumber)        ? "{number}"
                                  : given.find("Guid") != std::string::npos ? "{key}"
                                                                            : "{text}";
        form += value->prefix();
        form += given[0] == '\'' ? "'" + place + "'" : place;
        at = static_cast<std::size_t>(value->position() + value->length());
    }
    return form + text.substr(at);
}

/// An insert with its first row three times, all values in quotes.
std::string withThreeRows(const std::string& insert) {
    static const std::regex kPlace(R"('?(\{\w+\})'?)");
    const std::size_t at = insert.find(" values(") + 7;
    const std::string row =
        std::regex_replace(insert.substr(at, insert.find(')', at) + 1 - at), kPlace, "'$1'");
    return insert.substr(0, at) + row + "," + row + "," + row + ";";
}

}  // namespace

std::vector<StatementForm> statementForms() {
    std::vector<StatementForm> forms;
    std::set<std::string> known;
    const auto add = [&](const std::string& text) {
        if (known.insert(text).second) forms.push_back(formOf(text));
    };
    for (const char* text : kMoreForms)
        add(text);
    for (const Section& section : statementFile()) {
        for (const Operation& operation : section.operations) {
            for (const SentText& sent : operation.sent) {
                const std::string form = withPlaces(sent.text);
                add(form);
                if (form.find(" values(") != std::string::npos) add(withThreeRows(form));
            }
        }
    }
    return forms;
}

StatementForm contentOf(const std::string& table) {
    return formOf("select " + columnsOf(table) + " from " + table);
}

std::string ValueSource::fill(const StatementForm& form) {
    std::string statement;
    std::size_t at = 0;
    for (std::size_t place = form.text.find('{'); place != std::string::npos;
         place = form.text.find('{', at)) {
        const std::size_t end = form.text.find('}', place);
        statement.append(form.text, at, place - at);
        statement += valueFor(form.text.substr(place + 1, end - place - 1));
        at = end + 1;
    }
    return statement.append(form.text, at, std::string::npos);
}

std::string ValueSource::valueFor(const std::string& place) {
    static const Texts kKeys = {"k1", "k2", "k3", "k4", "k5", "K1", "k1 ", ""};
    static const Texts kNumbers =
        split("2147483647 -2147483648 2147483648 -2147483649 -1 4294967295");
    static const Texts kBare = {"5",    "-7",   "007", "'text'", "\"text\"",
                                "NULL", "word", "a b", "",       "'"};
    if (place == "id") return std::to_string(1 + below(40));
    if (place == "number")
        return hostile_ && below(10) == 0 ? oneOf(kNumbers) : std::to_string(below(4));
    if (place == "bare" && below(4) != 0) return oneOf(kBare);
    if (place == "key" && (!hostile_ || below(3) != 0)) return oneOf(kKeys);
    return text();
}

std::string ValueSource::text() {
    if (!hostile_ || below(2) == 0) return "text " + std::to_string(below(5));
    std::string value = hostileText();
    const std::size_t escaping = below(4);
    if (escaping == 0) replaceAll(value, "\\", "\\\\");
    if (escaping <= 1) replaceAll(value, "'", below(2) == 0 ? "\\'" : "''");
    return value;
}

std::string ValueSource::hostileText() {
    // ~ is a blank, ^ a NUL, & a line's end
    static const Texts kPieces = split(
        R"(' '' \ \\ \' \" " ` % _ \% \_ \0 \Z \n \x -- --~ # /* */ /*~c~*/ /*!50000~ ; ? :a @a $1 { <)"
        " a Z 12 NULL ~ ~~ ^ & \x1a \b \xC3\xA9 \xE2\x82\xAC \xF0\x9F\x93\xB7 "
        R"('~or~'1'='1 '~or~1=1~--~ \'~or~1=1~--~ ';~drop~table~device;~-- ')~--~ '~and~1=2~--~)"
        " '~union~select~1~--~ ',nosuch='1 '~'b");
    static const Texts kCharacters = {"x", "\xC3\xA9", "\xF0\x9F\x93\xB7"};
    constexpr std::size_t kLengths[] = {254, 255, 256, 65534, 65535, 65536};
    std::string value;
    if (below(12) == 0) {
        const std::string& character = oneOf(kCharacters);
        for (std::size_t length = kLengths[below(std::size(kLengths))]; length > 0; --length)
            value += character;
        return value;
    }
    if (below(12) == 0) value = oneOf(kIllFormedTexts);
    for (std::size_t count = 1 + below(3); count > 0; --count)
        value += oneOf(kPieces);
    for (char& c : value)
        c = c == '~' ? ' ' : c == '^' ? '\0' : c == '&' ? '\n' : c;
    return value;
}
