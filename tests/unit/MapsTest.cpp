#include <ctime>

#include "dbaccess/DataAccess.h"
#include "dbservice/maps/NodeElementParam.h"
#include "dbservice/maps/NodeInfo.h"
#include "tests/unit/StatementCases.h"

namespace dbservice {
namespace {

using scripted::Rows;
using scripted::script;

using Maps = ScriptedService;
using MapItems = ScriptedService;
using ResourceTree = ScriptedService;

constexpr int kOther = 7;

T_EMapInfo map(const char* guid, int flag, const char* user = "") {
    T_EMapInfo map;
    map.MapGuid = guid;
    map.UserGuid = user;
    map.ServerGuid = "not stored";
    map.ParentMapGuid = "p";
    map.MapType = 1;
    map.MapName = "n";
    map.Gis_CenterCityName = "c";
    map.Gis_Pos_X = "x";
    map.Gis_Pos_Y = "y";
    map.Gis_Zoom = 2;
    map.Customize_Image_Path = "i";
    map.Customize_Image_Size = 3;
    map.Customize_Image_Type = 4;
    map.EditFlag = flag;
    map.LastTime = 1;  // never taken
    return map;
}

const std::string kMapColumns =
    "MapGuid,UserGuid,ParentMapGuid,MapType,MapName,Gis_CenterCityName,Gis_Pos_X,Gis_Pos_Y,Gis_Zoom,Customize_Image_Path,Customize_Image_Size,Customize_Image_Type,LastTime";

/// Puts "NOW" in place of the time in the last statement, which must be about now.
std::string lastStatementAt(const std::string& before) {
    std::string text = script().calls.back();
    const auto at = text.find(before) + before.size();
    const std::string time = text.substr(at, text.find_first_not_of("0123456789", at) - at);
    EXPECT_NEAR(static_cast<double>(std::time(nullptr)), std::stod(time), 5);
    const std::string marked = before + time;  // all rows have the same one
    for (auto place = text.find(marked); place != std::string::npos; place = text.find(marked))
        text.replace(place + before.size(), time.size(), "NOW");
    return text;
}

TEST_F(Maps, InsertAndUpdateTakeTheirRecords) {
    const T_EMapInfo maps[] = {map("a", 0),      map("b", 1),      map("c", 2),
                               map("d", 0, "u"), map("e", kOther), map("f", 1)};
    script().queries.push_back(Rows{{"Id"}, {{"7"}}});
    EXPECT_EQ(0, service().InsertEMapInfo(maps, 6));
    EXPECT_EQ("Query vms: select max(Id) as Id from mapinfo", script().calls.at(0));
    const std::string row = "'p', 1, 'n', 'c', 'x', 'y', 2, 'i', 3,4, NOW";
    EXPECT_EQ("Insert vms: insert into mapinfo(" + kMapColumns + ",Id) values('a', '', " + row +
                  ",8),('d', 'u', " + row + ",9);",
              lastStatementAt("'i', 3,4, "));
    EXPECT_EQ(0, service().UpdateEMapInfo(maps, 6));
    EXPECT_EQ("Execute vms: replace into mapinfo(" + kMapColumns + ") values('b', '', " + row +
                  "),('f', '', " + row + ");",
              lastStatementAt("'i', 3,4, "));
}

TEST_F(Maps, Statements) {
    const T_EMapInfo none[] = {map("a", 2), map("b", kOther)};
    const T_EMapInfo removed[] = {map("a", 2), map("b", 0), map("c", 2)};
    const T_EMapInfo dangling[] = {map("a", 2), map("", 2)};
    const T_EMapInfo empty[] = {map("", 2), map("", 2)};
    const T_EMapInfo keys[] = {map("a", 0, "u"), map("b", 0), map("", 0)};
    const std::string select = "Query select " + kMapColumns + ",Id from mapinfo where";
    const auto query = [](const T_EMapInfo* maps, int count, bool flag) {
        return [=] { service().ReleaseEMapInfoList(service().QueryEMapInfo(maps, count, flag)); };
    };
    check({
        {"delete",
         [&] { service().DeleteEMapInfo(removed, 3); },
         {"Execute delete from mapinfo where MapGuid='a' or MapGuid='c'"}},
        {"delete with a dangling or",
         [&] { service().DeleteEMapInfo(dangling, 2); },
         {"Execute delete from mapinfo where MapGuid='a' or"}},
        {"query", query(keys, 2, true), {select + " UserGuid='u' or MapGuid='b' order by Id"}},
        {"query, the flag without effect",
         query(keys, 2, false),
         {select + " UserGuid='u' or MapGuid='b' order by Id"}},
        {"query with a dangling or",
         query(keys, 3, false),
         {select + " UserGuid='u' or MapGuid='b' or order by Id"}},
        {"query without keys", query(empty, 2, true), {select + " order by Id"}},
        {"nothing to take runs nothing",
         [&] {
             EXPECT_EQ(0, service().InsertEMapInfo(none, 2));
             EXPECT_EQ(0, service().UpdateEMapInfo(none, 2));
             EXPECT_EQ(-1, service().DeleteEMapInfo(removed + 1, 1));
             EXPECT_EQ(-1, service().DeleteEMapInfo(empty, 2));
             EXPECT_EQ(-1, service().InsertEMapInfo(nullptr, 1));
             EXPECT_EQ(-1, service().UpdateEMapInfo(none, 0));
             EXPECT_EQ(-1, service().DeleteEMapInfo(nullptr, 1));
             EXPECT_EQ(nullptr, service().QueryEMapInfo(nullptr, 1, true));
             EXPECT_EQ(nullptr, service().QueryEMapInfo(keys, 0, true));
         },
         {}},
    });
    const T_EMapInfo one[] = {map("a", 0), map("a", 1), map("a", 2)};
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertEMapInfo(one, 3); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().UpdateEMapInfo(one, 3); }));
    EXPECT_EQ(passedThrough(), resultsOf([&] { return service().DeleteEMapInfo(one, 3); }));
}

