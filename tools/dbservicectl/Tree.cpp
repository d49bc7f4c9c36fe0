#include <fmt/format.h>

#include <algorithm>
#include <unordered_map>

#include "tools/dbservicectl/Commands.h"
#include "tools/dbservicectl/Rows.h"

namespace dbservicectl {
namespace {

/// The records of one kind, read by one query. It gives OwnKey, ParentKey and DisplayName, and the
/// details as `Detail0` and so on.
struct Level {
    const char* kind;
    const char* parentKind;
    bool standsAlone;  ///< may hang under nothing
    const char* query;
    std::vector<const char*> details;  ///< what is said of each that is there, as "port {}"
};

struct Tree {
    const char* name;
    const char* help;
    std::vector<Level> levels;
};

const std::vector<Tree>& trees() {
    static const std::vector<Tree> all{
        {"devices",
         "Servers, their devices, their channels",
         {{"server",
           "",
           true,
           "select Guid as OwnKey,'' as ParentKey,DisplayName,PrivateAddress as Detail0,"
           "PrivatePort as Detail1 from serverinfo order by DisplayName,Guid",
           {"at {}", "port {}"}},
          {"device",
           "server",
           true,
           "select Guid as OwnKey,ServerGuid as ParentKey,DisplayName,IPAddress as Detail0,"
           "HttpPort as Detail1 from device order by DisplayName,Guid",
           {"at {}", "port {}"}},
          {"channel",
           "device",
           false,
           "select Guid as OwnKey,Device_Guid as ParentKey,DisplayName,Num as Detail0 from channel "
           "order by Num,Guid",
           {"number {}"}}}},
        {"views",
         "View groups, their groups, views, panes, sources and carousels",
         {{"view group",
           "",
           true,
           "select g.Guid as OwnKey,'' as ParentKey,g.Name as DisplayName,u.UserName as Detail0,"
           "case when g.ViewGroupType=1 then 'shared' end as Detail1 from viewgroupinfo g "
           "left join userinfo u on u.Guid=g.UserGuid order by g.Name,g.Guid",
           {"of {}", "{}"}},
          {"group",
           "view group",
           false,
           "select GroupGuid as OwnKey,ViewGroupInfoGuid as ParentKey,DisplayName from groupinfo "
           "where ParentGroupGuid='' or ParentGroupGuid is null order by Id,GroupGuid",
           {}},
          {"group",
           "group",
           false,
           "select GroupGuid as OwnKey,ParentGroupGuid as ParentKey,DisplayName from groupinfo "
           "where ParentGroupGuid<>'' order by Id,GroupGuid",
           {}},
          {"view",
           "group",
           false,
           "select ViewGuid as OwnKey,GroupGuid as ParentKey,DisplayName from viewinfo "
           "order by Id,ViewGuid",
           {}},
          {"pane",
           "view",
           false,
           "select Guid as OwnKey,ViewInfoGuid as ParentKey,DisplayName,ItemNumber as Detail0 "
           "from viewitem order by ItemNumber,Guid",
           {"number {}"}},
          {"source",
           "pane",
           false,
           "select s.Guid as OwnKey,s.ViewItemGuid as ParentKey,s.DisplayName,"
           "c.DisplayName as Detail0,s.Url as Detail1 from viewiteminfo s "
           "left join channel c on c.Guid=s.CameraGuid order by s.Guid",
           {"shows {}", "shows {}"}},
          {"carousel entry",
           "source",
           false,
           "select e.Guid as OwnKey,e.ItemInfoGuid as ParentKey,e.DisplayName,"
           "c.DisplayName as Detail0,e.ShowTime as Detail1 from carousel e "
           "left join channel c on c.Guid=e.ChannelGuid order by e.nIndex,e.Guid",
           {"shows {}", "for {} s"}}}},
        {"maps",
         "Maps, the maps below them, and what is on each",
         {{"map",
           "map",
           true,
           "select m.MapGuid as OwnKey,m.ParentMapGuid as ParentKey,m.MapName as DisplayName,"
           "u.UserName as Detail0 from mapinfo m left join userinfo u on u.Guid=m.UserGuid "
           "order by m.Id,m.MapGuid",
           {"of {}"}},
          {"item",
           "map",
           false,
           "select i.Guid as OwnKey,i.MapInfoGuid as ParentKey,i.DisplayName,"
           "c.DisplayName as Detail0,i.MapItemPos_X as Detail1,i.MapItemPos_Y as Detail2 "
           "from mapitemparam i left join channel c on c.Guid=i.MapItemGuid "
           "order by i.DisplayName,i.Guid",
           {"shows {}", "x {}", "y {}"}}}},
        {"resources",
         "The folders of the resource tree and the channels in them",
         {{"folder",
           "folder",
           true,
           "select n.NodeGuid as OwnKey,n.ParentNodeGuid as ParentKey,n.NodeName as DisplayName,"
           "s.DisplayName as Detail0 from nodeinfo n left join serverinfo s on s.Guid=n.ServerGuid "
           "order by n.NodeName,n.NodeGuid",
           {"on {}"}},
          {"element",
           "folder",
           false,
           "select e.Guid as OwnKey,e.NodeGuid as ParentKey,e.DisplayName,"
           "c.DisplayName as Detail0,u.UserName as Detail1 from nodeelement e "
           "left join channel c on c.Guid=e.ChannelGuid left join userinfo u on u.Guid=e.UserGuid "
           "order by e.DisplayName,e.Guid",
           {"shows {}", "of {}"}}}},
    };
    return all;
}

/// A record in the tree.
struct Node {
    const Level* level;
    std::string key;
    std::string parent;
    std::string name;
    std::string detail;
    std::vector<std::size_t> below;
    bool shown = false;
};

std::string detailOf(const Level& level, const std::vector<Cell>& row) {
    std::string detail;
    for (std::size_t i = 0; i < level.details.size(); ++i) {
        const std::string value = row[i + 3].value_or("");
        if (value.empty()) continue;
        if (!detail.empty()) detail += ", ";
        detail += fmt::format(fmt::runtime(level.details[i]), value);
    }
    return detail;
}

std::vector<Node> readNodes(Session& session, const Tree& tree) {
    std::vector<Node> nodes;
    for (const Level& level : tree.levels) {
        std::vector<Column> columns{{"OwnKey"}, {"ParentKey"}, {"DisplayName"}};
        for (std::size_t i = 0; i < level.details.size(); ++i)
            columns.push_back({fmt::format("Detail{}", i)});
        forEachRow(session.access(), session.dbName(), level.query, columns,
                   [&](const std::vector<Cell>& row) {
                       nodes.push_back({&level,
                                        row[0].value_or(""),
                                        row[1].value_or(""),
                                        row[2].value_or(""),
                                        detailOf(level, row),
                                        {}});
                   });
    }
    return nodes;
}

/// Writes the tree: in JSON and CSV a row for each record, which tells its depth and its parent.
class Writer {
public:
    explicit Writer(const Session& session)
        : table_(session.format() == Format::Table),
          output_(session.output(
              {{"Depth", true}, {"Kind"}, {"Name"}, {"Detail"}, {"Key"}, {"Parent"}, {"Fault"}})) {}

