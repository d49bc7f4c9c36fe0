#include "tools/dbservicectl/Diagram.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "schema/Tables.h"
#include "tools/dbservicectl/Entities.h"

namespace dbservicectl {
namespace {

/// The families, by the first table of each.
constexpr std::pair<std::string_view, const char*> kFamilies[] = {
    {"serverinfo", "Accounts"},   {"device", "Devices"},        {"storage", "Recording"},
    {"viewgroupinfo", "Layouts"}, {"mapinfo", "Maps and tree"}, {"alarminfo", "Events"},
};

bool isEndOfReference(std::string_view table, std::string_view column) {
    return std::any_of(references().begin(), references().end(), [&](const Reference& reference) {
        return (reference.table == table && reference.column == column) ||
               (reference.target == table && reference.key == column);
    });
}

/// With a line for each key; the other columns are counted.
std::string nodeOf(const schema::Table& table) {
    std::string lines;
    int others = 0;
    for (const schema::Column& column : schema::columnsOf(table)) {
        const bool primary = column.name == table.primaryKey;
        if (!primary && !isEndOfReference(table.name, column.name)) {
            ++others;
            continue;
        }
        lines += fmt::format("<tr><td port=\"{0}\" align=\"left\">{1}{0}{2}</td></tr>", column.name,
                             primary ? "<u>" : "", primary ? "</u>" : "");
    }
    if (others != 0)
        lines += fmt::format("<tr><td align=\"left\"><i>{} more</i></td></tr>", others);
    return fmt::format(
        "    {0} [label=<<table border=\"0\" cellborder=\"1\" cellspacing=\"0\">"
        "<tr><td bgcolor=\"#dde6ee\"><b>{0}</b></td></tr>{1}</table>>];\n",
        table.name, lines);
}

}  // namespace

std::string diagram() {
    std::string text =
        "digraph tables {\n"
        "  rankdir=RL; nodesep=0.2; ranksep=1.2;\n"
        "  graph [fontname=\"sans-serif\", fontsize=14, color=\"#8899aa\", style=\"rounded\"];\n"
        "  node [shape=plain, fontname=\"sans-serif\", fontsize=11, color=\"#8899aa\"];\n"
        "  edge [color=\"#556677\", arrowsize=0.7];\n";
    bool open = false;
    for (const schema::Table& table : schema::tables()) {
        for (const auto& [first, family] : kFamilies) {
            if (first != table.name) continue;
            text += open ? "  }\n" : "";
            text += fmt::format("  subgraph cluster_{} {{\n    label=\"{}\";\n", first, family);
            open = true;
        }
        text += nodeOf(table);
    }
    text += "  }\n";
    for (const Reference& reference : references())
        text += fmt::format("  {}:{} -> {}:{};\n", reference.table, reference.column,
                            reference.target, reference.key);
    return text + "}\n";
}

}  // namespace dbservicectl