TEST_F(Maps, Reads) {
    checkReads(
        {"string MapGuid", "string UserGuid", "string ParentMapGuid", "int MapType",
         "string MapName", "string Gis_CenterCityName", "string Gis_Pos_X", "string Gis_Pos_Y",
         "int Gis_Zoom", "string Customize_Image_Path", "int Customize_Image_Size",
         "int Customize_Image_Type", "uint64 LastTime"},
        [] {
            const T_EMapInfo key = map("a", 0);
            T_EMapInfoList* list = service().QueryEMapInfo(&key, 1, true);
            T_EMapInfo& read = list->items[0];
            EXPECT_EQ(13U, read.LastTime);
            read.EditFlag = kEMapChanged;
            service().UpdateEMapInfo(&read, 1);
            script().calls.back() = lastStatementAt("', 11,12, ");
            service().ReleaseEMapInfoList(list);
        },
        "Execute vms: replace into mapinfo(" + kMapColumns +
            ") values('MapGuid', 'UserGuid', 'ParentMapGuid', 4, 'MapName', 'Gis_CenterCityName', 'Gis_Pos_X', 'Gis_Pos_Y', 9, 'Customize_Image_Path', 11,12, NOW);");
    const T_EMapInfo key = map("a", 0);
    script() = {};
    T_EMapInfoList* list = service().QueryEMapInfo(&key, 1, true);
    ASSERT_NE(nullptr, list);
    EXPECT_EQ(0, list->count);
    service().ReleaseEMapInfoList(list);
}

T_EMapItemInfo item(const char* guid, int flag) {
    T_EMapItemInfo item;
    item.Guid = guid;
    item.MapInfoGuid = "m";
    item.MapItemGuid = "t";
    item.MapItemType = 5;
    item.DisplayName = "n";
    item.Discription = "d";
    item.MapItemPos_X = "x";
    item.MapItemPos_Y = "y";
    item.EditFlag = flag;
    return item;
}

