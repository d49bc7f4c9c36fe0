#include "tests/integration/StatementGenerator.h"

#include <algorithm>

#include "schema/Tables.h"

using namespace std::string_literals;

const std::vector<std::string> kIllFormedTexts = {"\xFF", "\xC0\xAF", "\xF0\x9F\x8E",
                                                  "\xED\xA0\x80"};

namespace {

using Names = std::vector<std::string>;
using schema::Column;
using schema::Type;

/// What the statements of a table have of their own.
struct TableForms {
    std::string table;
    Names keys;                ///< the columns of its conditions
    std::string order = {};    ///< the column that its lists are ordered by
    std::string noComma = {};  ///< the column before which its update lacks the comma
};

const TableForms kTableForms[] = {
    {"serverinfo", {"Guid"}, "Id"},
    {"userinfo", {"Guid", "UserName", "Password"}, "Id"},
    {"userrights", {"User_Guid"}},
    {"usercameras", {"Guid", "User_Guid", "Camera_Guid"}, "Id"},
    {"device", {"Guid", "IPAddress"}, "DisplayName"},
    {"channel", {"Guid", "Device_Guid"}, "Num"},
    {"channelproperty", {"Channel_Guid"}, "Channel_Guid"},
    {"devicedriverinfo", {"Id", "DriverKey"}},
    {"storage", {"Channel_Guid"}, "Id"},
    {"archiveInfo", {"Guid"}, "ArchiveTime"},
    {"cameraschedule", {"Camera_Guid"}},
    {"onlineschedules", {"Guid"}},
    {"recordschedules", {"Guid"}},
    {"speedupschedules", {"Guid"}},
    {"viewgroupinfo", {"Guid", "UserGuid"}, "ViewGroupType", "Name"},
    {"groupinfo", {"ViewGroupInfoGuid"}, "Id", "ParentGroupGuid"},
    {"viewinfo", {"GroupGuid"}, "Id"},
    {"viewitem", {"ViewInfoGuid"}, "Id"},
    {"viewiteminfo", {"ViewItemGuid"}},
    {"carousel", {"ItemInfoGuid"}, "nIndex", "DisplayName"},
    {"mapinfo", {"MapGuid", "UserGuid"}, "Id"},
    {"mapitemparam", {"MapInfoGuid", "Guid", "MapItemGuid"}},
    {"nodeinfo", {"NodeGuid"}, "NodeName"},
    {"nodeelement", {"Guid", "NodeGuid"}, "DisplayName"},
    {"alarminfo", {"Guid", "ChannelGuid"}, "SN"},
    {"facecapture", {"addTime"}, "addTime"},
    {"facecompare", {"addTime"}, "addTime"},
};

/// The forms that the rules below do not make.
const StatementForm kSpecialForms[] = {
    {"select Guid from userinfo where UserName='{text}' and Password='{text}'",
     "userinfo",
     {"Guid"},
     ""},
    {"select Guid,Device_Guid,DisplayName,Num,Type from channel,usercameras where "
     "usercameras.User_Guid='{key}' order by Num",
     "channel",
     {"Guid"},
     "Num"},
    {"select Device_Guid,Num from channel,usercameras where User_Guid='{key}' order by Num",
     "channel",
     {"Device_Guid", "Num"},
     "Num"},
    {"insert into devicedriverinfo(Id,DriverKey,DriverName,DriverType,Source) values({id}, '{key}', "
     "'{text}', {number}, {bare});",
     "devicedriverinfo",
     {},
     ""},
    {"select Guid,ViewGroupType from viewgroupinfo where Guid='{key}' and UserGuid='{key}' or "
     "ViewGroupType=1 order by ViewGroupType",
     "viewgroupinfo",
     {"Guid", "ViewGroupType"},
     "ViewGroupType"},
    {"insert into viewitem(Guid,ViewInfoGuid,DisplayName,ItemNumber,ViewItemType,Id) values("
     "'{key}', '{key}', '{text}', '{number}', {number}', {id});",
     "viewitem",
     {},
     ""},
    {"select Guid,AlarmContent,SN from alarminfo where ChannelGuid='{key}' or ChannelGuid='{key}' and "
     "AlarmLevel={number} and AlarmMethod='{number}' and BeginTime='{text}' and EndTime='{text}';",
     "alarminfo",
     {"Guid", "AlarmContent", "SN"},
     ""},
    {"select * from facecapture where addTime>{number} and addTime<{number} order by addTime",
     "facecapture",
     {"filePath", "addTime", "minority", "sex"},
     "addTime"},
    {"select facePath,addTime from facecompare where addTime<{number} order by addTime",
     "facecompare",
     {"facePath", "addTime"},
     "addTime"},
};

std::string join(const Names& names, const std::string& separator) {
    std::string result;
    for (const std::string& name : names)
        result += (result.empty() ? "" : separator) + name;
    return result;
}

/// The columns that the statements write.
std::vector<Column> writtenColumns(const std::string& table) {
    const auto& tables = schema::tables();
    const auto found = std::find_if(tables.begin(), tables.end(),
                                    [&](const auto& known) { return known.name == table; });
    std::vector<Column> columns = schema::columnsOf(*found);
    const Type last = columns.back().type;
    if (last == Type::SerialNumber || last == Type::RowNumber) columns.pop_back();
    return columns;
}

bool isText(const Column& column) {
    return column.type == Type::Key || column.type == Type::ShortText ||
           column.type == Type::LongText;
}

std::string placeFor(const Column& column) {
    if (column.name == "Id") return "{id}";
    if (!isText(column)) return "{number}";
    return column.name.find("Guid") == std::string::npos ? "{text}" : "{key}";
}

/// Makes the forms of one table.
class FormWriter {
public:
    FormWriter(const TableForms& forms, std::vector<StatementForm>& result)
        : table_(forms.table),
          noComma_(forms.noComma),
          order_(forms.order),
          keys_(forms.keys),
          columns_(writtenColumns(table_)),
          result_(result) {}

