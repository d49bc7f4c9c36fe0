#include "tests/integration/StatementGenerator.h"

#include <algorithm>
#include <iterator>
#include <sstream>

#include "schema/Tables.h"

const std::vector<std::string> kIllFormedTexts = {"\xFF", "\xC0\xAF", "\xF0\x9F\x8E",
                                                  "\xED\xA0\x80"};

namespace {

using Texts = std::vector<std::string>;
using schema::Column;
using schema::Type;

/// What the statements of a table have of their own.
struct TableForms {
    const char* table;
    const char* keys;          ///< the columns of its conditions
    const char* order = "";    ///< the column that its lists are ordered by
    const char* noComma = "";  ///< the column before which its update lacks the comma
};

constexpr TableForms kTableForms[] = {
    {"serverinfo", "Guid", "Id"},
    {"userinfo", "Guid UserName Password", "Id"},
    {"userrights", "User_Guid"},
    {"usercameras", "Guid User_Guid Camera_Guid", "Id"},
    {"device", "Guid IPAddress", "DisplayName"},
    {"channel", "Guid Device_Guid", "Num"},
    {"channelproperty", "Channel_Guid", "Channel_Guid"},
    {"devicedriverinfo", "Id DriverKey"},
    {"storage", "Channel_Guid", "Id"},
    {"archiveInfo", "Guid", "ArchiveTime"},
    {"cameraschedule", "Camera_Guid"},
    {"onlineschedules", "Guid"},
    {"recordschedules", "Guid"},
    {"speedupschedules", "Guid"},
    {"viewgroupinfo", "Guid UserGuid", "ViewGroupType", "Name"},
    {"groupinfo", "ViewGroupInfoGuid", "Id", "ParentGroupGuid"},
    {"viewinfo", "GroupGuid", "Id"},
    {"viewitem", "ViewInfoGuid", "Id"},
    {"viewiteminfo", "ViewItemGuid"},
    {"carousel", "ItemInfoGuid", "nIndex", "DisplayName"},
    {"mapinfo", "MapGuid UserGuid", "Id"},
    {"mapitemparam", "MapInfoGuid Guid MapItemGuid"},
    {"nodeinfo", "NodeGuid", "NodeName"},
    {"nodeelement", "Guid NodeGuid", "DisplayName"},
    {"alarminfo", "Guid ChannelGuid", "SN"},
    {"facecapture", "addTime", "addTime"},
    {"facecompare", "addTime", "addTime"},
};

/// The forms that no rule makes.
constexpr struct {
    const char* table;
    const char* text;
} kSpecialForms[] = {
    {"userinfo", "select Guid from userinfo where UserName='{text}' and Password='{text}'"},
    {"channel", "select Guid,Num from channel,usercameras where User_Guid='{key}' order by Num"},
    {"channel", "select Type,Num from channel,usercameras where User_Guid='{key}' order by Num"},
    {"devicedriverinfo",
     "insert into devicedriverinfo(Id,DriverKey,DriverType,Source) values({id}, '{key}', {number}, "
     "{bare});"},
    {"viewgroupinfo",
     "select Guid,ViewGroupType from viewgroupinfo where Guid='{key}' and UserGuid='{key}' or "
     "ViewGroupType=1 order by ViewGroupType"},
    {"viewitem", "insert into viewitem(Guid,ItemNumber,Id) values('{key}', {number}', {id});"},
    {"alarminfo",
     "select Guid,AlarmContent,SN from alarminfo where ChannelGuid='{key}' or ChannelGuid='{key}' "
     "and AlarmLevel={number} and AlarmMethod='{number}' and EndTime='{text}';"},
    {"facecapture",
     "select * from facecapture where addTime>{number} and addTime<{number} order by addTime"},
};

Texts split(const char* words) {
    std::istringstream stream(words);
    return {std::istream_iterator<std::string>(stream), {}};
}

std::string join(const Texts& texts, const std::string& separator) {
    std::string result;
    for (const std::string& text : texts)
        result += (result.empty() ? "" : separator) + text;
    return result;
}

void replaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

/// The columns that the statements write.
std::vector<Column> columnsOf(const std::string& table) {
    const auto& tables = schema::tables();
    const auto found = std::find_if(tables.begin(), tables.end(),
                                    [&](const auto& known) { return known.name == table; });
    std::vector<Column> columns = schema::columnsOf(*found);
    const Type last = columns.back().type;
    if (last == Type::SerialNumber || last == Type::RowNumber) columns.pop_back();
    return columns;
}

Texts namesOf(const std::vector<Column>& columns) {
    Texts names;
    for (const Column& column : columns)
        names.push_back(column.name);
    return names;
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

StatementForm formOf(const std::string& table, const std::string& text) {
    StatementForm form{text, table, {}, ""};
    if (text.compare(0, 7, "select ") != 0) return form;
    std::string list = text.substr(7, text.find(" from ") - 7);
    if (list == "*") list = join(namesOf(columnsOf(table)), ",");
    if (list == "max(Id) as Id") list = "Id";
    replaceAll(list, ",", " ");
    form.columns = split(list.c_str());
    const std::size_t order = text.find(" order by ");
    if (order != std::string::npos) form.order = text.substr(order + 10);
    return form;
}

/// Makes the forms of one table.
class FormWriter {
public:
    FormWriter(const TableForms& forms, std::vector<StatementForm>& result)
        : table_(forms.table),
          noComma_(forms.noComma),
          order_(forms.order),
          keys_(split(forms.keys)),
          columns_(columnsOf(table_)),
          withoutId_(columns_),
          result_(result) {
        if (columns_.back().name == "Id") withoutId_.pop_back();
    }

    void write() {
        writeInserts("insert into ", columns_);
        writeInserts("replace into ", withoutId_);
        writeSelects();
        writeUpdates();
        for (const auto& form : kSpecialForms)
            if (form.table == table_) add(form.text);
        for (const std::string& condition : conditions())
            add("delete from " + table_ + condition);
    }

private:
    void add(const std::string& text) { result_.push_back(formOf(table_, text)); }

    void writeInserts(const std::string& verb, const std::vector<Column>& columns) {
        Texts bare;
        Texts quoted;
        for (const Column& column : columns) {
            quoted.push_back("'" + placeFor(column) + "'");
            bare.push_back(isText(column) ? quoted.back() : placeFor(column));
        }
        const std::string head = verb + table_ + "(" + join(namesOf(columns), ",") + ") values";
        const std::string row = "(" + join(bare, ", ") + ")";
        add(head + row + ";");
        add(head + row + "," + row + "," + row + ";");
        add(head + "(" + join(quoted, "','") + ");");
        add(head + ";");
    }

    void writeSelects() {
        std::string select = contentOf(table_).text;
        if (order_ == "SN") select.insert(select.find(" from "), ",SN");
        for (const std::string& condition : conditions())
            add(select + condition + (order_.empty() ? "" : " order by " + order_));
        add("select * from " + table_ + " where" + clause(keys_.back()) + " and " +
            clause(withoutId_.back().name));
        if (columns_.back().name == "Id") add("select max(Id) as Id from " + table_);
    }

    void writeUpdates() {
        const std::vector<Column> set(columns_.begin() + 1, columns_.end());
        for (const std::string& key : keys_)
            writeUpdate(set, "", key);
        writeUpdate(set, noComma_, columns_.front().name);
        writeUpdate(columns_, "", columns_.front().name);
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

    /// One for each key, for all and for either, the ill-formed ones, and none.
    Texts conditions() const {
        Texts clauses;
        Texts result;
        for (const std::string& key : keys_) {
            clauses.push_back(clause(key));
            result.push_back(" where" + clauses.back());
        }
        const std::string all = join(clauses, " and");
        const std::string either = clauses.front() + " or" + all + " or" + clauses.back();
        for (const std::string& condition : {all, either, either + " or", std::string()})
            result.push_back(" where" + condition);
        result.emplace_back();
        return result;
    }

    const std::string table_;
    const std::string noComma_;
    const std::string order_;
    const Texts keys_;
    const std::vector<Column> columns_;
    std::vector<Column> withoutId_;
    std::vector<StatementForm>& result_;
};

}  // namespace

std::vector<StatementForm> statementForms() {
    std::vector<StatementForm> result;
    for (const TableForms& forms : kTableForms)
        FormWriter(forms, result).write();
    return result;
}

StatementForm contentOf(const std::string& table) {
    return formOf(table, "select " + join(namesOf(columnsOf(table)), ",") + " from " + table);
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