TEST_F(MapItems, Statements) {
    const std::string columns =
        "Guid,MapInfoGuid,MapItemGuid,MapItemType,DisplayName,Discription,MapItemPos_X,MapItemPos_Y";
    const std::string row = "', 'm', 't', 5, 'n', 'd', 'x', 'y'";
    const std::string select = "Query select " + columns + " from mapitemparam where";
    const T_EMapItemInfo items[] = {item("a", 0), item("b", 1), item("", 2),
                                    item("d", 2), item("e", 0), item("f", 1)};
    T_EMapItemInfo keyless = item("", 2);
    keyless.MapItemGuid = "";
    const T_EMapItemInfo dangling[] = {item("a", 2), keyless};
    const T_EMapInfo maps[] = {map("a", 2), map("b", 0), map("", 0)};
    check({
        {"insert",
         [&] { service().InsertEMapItemInfo(items, 6); },
         {"Query select max(Id) as Id from mapitemparam", "Insert insert into mapitemparam(" +
                                                              columns + ",Id) values('a" + row +
                                                              ", 8),('e" + row + ", 9);"}},
        {"update, with a blank behind each row",
         [&] { service().UpdateEMapItemInfo(items, 6); },
         {"Execute replace into mapitemparam(" + columns + ") values('b" + row + ") ,('f" + row +
          ") ;"}},
        {"delete by item",
         [&] { service().DeleteEMapItemInfo(items, 6); },
         {"Execute delete from mapitemparam where MapItemGuid='t' or Guid='d'"}},
        {"delete by item with a dangling or",
         [&] { service().DeleteEMapItemInfo(dangling, 2); },
         {"Execute delete from mapitemparam where Guid='a' or"}},
        {"delete by map",
         [&] { service().DeleteEMapItemInfo(maps, 3); },
         {"Execute delete from mapitemparam where MapInfoGuid='a'"}},
        {"query",
         [&] { service().ReleaseEMapItemInfoList(service().QueryEMapItemInfo(maps, 2)); },
         {select + " MapInfoGuid='a' or MapInfoGuid='b'"}},
        {"query without keys",
         [&] { service().ReleaseEMapItemInfoList(service().QueryEMapItemInfo(maps + 2, 1)); },
         {select}},
        {"nothing to take runs nothing",
         [&] {
             EXPECT_EQ(-1, service().InsertEMapItemInfo(items + 1, 1));
             EXPECT_EQ(-1, service().UpdateEMapItemInfo(items, 1));
             EXPECT_EQ(-1, service().DeleteEMapItemInfo(items, 1));
             EXPECT_EQ(-1, service().DeleteEMapItemInfo(&keyless, 1));
             EXPECT_EQ(-1, service().DeleteEMapItemInfo(maps + 1, 1));
             EXPECT_EQ(-1, service().InsertEMapItemInfo(nullptr, 1));
             EXPECT_EQ(nullptr, service().QueryEMapItemInfo(maps, 0));
         },
         {}},
    });
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertEMapItemInfo(items, 6); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().UpdateEMapItemInfo(items, 6); }));
    EXPECT_EQ(passedThrough(), resultsOf([&] { return service().DeleteEMapItemInfo(items, 6); }));
    EXPECT_EQ(passedThrough(), resultsOf([&] { return service().DeleteEMapItemInfo(maps, 1); }));
    checkReads(
        {"string Guid", "string MapInfoGuid", "string MapItemGuid", "int MapItemType",
         "string DisplayName", "string Discription", "string MapItemPos_X", "string MapItemPos_Y"},
        [&] {
            T_EMapItemInfoList* list = service().QueryEMapItemInfo(maps, 1);
            list->items[0].EditFlag = kEMapChanged;
            service().UpdateEMapItemInfo(list->items, 1);
            service().ReleaseEMapItemInfoList(list);
        },
        "Execute vms: replace into mapitemparam(" + columns +
            ") values('Guid', 'MapInfoGuid', 'MapItemGuid', 4, 'DisplayName', 'Discription', 'MapItemPos_X', 'MapItemPos_Y') ;");
}

