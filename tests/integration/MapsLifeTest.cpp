#include <ctime>

#include "dbservice/maps/NodeElementParam.h"
#include "dbservice/maps/NodeInfo.h"
#include "tests/support/engines/ServiceTest.h"

namespace dbservice {
namespace {

class MapLife : public ServiceTest {};
class ResourceTreeLife : public ServiceTest {};

T_EMapInfo map(const char* guid, const char* name, int flag) {
    T_EMapInfo record;
    record.MapGuid = guid;
    record.UserGuid = "u";
    record.MapName = name;
    record.Customize_Image_Type = 0;
    record.EditFlag = flag;
    return record;
}

T_EMapItemInfo item(const char* guid, const char* map, const char* thing, int flag) {
    T_EMapItemInfo record;
    record.Guid = guid;
    record.MapInfoGuid = map;
    record.MapItemGuid = thing;
    record.EditFlag = flag;
    return record;
}

std::string maps(const char* user, const char* guid) {
    T_EMapInfo key = map(guid, "", 0);
    key.UserGuid = user;
    return joined(service().QueryEMapInfo(&key, 1, true), &T_EMapInfo::MapName,
                  &DBService::ReleaseEMapInfoList);
}

std::string items(const char* mapGuid) {
    const T_EMapInfo key = map(mapGuid, "", 0);
    return joined(service().QueryEMapItemInfo(&key, 1), &T_EMapItemInfo::Guid,
                  &DBService::ReleaseEMapItemInfoList);
}

TEST_P(MapLife, OneFlaggedArrayForAllThreeOperations) {
    const T_EMapInfo first[] = {map("a", "hall", kEMapNew), map("b", "yard", kEMapNew),
                                map("c", "roof", kEMapNew)};
    EXPECT_EQ(0, service().InsertEMapInfo(first, 3));
    EXPECT_EQ(-1062, service().InsertEMapInfo(first, 3));
    EXPECT_EQ("hall|yard|roof", maps("u", "ignored"));
    EXPECT_EQ("yard", maps("", "b"));
    EXPECT_EQ("", maps("", "unknown"));
    EXPECT_EQ("null", maps("", ""));  // the bare where is refused

    const T_EMapInfo edited[] = {map("a", "hall", kEMapRemoved), map("b", "court", kEMapChanged),
                                 map("d", "gate", kEMapNew), map("e", "left out", 9)};
    EXPECT_EQ(0, service().InsertEMapInfo(edited, 4));
    EXPECT_EQ(0, service().UpdateEMapInfo(edited, 4));
    EXPECT_EQ(1, service().DeleteEMapInfo(edited, 4));
    EXPECT_EQ("roof|gate|court", maps("u", ""));  // a replaced row goes to the end

    const T_EMapInfo key = map("b", "", 0);
    T_EMapInfoList* list = service().QueryEMapInfo(&key, 1, false);
    ASSERT_NE(nullptr, list);
    EXPECT_NEAR(static_cast<double>(std::time(nullptr)),
                static_cast<double>(list->items[0].LastTime), 10);
    service().ReleaseEMapInfoList(list);
}

TEST_P(MapLife, Items) {
    const T_EMapItemInfo first[] = {item("1", "a", "x", kEMapNew), item("2", "a", "y", kEMapNew),
                                    item("3", "b", "x", kEMapNew)};
    EXPECT_EQ(0, service().InsertEMapItemInfo(first, 3));
    EXPECT_EQ("1|2", items("a"));
    const T_EMapItemInfo edited[] = {item("2", "b", "y", kEMapChanged),
                                     item("", "", "x", kEMapRemoved)};
    EXPECT_EQ(-1, service().InsertEMapItemInfo(edited, 2));
    EXPECT_EQ(0, service().UpdateEMapItemInfo(edited, 2));
    EXPECT_EQ("2|3", items("b"));
    EXPECT_EQ(2, service().DeleteEMapItemInfo(edited, 2));  // wherever the thing is placed
    EXPECT_EQ("2", items("b"));
    EXPECT_EQ("", items("a"));
    const T_EMapInfo removed = map("b", "", kEMapRemoved);
    EXPECT_EQ(1, service().DeleteEMapItemInfo(&removed, 1));
    EXPECT_EQ("null", items(""));
}

TEST_P(ResourceTreeLife, ThroughItsDaos) {
    NodeInfo nodes(&access(), dbName());
    NodeElementParam elements(&access(), dbName());
    T_NodeParam folders[3];
    folders[0].NodeGuid = "root";
    folders[0].NodeName = "Station";
    folders[1].NodeGuid = "hall";
    folders[1].ParentNodeGuid = "root";
    folders[1].NodeName = "Hall";
    const auto names = [&](const T_NodeParam* keys, int count) {
        T_NodeParamList* list = nodes.QueryNodeInfoImp(keys, count);
        std::string result = list == nullptr ? "null" : "";
        for (int i = 0; list != nullptr && i < list->count; ++i)
            result += list->items[i].NodeName + "|";
        nodes.ReleaseNodeInfo(list);
        return result;
    };
    EXPECT_EQ("", names(nullptr, 0));
    EXPECT_EQ(0, nodes.InsertNodeInfoImp(folders, 2));
    EXPECT_EQ(-1062, nodes.InsertNodeInfoImp(folders, 2));
    EXPECT_EQ("Hall|Station|", names(nullptr, 0));
    EXPECT_EQ("Station|", names(folders, 1));
    EXPECT_EQ("null", names(folders + 1, 2));  // a key, then none: a dangling or
    EXPECT_EQ(-1064, nodes.DeleteNodeInfoImp(folders + 2, 1));
    folders[2].NodeGuid = "yard";
    folders[2].NodeName = "Yard";
    EXPECT_EQ(0, nodes.UpdateNodeInfoImp(folders + 2, 1));  // adds it
    EXPECT_EQ("Hall|Station|Yard|", names(nullptr, 0));

    T_NodeElementParam two[2];
    two[0].Guid = "e1";
    two[0].NodeGuid = "hall";
    two[0].DeviceType = 3;
    two[0].VenderType = 7;
    two[1].Guid = "e2";
    two[1].NodeGuid = "yard";
    EXPECT_EQ(0, elements.InsertNodeElementImp(two, 2));
    EXPECT_EQ(0, elements.UpdateNodeElementImp(two, 2));
    T_NodeElementList* list = elements.QueryNodeElementImp(folders + 1, 1);
    ASSERT_NE(nullptr, list);
    ASSERT_EQ(1, list->count);
    EXPECT_EQ("e1", list->items[0].Guid);
    EXPECT_EQ(7, list->items[0].VenderType);
    elements.ReleaseNodeElementList(list);
    EXPECT_EQ(1, elements.DeleteNodeElementImp(folders + 2, 1));
    EXPECT_EQ(1, elements.DeleteNodeElementImp(two, 2));
    EXPECT_EQ(2, nodes.DeleteNodeInfoImp(folders, 2));

    EXPECT_EQ(-1, service().InsertNodeInfo(folders, 2));  // the service has no such object
    EXPECT_EQ(nullptr, service().QueryNodeInfo(nullptr, 0));
}

INSTANTIATE_TEST_SUITE_P(Engines, MapLife, kEngines, engineName);
INSTANTIATE_TEST_SUITE_P(Engines, ResourceTreeLife, kEngines, engineName);

}  // namespace
}  // namespace dbservice