    void write() {
        writeInserts("insert", columns_);
        writeInserts("replace", withoutId());
        writeSelects();
        writeUpdates();
        for (const StatementForm& form : kSpecialForms)
            if (form.table == table_) result_.push_back(form);
        for (const std::string& condition : conditions())
            add("delete from " + table_ + condition);
    }

private:
    void add(const std::string& text) { result_.push_back({text, table_, {}, ""}); }

    std::vector<Column> withoutId() const {
        std::vector<Column> columns = columns_;
        if (columns.back().name == "Id") columns.pop_back();
        return columns;
    }

    void writeInserts(const std::string& verb, const std::vector<Column>& columns) {
        Names names;
        Names bare;
        Names quoted;
        for (const Column& column : columns) {
            const std::string place = placeFor(column);
            names.push_back(column.name);
            quoted.push_back("'" + place + "'");
            bare.push_back(isText(column) ? quoted.back() : place);
        }
        const std::string head = verb + " into " + table_ + "(" + join(names, ",") + ") values";
        const std::string row = "(" + join(bare, ", ") + ")";
        for (const std::string& rows :
             {row, row + "," + row + "," + row, "(" + join(quoted, "','") + ")", ""s})
            add(head + rows + ";");
    }

    void writeSelects() {
        StatementForm all = contentOf(table_);
        if (order_ == "SN") all.columns.push_back(order_);
        const std::string text = "select " + join(all.columns, ",") + " from " + table_;
        const std::string orderClause = order_.empty() ? "" : " order by " + order_;
        for (const std::string& condition : conditions())
            result_.push_back({text + condition + orderClause, table_, all.columns, order_});
        result_.push_back({"select * from " + table_ + " where" + clause(keys_.back()) + " and " +
                               clause(withoutId().back().name),
                           table_, all.columns, ""});
        if (columns_.back().name == "Id")
            result_.push_back({"select max(Id) as Id from " + table_, table_, {"Id"}, ""});
    }

    void writeUpdates() {
        std::vector<Column> set(columns_.begin() + 1, columns_.end());
        const std::string key = columns_.front().name;
        for (const std::string& condition : keys_)
            writeUpdate(set, "", condition);
        writeUpdate(set, noComma_, key);
        writeUpdate(columns_, "", key);
    }

    void writeUpdate(const std::vector<Column>& set, const std::string& noComma,
                     const std::string& key) {
        std::string text = "update " + table_ + " set ";
        for (const Column& column : set) {
            if (&column != &set.front() && column.name != noComma) text += ",";
            text += column.name + " = '" + placeFor(column) + "'";
        }
        add(text + " where" + clause(key));
    }