TEST_F(ResourceTree, TheServiceAnswersAsIfNotConnected) {
    const T_NodeParam node;
    const T_NodeElementParam element;
    EXPECT_EQ(-1, service().InsertNodeInfo(&node, 1));
    EXPECT_EQ(-1, service().UpdateNodeInfo(&node, 1));
    EXPECT_EQ(-1, service().DeleteNodeInfo(&node, 1));
    EXPECT_EQ(nullptr, service().QueryNodeInfo(&node, 1));
    service().ReleaseNodeInfo(nullptr);
    EXPECT_EQ(-1, service().InsertNodeElement(&element, 1));
    EXPECT_EQ(-1, service().UpdateNodeElement(&element, 1));
    EXPECT_EQ(-1, service().DeleteNodeElement(&node, 1));
    EXPECT_EQ(-1, service().DeleteNodeElement(&element, 1));
    EXPECT_EQ(nullptr, service().QueryNodeElement(&node, 1));
    EXPECT_EQ(nullptr, service().QueryNodeElement(&element, 1));
    service().ReleaseNodeElementList(nullptr);
    EXPECT_TRUE(script().calls.empty());
}

T_NodeParam node(const char* guid) {
    T_NodeParam node;
    node.NodeGuid = guid;
    node.ParentNodeGuid = "p";
    node.ServerGuid = "s";
    node.NodeName = "n";
    node.NodeType = -1;
    return node;
}

TEST_F(ResourceTree, Nodes) {
    dbaccess::DataAccess access("", 0, "", "");
    NodeInfo dao(&access, "vms");
    const T_NodeParam two[] = {node("a"), node("b")};
    const T_NodeParam dangling[] = {node("a"), node("")};
    const T_NodeParam leading[] = {node(""), node("a")};
    const std::string columns = "NodeGuid,ParentNodeGuid,ServerGuid,NodeName,NodeType";
    const std::string rows = "('a', 'p', 's', 'n', -1),('b', 'p', 's', 'n', -1);";
    const std::string select = "Query select " + columns + " from nodeinfo";
    const auto query = [&](const T_NodeParam* keys, int count) {
        return [&dao, keys, count] { dao.ReleaseNodeInfo(dao.QueryNodeInfoImp(keys, count)); };
    };
    check({
        {"insert",
         [&] { dao.InsertNodeInfoImp(two, 2); },
         {"Insert insert into nodeinfo(" + columns + ") values" + rows}},
        {"replace",
         [&] { dao.UpdateNodeInfoImp(two, 2); },
         {"Execute replace into nodeinfo(" + columns + ") values" + rows}},
        {"delete",
         [&] { dao.DeleteNodeInfoImp(two, 2); },
         {"Execute delete from nodeinfo where NodeGuid='a' or NodeGuid='b'"}},
        {"delete without keys",
         [&] { dao.DeleteNodeInfoImp(leading, 1); },
         {"Execute delete from nodeinfo where"}},
        {"query",
         query(two, 2),
         {select + " where NodeGuid='a' or NodeGuid='b' order by NodeName"}},
        {"query with a dangling or",
         query(dangling, 2),
         {select + " where NodeGuid='a' or order by NodeName"}},
        {"query with an empty key first",
         query(leading, 2),
         {select + " where NodeGuid='a' order by NodeName"}},
        {"query all", query(nullptr, 0), {select + " order by NodeName"}},
        {"no records",
         [&] {
             EXPECT_EQ(-1, dao.InsertNodeInfoImp(nullptr, 1));
             EXPECT_EQ(-1, dao.UpdateNodeInfoImp(two, 0));
             EXPECT_EQ(-1, dao.DeleteNodeInfoImp(nullptr, 1));
         },
         {}},
    });
    EXPECT_EQ(folded(), resultsOf([&] { return dao.InsertNodeInfoImp(two, 2); }));
    EXPECT_EQ(folded(), resultsOf([&] { return dao.UpdateNodeInfoImp(two, 2); }));
    EXPECT_EQ(passedThrough(), resultsOf([&] { return dao.DeleteNodeInfoImp(two, 2); }));
    checkReads(
        {"string NodeGuid", "string ParentNodeGuid", "string ServerGuid", "string NodeName",
         "int NodeType"},
        [&] {
            T_NodeParamList* list = dao.QueryNodeInfoImp(nullptr, 0);
            dao.InsertNodeInfoImp(list->items, 1);
            dao.ReleaseNodeInfo(list);
        },
        "Insert vms: insert into nodeinfo(" + columns +
            ") values('NodeGuid', 'ParentNodeGuid', 'ServerGuid', 'NodeName', 5);");
}

