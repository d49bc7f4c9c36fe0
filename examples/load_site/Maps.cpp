#include "examples/load_site/Loading.h"

namespace demo {
namespace {

/// An operation of maps or map items, which takes of its records those with this flag.
template <class Record>
auto flagged(DBService& service, int (DBService::*operation)(const Record*, int), int flag) {
    return [&service, operation, flag](const Record* first, int count) {
        std::vector<Record> edits(first, first + count);
        for (Record& edit : edits)
            edit.EditFlag = flag;
        return (service.*operation)(edits.data(), count);
    };
}

void showMaps(DBService& service, const std::string& userGuid) {
    T_EMapInfo key{};
    key.UserGuid = userGuid;
    Table table({"Map, what is on it", "Camera", "At"});
    for (const T_EMapInfo& map : check(maps(service, &key, 1), "Listing a user's maps")) {
        table.add({map.MapName,
                   map.MapType == 0 ? map.Customize_Image_Path : map.Gis_CenterCityName, ""});
        key.MapGuid = EscapeText(map.MapGuid);
        for (const T_EMapItemInfo& item :
             check(mapItems(service, &key, 1), "Looking up a map's items"))
            table.add({indented(1, item.DisplayName), cameraName(service, item.MapItemGuid),
                       fmt::format("{}, {}", item.MapItemPos_X, item.MapItemPos_Y)});
    }
    table.print("A user's maps");
}

void showTree(DBService& service, NodeInfo& tree, NodeElementParam& elements) {
    Table table({"Folder, what is in it", "Camera"});
    const auto folders = check(nodes(tree), "Listing the resource tree");
    walk(folders, &T_NodeParam::NodeGuid, &T_NodeParam::ParentNodeGuid, "", 0,
         [&](const T_NodeParam& folder, std::size_t depth) {
             table.add({indented(depth, folder.NodeName), ""});
             T_NodeParam key;
             key.NodeGuid = EscapeText(folder.NodeGuid);
             for (const T_NodeElementParam& element :
                  check(nodeElements(elements, &key, 1), "Looking up a folder"))
                 table.add({indented(depth + 1, element.DisplayName),
                            cameraName(service, element.ChannelGuid)});
         });
    table.print("Resource tree");
}

}  // namespace

void loadMaps(DBService& service, dbaccess::DataAccess& access, const Site& site, Table& summary) {
    load(summary, "Maps", site.maps, flagged(service, &DBService::InsertEMapInfo, kEMapNew),
         flagged(service, &DBService::UpdateEMapInfo, kEMapChanged),
         flagged(service, &DBService::DeleteEMapInfo, kEMapRemoved));
    load(summary, "Map items", site.mapItems,
         flagged(service, &DBService::InsertEMapItemInfo, kEMapNew),
         flagged(service, &DBService::UpdateEMapItemInfo, kEMapChanged),
         flagged<T_EMapItemInfo>(service, &DBService::DeleteEMapItemInfo, kEMapRemoved));
    if (!site.maps.stored.empty()) showMaps(service, site.maps.stored.front().UserGuid);

    NodeInfo nodes(&access, service.getDBName());
    NodeElementParam elements(&access, service.getDBName());
    load(summary, "Resource tree folders", site.nodes, all(nodes, &NodeInfo::InsertNodeInfoImp),
         all(nodes, &NodeInfo::UpdateNodeInfoImp), all(nodes, &NodeInfo::DeleteNodeInfoImp));
    load(summary, "Resource tree elements", site.nodeElements,
         all(elements, &NodeElementParam::InsertNodeElementImp),
         all(elements, &NodeElementParam::UpdateNodeElementImp),
         all<T_NodeElementParam>(elements, &NodeElementParam::DeleteNodeElementImp));
    showTree(service, nodes, elements);
}

}  // namespace demo