    std::string clause(const std::string& key) const {
        const auto column = std::find_if(columns_.begin(), columns_.end(),
                                         [&](const Column& known) { return known.name == key; });
        return " " + key + "='" + placeFor(*column) + "'";
    }

    /// For some keys, for alternatives, the ill-formed ones, and none.
    Names conditions() const {
        Names clauses;
        for (const std::string& key : keys_)
            clauses.push_back(clause(key));
        const std::string both = join(clauses, " and");
        const std::string either = clauses.front() + " or" + both + " or" + clauses.back();
        Names result = {" where" + both, " where" + either, " where" + either + " or", " where",
                        ""};
        for (const std::string& one : clauses)
            result.insert(result.begin(), " where" + one);
        return result;
    }

    const std::string table_;
    const std::string noComma_;
    const std::string order_;
    const Names keys_;
    const std::vector<Column> columns_;
    std::vector<StatementForm>& result_;
};

void replaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

}  // namespace

std::vector<StatementForm> statementForms() {
    std::vector<StatementForm> result;
    for (const TableForms& forms : kTableForms)
        FormWriter(forms, result).write();
    return result;
}

StatementForm contentOf(const std::string& table) {
    StatementForm form{"", table, {}, ""};
    for (const Column& column : writtenColumns(table))
        form.columns.push_back(column.name);
    form.text = "select " + join(form.columns, ",") + " from " + table;
    return form;
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
    static const Names kKeys = {"k1", "k2", "k3", "k4", "k5", "K1", "k1 ", ""};
    static const Names kNumbers = {"2147483647",  "-2147483648", "2147483648",
                                   "-2147483649", "4294967295",  "-1"};
    static const Names kBareTexts = {"5",   "'text'", "\"text\"", "-7",      "NULL", "word",
                                     "a b", "",       "TRUE",     "'a' 'b'", "007",  "'"};
    if (place == "id") return std::to_string(1 + below(40));
    if (place == "number")
        return hostile_ && below(10) == 0 ? oneOf(kNumbers) : std::to_string(below(4));
    if (place == "bare" && below(4) != 0) return oneOf(kBareTexts);
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
    static const Names kPieces = {"'",
                                  "''",
                                  "\\",
                                  "\\\\",
                                  "\\'",
                                  "\\\"",
                                  "\"",
                                  "`",
                                  "%",
                                  "_",
                                  "\\%",
                                  "\\_",
                                  "\0"s,
                                  "\\0",
                                  "\\Z",
                                  "\\n",
                                  "\\x",
                                  "\n",
                                  "\r\n",
                                  "\t",
                                  "\x1a",
                                  "\b",
                                  " ",
                                  "  ",
                                  "--",
                                  "-- ",
                                  "#",
                                  "/*",
                                  "*/",
                                  "/* c */",
                                  "/*!50000 ",
                                  ";",
                                  "?",
                                  ":a",
                                  "@a",
                                  "$1",
                                  "{",
                                  "<",
                                  "a",
                                  "Z",
                                  "0",
                                  "12",
                                  "NULL",
                                  "\xC3\xA9",
                                  "\xE2\x82\xAC",
                                  "\xF0\x9F\x93\xB7",  // of two, three and four bytes
                                  "' or '1'='1",
                                  "' or 1=1 -- ",
                                  "\\' or 1=1 -- ",
                                  "'; drop table device; --",
                                  "') -- ",
                                  "' and 1=2 -- ",
                                  "' union select 1 -- ",
                                  "',nosuch='1",
                                  "' 'b"};
    static const Names kCharacters = {"x", "\xC3\xA9", "\xF0\x9F\x93\xB7"};
    constexpr std::size_t kLengths[] = {254, 255, 256, 65534, 65535, 65536};
    std::string value;
    if (below(12) == 0) {
        const std::string character = oneOf(kCharacters);
        for (std::size_t length = oneOf(kLengths); length > 0; --length)
            value += character;
        return value;
    }
    if (below(12) == 0) value = oneOf(kIllFormedTexts);
    for (std::size_t count = 1 + below(3); count > 0; --count)
        value += oneOf(kPieces);
    return value;
}