TEST_F(ResourceTree, Elements) {
    dbaccess::DataAccess access("", 0, "", "");
    NodeElementParam dao(&access, "vms");
    T_NodeElementParam element;
    element.Guid = "e";
    element.UserGuid = "u";
    element.NodeGuid = "n";
    element.DeviceGuid = "d";
    element.ChannelGuid = "c";
    element.DisplayName = "x";
    element.StreamType = 1;
    element.VenderType = 7;
    element.DeviceType = 3;
    const T_NodeElementParam two[] = {element, {}};
    const T_NodeParam nodes[] = {node("a"), node("b")};
    const std::string columns =
        "Guid,UserGuid,NodeGuid,DeviceGuid,ChannelGuid,DisplayName,StreamType,DeviceType,VenderType";
    const std::string rows =
        "('e', 'u', 'n', 'd', 'c', 'x', 1, 3, 7),('', '', '', '', '', '', 0, 0, 0);";
    const std::string select = "Query select " + columns + " from nodeelement";
    check({
        {"insert",
         [&] { dao.InsertNodeElementImp(two, 2); },
         {"Insert insert into nodeelement(" + columns + ") values" + rows}},
        {"replace",
         [&] { dao.UpdateNodeElementImp(two, 2); },
         {"Execute replace into nodeelement(" + columns + ") values" + rows}},
        {"delete by node",
         [&] { dao.DeleteNodeElementImp(nodes, 2); },
         {"Execute delete from nodeelement where NodeGuid='a' or NodeGuid='b'"}},
        {"delete by element with a dangling or",
         [&] { dao.DeleteNodeElementImp(two, 2); },
         {"Execute delete from nodeelement where Guid='e' or"}},
        {"query by node",
         [&] { dao.ReleaseNodeElementList(dao.QueryNodeElementImp(nodes, 2)); },
         {select + " where NodeGuid='a' or NodeGuid='b' order by DisplayName"}},
        {"query by element",
         [&] { dao.ReleaseNodeElementList(dao.QueryNodeElementImp(two, 1)); },
         {select + " where Guid='e' order by DisplayName"}},
        {"query all",
         [&] {
             const T_NodeParam* none = nullptr;
             dao.ReleaseNodeElementList(dao.QueryNodeElementImp(none, 0));
         },
         {select + " order by DisplayName"}},
        {"no records",
         [&] {
             EXPECT_EQ(-1, dao.InsertNodeElementImp(nullptr, 1));
             EXPECT_EQ(-1, dao.UpdateNodeElementImp(two, 0));
             EXPECT_EQ(-1, dao.DeleteNodeElementImp(nodes, 0));
             EXPECT_EQ(-1, dao.DeleteNodeElementImp(two, 0));
         },
         {}},
    });
    EXPECT_EQ(folded(), resultsOf([&] { return dao.InsertNodeElementImp(two, 2); }));
    EXPECT_EQ(folded(), resultsOf([&] { return dao.UpdateNodeElementImp(two, 2); }));
    EXPECT_EQ(passedThrough(), resultsOf([&] { return dao.DeleteNodeElementImp(two, 2); }));
    checkReads(
        {"string Guid", "string UserGuid", "string NodeGuid", "string DeviceGuid",
         "string ChannelGuid", "string DisplayName", "int StreamType", "int DeviceType",
         "int VenderType"},
        [&] {
            T_NodeElementList* list = dao.QueryNodeElementImp(nodes, 2);
            dao.InsertNodeElementImp(list->items, 1);
            dao.ReleaseNodeElementList(list);
        },
        "Insert vms: insert into nodeelement(" + columns +
            ") values('Guid', 'UserGuid', 'NodeGuid', 'DeviceGuid', 'ChannelGuid', 'DisplayName', 7, 8, 9);");
}

}  // namespace
}  // namespace dbservice
