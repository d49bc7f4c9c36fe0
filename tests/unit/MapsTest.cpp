#include "dbaccess/DataAccess.h"
#include "dbservice/maps/NodeElementParam.h"
#include "dbservice/maps/NodeInfo.h"
#include "tests/unit/Operations.h"

namespace dbservice {
namespace {

using ResourceTree = ScriptedService;

const Answers kNoneTaken = {{"-1", "-1", "-1", "-1", "-1"}, {}, "-1"};
const Answers kNoMapTaken = {{"0", "0", "0", "0", "0"}, {}, "-1"};

template <class Record>
std::vector<Record> flagged(std::vector<Record> records, int flag) {
    for (Record& record : records)
        record.EditFlag = flag;
    return records;
}

/// Both records with every flag: as new ones and as removed ones in their order, as changed ones
/// the other way round. The one with a flag of no meaning is left out everywhere.
template <class Record>
std::vector<Record> withAllFlags(const std::vector<Record>& two) {
    constexpr int kOther = 7;
    std::vector<Record> records = {two[0], two[1], two[0], two[0], two[1], two[0], two[1]};
    const int flags[] = {kEMapNew, kEMapChanged, kEMapRemoved, kOther,
                         kEMapNew, kEMapChanged, kEMapRemoved};
    for (std::size_t i = 0; i < records.size(); ++i)
        records[i].EditFlag = flags[i];
    return records;
}

std::vector<T_EMapInfo> readMaps() {
    const T_EMapInfo key{};
    return recordsOf(db().QueryEMapInfo(&key, 1, true), &DBService::ReleaseEMapInfoList);
}

TEST_F(Operations, Maps) {
    const auto maps = readMaps();
    EXPECT_EQ(13U, maps[0].LastTime);  // read, but never written
    auto keys = maps;
    keys[1].UserGuid = "";
    auto emptySecond = maps;
    emptySecond[0].UserGuid = emptySecond[1].UserGuid = emptySecond[1].MapGuid = "";
    const std::vector<T_EMapInfo> empty(2, T_EMapInfo{});
    const auto query = [](bool flag) {
        return [flag](const T_EMapInfo* array, int count) {
            return Answer(db().QueryEMapInfo(array, count, flag), &DBService::ReleaseEMapInfoList);
        };
    };
    const auto all = withAllFlags(maps);
    const auto insert = &DBService::InsertEMapInfo;
    const auto update = &DBService::UpdateEMapInfo;
    const auto remove = &DBService::DeleteEMapInfo;
    batch("InsertEMapInfo", kZero, all, insert);
    batch("InsertEMapInfo (none is new)", kNoMapTaken, flagged(maps, kEMapChanged), insert);
    batch("UpdateEMapInfo", kZero, all, update);
    batch("UpdateEMapInfo (none is changed)", kNoMapTaken, flagged(maps, kEMapRemoved), update);
    batch("QueryEMapInfo", kListOrEmpty, keys, query(true));
    batch("QueryEMapInfo (the flag has no effect)", kListOrEmpty, keys, query(false));
    batch("QueryEMapInfo (empty second)", kListOrEmpty, emptySecond, query(true));
    batch("QueryEMapInfo (no keys)", kListOrEmpty, empty, query(true));
    batch("DeleteEMapInfo", kCount, all, remove);
    batch("DeleteEMapInfo (empty second)", kCount, flagged(emptySecond, kEMapRemoved), remove);
    batch("DeleteEMapInfo (no keys)", kNoneTaken, flagged(empty, kEMapRemoved), remove);
    batch("DeleteEMapInfo (none is removed)", kNoneTaken, flagged(maps, kEMapNew), remove);
}

TEST_F(Operations, MapItems) {
    const auto maps = readMaps();
    auto emptySecondMap = maps;
    emptySecondMap[1].MapGuid = "";
    const std::vector<T_EMapInfo> emptyMaps(2, T_EMapInfo{});
    const auto query = [](const T_EMapInfo* array, int count) {
        return Answer(db().QueryEMapItemInfo(array, count), &DBService::ReleaseEMapItemInfoList);
    };
    const auto items =
        recordsOf(db().QueryEMapItemInfo(maps.data(), 2), &DBService::ReleaseEMapItemInfoList);
    auto noGuid = items;
    noGuid[0].Guid = "";
    auto emptySecond = items;
    emptySecond[1].Guid = emptySecond[1].MapItemGuid = "";
    const std::vector<T_EMapItemInfo> empty(2, T_EMapItemInfo{});
    const auto all = withAllFlags(items);
    const auto insert = &DBService::InsertEMapItemInfo;
    const auto update = &DBService::UpdateEMapItemInfo;
    const auto remove = [this](const char* name, const Answers& answers, const auto& records) {
        batch(name, answers, records,
              [](auto* array, int count) { return db().DeleteEMapItemInfo(array, count); });
    };
    batch("InsertEMapItemInfo", kZero, all, insert);
    batch("InsertEMapItemInfo (none is new)", kNoneTaken, flagged(items, kEMapChanged), insert);
    batch("UpdateEMapItemInfo", kZero, all, update);
    batch("UpdateEMapItemInfo (none is changed)", kNoneTaken, flagged(items, kEMapNew), update);
    batch("QueryEMapItemInfo", kListOrEmpty, maps, query);
    batch("QueryEMapItemInfo (empty second)", kListOrEmpty, emptySecondMap, query);
    batch("QueryEMapItemInfo (no keys)", kListOrEmpty, emptyMaps, query);
    remove("DeleteEMapItemInfo (maps)", kCount, withAllFlags(maps));
    remove("DeleteEMapItemInfo (maps, no keys)", kNoneTaken, flagged(emptyMaps, kEMapRemoved));
    remove("DeleteEMapItemInfo (maps, none is removed)", kNoneTaken, flagged(maps, kEMapNew));
    remove("DeleteEMapItemInfo", kCount, all);
    remove("DeleteEMapItemInfo (no Guid)", kCount, flagged(noGuid, kEMapRemoved));
    remove("DeleteEMapItemInfo (empty second)", kCount, flagged(emptySecond, kEMapRemoved));
    remove("DeleteEMapItemInfo (no keys)", kNoneTaken, flagged(empty, kEMapRemoved));
    remove("DeleteEMapItemInfo (none is removed)", kNoneTaken, flagged(items, kEMapNew));
}

TEST_F(Operations, Nodes) {
    throughService_ = false;
    dbaccess::DataAccess access("", 0, "", "");
    NodeInfo dao(&access, "vms");
    const auto release = &NodeInfo::ReleaseNodeInfo;
    const auto nodes = recordsOf(dao.QueryNodeInfoImp(nullptr, 0), release, dao);
    const std::vector<T_NodeParam> emptySecond = {nodes[0], {}};
    const std::vector<T_NodeParam> emptyFirst = {{}, nodes[0]};
    const auto query = [&](const T_NodeParam* array, int count) {
        return [&dao, release, array, count] {
            return Answer(dao.QueryNodeInfoImp(array, count), release, dao);
        };
    };
    const auto remove = [&](auto... array) { return dao.DeleteNodeInfoImp(array...); };
    batch("InsertNodeInfo", kZero, nodes,
          [&](auto... array) { return dao.InsertNodeInfoImp(array...); });
    batch("UpdateNodeInfo", kZero, nodes,
          [&](auto... array) { return dao.UpdateNodeInfoImp(array...); });
    check("QueryNodeInfo", kListOrEmpty, query(nodes.data(), 2));
    check("QueryNodeInfo (empty first)", kListOrEmpty, query(emptyFirst.data(), 2));
    check("QueryNodeInfo (empty second)", kListOrEmpty, query(emptySecond.data(), 2));
    check("QueryNodeInfo (count of 0)", kListOrEmpty, query(nullptr, 0));
    batch("DeleteNodeInfo", kCount, nodes, remove);
    batch("DeleteNodeInfo (empty second)", kCount, emptySecond, remove);
    batch("DeleteNodeInfo (no keys)", kCount, std::vector<T_NodeParam>(2), remove);
}

TEST_F(Operations, NodeElements) {
    throughService_ = false;
    dbaccess::DataAccess access("", 0, "", "");
    NodeElementParam dao(&access, "vms");
    const auto release = &NodeElementParam::ReleaseNodeElementList;
    std::vector<T_NodeParam> nodes(2);
    nodes[0].NodeGuid = "NodeGuid";
    nodes[1].NodeGuid = "NodeGuid2";
    const auto elements = recordsOf(dao.QueryNodeElementImp(nodes.data(), 2), release, dao);
    const std::vector<T_NodeElementParam> emptySecond = {elements[0], {}};
    const auto query = [&](const auto& records, int count) {
        return [&dao, release, &records, count] {
            return Answer(dao.QueryNodeElementImp(records.data(), count), release, dao);
        };
    };
    const auto remove = [&](auto... array) { return dao.DeleteNodeElementImp(array...); };
    batch("InsertNodeElement", kZero, elements,
          [&](auto... array) { return dao.InsertNodeElementImp(array...); });
    batch("UpdateNodeElement", kZero, elements,
          [&](auto... array) { return dao.UpdateNodeElementImp(array...); });
    check("QueryNodeElement (nodes)", kListOrEmpty, query(nodes, 2));
    check("QueryNodeElement (nodes, count of 0)", kListOrEmpty, query(nodes, 0));
    check("QueryNodeElement", kListOrEmpty, query(elements, 2));
    check("QueryNodeElement (empty second)", kListOrEmpty, query(emptySecond, 2));
    check("QueryNodeElement (count of 0)", kListOrEmpty, query(elements, 0));
    batch("DeleteNodeElement (nodes)", kCount, nodes, remove);
    batch("DeleteNodeElement (nodes, no keys)", kCount, std::vector<T_NodeParam>(2), remove);
    batch("DeleteNodeElement", kCount, elements, remove);
    batch("DeleteNodeElement (empty second)", kCount, emptySecond, remove);
}

TEST_F(ResourceTree, TheServiceAnswersAsIfNotConnected) {
    const T_NodeParam node;
    const T_NodeElementParam element;
    const std::vector<int> results = {
        db().InsertNodeInfo(&node, 1),       db().UpdateNodeInfo(&node, 1),
        db().DeleteNodeInfo(&node, 1),       db().InsertNodeElement(&element, 1),
        db().UpdateNodeElement(&element, 1), db().DeleteNodeElement(&node, 1),
        db().DeleteNodeElement(&element, 1)};
    EXPECT_THAT(results, testing::Each(-1));
    EXPECT_EQ(nullptr, db().QueryNodeInfo(&node, 1));
    EXPECT_EQ(nullptr, db().QueryNodeElement(&node, 1));
    EXPECT_EQ(nullptr, db().QueryNodeElement(&element, 1));
    db().ReleaseNodeInfo(nullptr);
    db().ReleaseNodeElementList(nullptr);
    EXPECT_TRUE(scripted::script().calls.empty());
}

}  // namespace
}  // namespace dbservice
