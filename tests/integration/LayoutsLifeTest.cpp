#include "tests/support/engines/ServiceTest.h"

namespace dbservice {
namespace {

class LayoutLife : public ServiceTest {};

// What a level holds, under a key; all with an empty one.
std::string viewGroups(const char* guid, const char* user, bool includeType1) {
    return joined(service().QueryViewGroupInfo(guid, user, includeType1), &T_ViewGroupInfo::Guid,
                  &DBService::ReleaseViewGroupInfoList);
}
std::string groups(const char* viewGroup) {
    return joined(service().QueryGroupInfo(viewGroup), &T_GroupInfo::GroupGuid,
                  &DBService::ReleaseGroupInfoList);
}
std::string views(const char* group) {
    return joined(service().QueryViewInfo(group), &T_ViewInfo::ViewGuid,
                  &DBService::ReleaseViewInfoList);
}
std::string items(const char* view) {
    return joined(service().QueryViewItem(view), &T_ViewItem::Guid,
                  &DBService::ReleaseViewItemList);
}
std::string sourcesOf(const std::vector<T_ViewItem>& of) {
    return joined(service().QueryViewItemInfo(of.data(), static_cast<int>(of.size())),
                  &T_ViewItemInfo::DisplayName, &DBService::ReleaseViewItemInfoList);
}
std::string entries(const char* source) {
    return joined(service().QueryCarousel(source), &T_CarouselInfo::Guid,
                  &DBService::ReleaseCarouselList);
}

T_ViewGroupInfo viewGroup(const char* guid, const char* user, int type) {
    T_ViewGroupInfo record;
    record.Guid = guid;
    record.UserGuid = user;
    record.ViewGroupType = type;
    record.LastModifiedTime = 3000000000U;
    return record;
}
T_ViewInfo view(const char* guid, const char* group) {
    T_ViewInfo record;
    record.ViewGuid = guid;
    record.GroupGuid = group;
    record.ViewLayoutType = 4;
    return record;
}
T_ViewItem item(const char* guid, const char* view, int number) {
    T_ViewItem record;
    record.Guid = guid;
    record.ViewInfoGuid = view;
    record.ItemNumber = number;
    return record;
}
T_ViewItemInfo source(const char* guid, const char* item, const char* name) {
    T_ViewItemInfo record;
    record.Guid = guid;
    record.ViewItemGuid = item;
    record.DisplayName = name;
    return record;
}
T_CarouselInfo entry(const char* guid, const char* source, int index) {
    T_CarouselInfo record;
    record.Guid = guid;
    record.ItemInfoGuid = source;
    record.nIndex = index;
    return record;
}

/// Two view groups of one user and one that is shared; below the first, one of each level or more.
void build() {
    const T_ViewGroupInfo two[] = {viewGroup("vg2", "u", 2), viewGroup("shared", "v", 1)};
    EXPECT_EQ(0, service().InsertViewGroupInfo(viewGroup("vg1", "u", 0)));
    EXPECT_EQ(0, service().InsertViewGroupInfo(two, 2));
    const T_GroupInfo more[] = {{"g2", "vg1", "inner", "g1"}, {"g3", "vg2", "other", ""}};
    EXPECT_EQ(0, service().InsertGroupInfo({"g1", "vg1", "outer", ""}));
    EXPECT_EQ(0, service().InsertGroupInfo(more, 2));
    const T_ViewInfo moreViews[] = {view("w2", "g1"), view("w3", "g2")};
    EXPECT_EQ(0, service().InsertViewInfo1(view("w1", "g1")));
    EXPECT_EQ(0, service().InsertViewInfo(moreViews, 2));
    const T_ViewItem panes[] = {item("i1", "w1", 1), item("i2", "w1", 2), item("i3", "w2", 1)};
    EXPECT_EQ(-1064, service().InsertViewItem(panes[0]));  // by contract
    EXPECT_EQ(0, service().InsertViewItem(panes, 3));
    const T_ViewItemInfo sources[] = {source("s2", "i1", "yard"), source("s3", "i2", "hall")};
    EXPECT_EQ(0, service().InsertViewItemInfo(source("s1", "i1", "gate")));
    EXPECT_EQ(0, service().InsertViewItemInfo(sources, 2));
    const T_CarouselInfo steps[] = {entry("c2", "s1", 1), entry("c3", "s3", 9)};
    EXPECT_EQ(0, service().InsertCarousel(entry("c1", "s1", 2)));
    EXPECT_EQ(0, service().InsertCarousel(steps, 2));
}

TEST_P(LayoutLife, ATreeIsReadBackLevelByLevel) {
    EXPECT_EQ("", viewGroups("", "", false));  // empty, not null
    build();
    EXPECT_EQ("vg1|shared|vg2", viewGroups("", "", false));  // by type
    EXPECT_EQ("vg1|vg2", viewGroups("", "u", false));
    EXPECT_EQ("vg1|shared|vg2", viewGroups("", "u", true));
    EXPECT_EQ("shared", viewGroups("unknown", "u", true));
    EXPECT_EQ("", viewGroups("vg1", "v", false));
    T_ViewGroupInfoList* list = service().QueryViewGroupInfo("vg1", "", false);
    ASSERT_NE(nullptr, list);
    ASSERT_EQ(1, list->count);
    EXPECT_EQ(3000000000U, list->items[0].LastModifiedTime);
    service().ReleaseViewGroupInfoList(list);

    EXPECT_EQ("g1|g2", groups("vg1"));
    EXPECT_EQ("g1|g2|g3", groups(""));
    EXPECT_EQ("w1|w2", views("g1"));
    EXPECT_EQ("i1|i2", items("w1"));
    EXPECT_EQ("i1|i2|i3", items(""));
    const std::string both = sourcesOf({item("i1", "", 0)});
    EXPECT_TRUE(both == "gate|yard" || both == "yard|gate") << both;
    EXPECT_EQ("", sourcesOf({item("i3", "", 0)}));
    EXPECT_EQ("c2|c1", entries("s1"));  // by index
    const T_ViewItemInfo of[] = {source("s3", "", "")};
    EXPECT_EQ("c3", joined(service().QueryCarousel(of, 1), &T_CarouselInfo::Guid,
                           &DBService::ReleaseCarouselList));
    EXPECT_EQ(-1062, service().InsertGroupInfo({"g1", "vg1", "again", ""}));
}

TEST_P(LayoutLife, Updates) {
    build();
    for (const int refused : {service().UpdateViewGroupInfo(viewGroup("vg1", "u", 0)),
                              service().UpdateGroupInfo({"g1", "vg1", "new", ""}),
                              service().UpdateCarousel(entry("c1", "s1", 0))}) {
        EXPECT_EQ(-1064, refused);  // by contract
    }
    EXPECT_EQ(0, service().UpdateViewInfo(view("w3", "g1")));
    EXPECT_EQ("w1|w2|w3", views("g1"));
    EXPECT_EQ(0, service().UpdateViewItem(item("i3", "w1", 3)));
    EXPECT_EQ("i1|i2|i3", items("w1"));
    EXPECT_EQ(0, service().UpdateViewItemInfo(source("ignored", "i1", "all")));
    EXPECT_EQ("all|all", sourcesOf({item("i1", "", 0)}));
    T_ViewItemInfo* one = service().QueryViewItemInfo("i2");
    ASSERT_NE(nullptr, one);
    EXPECT_EQ("hall", one->DisplayName);
    service().ReleaseViewItemInfo(one);
    EXPECT_EQ(nullptr, service().QueryViewItemInfo("unknown"));
}

TEST_P(LayoutLife, ATreeIsTakenDownFromBelow) {
    build();
    const T_CarouselInfo bySource[] = {entry("", "s3", 0)};
    EXPECT_EQ(1, service().DeleteCarousel(bySource, 1));
    EXPECT_EQ(2, service().DeleteCarousel("s1"));
    const T_ViewItemInfo byItem[] = {source("", "i1", ""), source("", "i2", "")};
    EXPECT_EQ(0, service().DeleteViewItemInfo(""));
    EXPECT_EQ(3, service().DeleteViewItemInfo(byItem, 2));
    const T_ViewItem byView[] = {item("", "w1", 0)};
    EXPECT_EQ(2, service().DeleteViewItem(byView, 1));
    EXPECT_EQ(1, service().DeleteViewItem("w2"));
    EXPECT_EQ(2, service().DeleteViewInfo("g1"));
    const T_ViewInfo byGroup[] = {view("", "g2")};
    EXPECT_EQ(1, service().DeleteViewInfo(byGroup, 1));
    const T_GroupInfo byViewGroup[] = {{"", "vg1", "", ""}};
    EXPECT_EQ(2, service().DeleteGroupInfo(byViewGroup, 1));
    EXPECT_EQ(1, service().DeleteViewGroupInfo("vg1", "u"));
    EXPECT_EQ("g3", groups(""));
    EXPECT_EQ("shared|vg2", viewGroups("", "", false));
    // Without keys whole tables are emptied.
    EXPECT_EQ(1, service().DeleteGroupInfo(""));
    EXPECT_EQ(2, service().DeleteViewGroupInfo("", ""));
    EXPECT_EQ(0, service().DeleteViewInfo("") + service().DeleteViewItem("") +
                     service().DeleteCarousel(""));
    EXPECT_EQ("", groups("") + views("") + items("") + entries(""));
}

INSTANTIATE_TEST_SUITE_P(Engines, LayoutLife, kEngines, engineName);

}  // namespace
}  // namespace dbservice