    /// What stands below this heading has a fault; it is said of each of its rows in JSON and CSV.
    void heading(const std::string& fault) {
        fault_ = fault;
        if (table_) line(0, "(" + fault + ")");
    }

    void add(const Node& node, std::size_t depth) {
        if (!table_) {
            output_.add({std::to_string(depth), node.level->kind, node.name, node.detail, node.key,
                         node.parent, fault_});
            return;
        }
        const std::string& name = node.name.empty() ? node.key : node.name;
        line(depth + (fault_.empty() ? 0 : 1),
             fmt::format("{} {}{}{}", node.level->kind, name, node.detail.empty() ? "" : ": ",
                         node.detail));
    }

    void finish() {
        if (!table_) output_.finish();
    }

private:
    /// However deep it is, half of the width is left for the text.
    void line(std::size_t depth, const std::string& text) const {
        std::size_t indent = 2 * depth;
        if (width_ != 0) indent = std::min(indent, width_ / 2);
        const std::string shown = harmless(text);
        if (width_ == 0) {
            fmt::print("{:{}}{}\n", "", indent, shown);
            return;
        }
        // A line that goes on stands farther to the right than what is below.
        constexpr std::size_t kMore = 4;
        const std::size_t room = std::max<std::size_t>(width_ - indent, kMore + 1) - kMore;
        std::string blanks(indent, ' ');
        for (const std::string& part : wrapped(shown, room)) {
            fmt::print("{}{}\n", blanks, part);
            blanks.resize(indent + kMore, ' ');
        }
    }

    bool table_;
    std::size_t width_ = terminalWidth();
    Output output_;
    std::string fault_;
};

/// Writes a record and all below it that were not written before, so that a circle ends.
void write(Writer& writer, std::vector<Node>& nodes, std::size_t top) {
    struct Place {
        std::size_t node;
        std::size_t depth;
    };
    std::vector<Place> waiting{{top, 0}};  // no recursion: a chain may be as long as a table
    while (!waiting.empty()) {
        const Place place = waiting.back();
        waiting.pop_back();
        Node& node = nodes[place.node];
        if (node.shown) continue;
        node.shown = true;
        writer.add(node, place.depth);
        for (auto below = node.below.rbegin(); below != node.below.rend(); ++below)
            waiting.push_back({*below, place.depth + 1});
    }
}

}  // namespace

const std::vector<TreeName>& treeNames() {
    static const std::vector<TreeName> names = [] {
        std::vector<TreeName> all;
        for (const Tree& tree : trees())
            all.push_back({tree.name, tree.help});
        return all;
    }();
    return names;
}

void showTree(Session& session, const std::string& name) {
    const auto tree = std::find_if(trees().begin(), trees().end(),
                                   [&](const Tree& one) { return one.name == name; });
    std::vector<Node> nodes = readNodes(session, *tree);
    // The same key may stand in two tables.
    const auto id = [](const std::string& kind, const std::string& key) {
        return kind + '/' + key;
    };
    std::unordered_map<std::string, std::size_t> places;
    for (std::size_t i = 0; i < nodes.size(); ++i)
        places.emplace(id(nodes[i].level->kind, nodes[i].key), i);
    std::vector<std::size_t> tops;
    std::vector<std::size_t> withoutParent;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const Node& node = nodes[i];
        const auto parent = places.find(id(node.level->parentKind, node.parent));
        if (parent != places.end() && !node.parent.empty()) {
            nodes[parent->second].below.push_back(i);
        } else {
            (node.parent.empty() && node.level->standsAlone ? tops : withoutParent).push_back(i);
        }
    }
    Writer writer(session);
    for (const std::size_t top : tops)
        write(writer, nodes, top);
    if (!withoutParent.empty()) writer.heading("no parent");
    for (const std::size_t top : withoutParent)
        write(writer, nodes, top);
    const auto inCircle = [](const Node& node) { return !node.shown; };
    const auto first = std::find_if(nodes.begin(), nodes.end(), inCircle);
    if (first != nodes.end()) writer.heading("in a circle");
    for (auto i = first; i != nodes.end(); i = std::find_if(i, nodes.end(), inCircle))
        write(writer, nodes, static_cast<std::size_t>(i - nodes.begin()));
    writer.finish();
}

}  // namespace dbservicectl
