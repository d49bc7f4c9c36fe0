#include "tests/unit/Operations.h"

namespace dbservice {
namespace {

using Carousel = ScriptedService;

TEST_F(Operations, ViewGroups) {
    const auto release = &DBService::ReleaseViewGroupInfoList;
    const auto groups = recordsOf(db().QueryViewGroupInfo("", "", false), release);
    std::vector<T_ViewGroupInfo> late = {groups[0]};
    late[0].LastModifiedTime = 3000000000U;
    const auto query = [&](const char* guid, const char* user, bool includeType1) {
        return [=] { return Answer(db().QueryViewGroupInfo(guid, user, includeType1), release); };
    };
    const auto remove = [](const char* guid, const char* user) {
        return [=] { return db().DeleteViewGroupInfo(guid, user); };
    };
    single("InsertViewGroupInfo", groups[0], &DBService::InsertViewGroupInfo);
    single("InsertViewGroupInfo (late)", late[0], &DBService::InsertViewGroupInfo);
    batch("InsertViewGroupInfo (batch)", kZero, groups, &DBService::InsertViewGroupInfo);
    batch("InsertViewGroupInfo (batch, late)", kZero, late, &DBService::InsertViewGroupInfo);
    single("UpdateViewGroupInfo", groups[0], &DBService::UpdateViewGroupInfo);
    single("UpdateViewGroupInfo (late)", late[0], &DBService::UpdateViewGroupInfo);
    check("QueryViewGroupInfo", kListOrEmpty, query("Guid", "UserGuid", false));
    check("QueryViewGroupInfo (type 1 too)", kListOrEmpty, query("Guid", "UserGuid", true));
    check("QueryViewGroupInfo (user, type 1 too)", kListOrEmpty, query("", "UserGuid", true));
    check("QueryViewGroupInfo (no keys, type 1 too)", kListOrEmpty, query("", "", true));
    check("DeleteViewGroupInfo", kCount, remove("Guid", "UserGuid"));
    check("DeleteViewGroupInfo (user)", kCount, remove("", "UserGuid"));
    check("DeleteViewGroupInfo (no keys)", kCount, remove("", ""));
}

TEST_F(Operations, Groups) {
    const auto release = &DBService::ReleaseGroupInfoList;
    const auto groups = recordsOf(db().QueryGroupInfo(""), release);
    single("InsertGroupInfo", groups[0], &DBService::InsertGroupInfo);
    batch("InsertGroupInfo (batch)", kZero, groups, &DBService::InsertGroupInfo);
    single("UpdateGroupInfo", groups[0], &DBService::UpdateGroupInfo);
    keyed("QueryGroupInfo", kListOrEmpty, "ViewGroupInfoGuid", &DBService::QueryGroupInfo, release);
    batch("DeleteGroupInfo (batch)", kCount, groups, &DBService::DeleteGroupInfo);
    keyed("DeleteGroupInfo", kCount, "ViewGroupInfoGuid", &DBService::DeleteGroupInfo);
}

TEST_F(Operations, Views) {
    const auto release = &DBService::ReleaseViewInfoList;
    const auto views = recordsOf(db().QueryViewInfo(""), release);
    single("InsertViewInfo1", views[0], &DBService::InsertViewInfo1);
    batch("InsertViewInfo", kZero, views, &DBService::InsertViewInfo);
    single("UpdateViewInfo", views[0], &DBService::UpdateViewInfo);
    keyed("QueryViewInfo", kListOrEmpty, "GroupGuid", &DBService::QueryViewInfo, release);
    batch("DeleteViewInfo (batch)", kCount, views, &DBService::DeleteViewInfo);
    keyed("DeleteViewInfo", kCount, "GroupGuid", &DBService::DeleteViewInfo);
}

TEST_F(Operations, ViewItems) {
    const auto release = &DBService::ReleaseViewItemList;
    const auto items = recordsOf(db().QueryViewItem(""), release);
    single("InsertViewItem", items[0], &DBService::InsertViewItem);
    batch("InsertViewItem (batch)", kZero, items, &DBService::InsertViewItem);
    single("UpdateViewItem", items[0], &DBService::UpdateViewItem);
    keyed("QueryViewItem", kListOrEmpty, "ViewInfoGuid", &DBService::QueryViewItem, release);
    batch("DeleteViewItem (batch)", kCount, items, &DBService::DeleteViewItem);
    keyed("DeleteViewItem", kCount, "ViewInfoGuid", &DBService::DeleteViewItem);
}

TEST_F(Operations, ViewItemSources) {
    const auto release = &DBService::ReleaseViewItemInfo;
    const auto releaseList = &DBService::ReleaseViewItemInfoList;
    const auto items = recordsOf(db().QueryViewItem(""), &DBService::ReleaseViewItemList);
    const auto sources = recordsOf(db().QueryViewItemInfo(items.data(), 2), releaseList);
    single("InsertViewItemInfo", sources[0], &DBService::InsertViewItemInfo);
    batch("InsertViewItemInfo (batch)", kZero, sources, &DBService::InsertViewItemInfo);
    single("UpdateViewItemInfo", sources[0], &DBService::UpdateViewItemInfo);
    keyed("QueryViewItemInfo", kRecordOrNull, "ViewItemGuid", &DBService::QueryViewItemInfo,
          release);
    batch("QueryViewItemInfo (items)", kListOrEmpty, items,
          [&](const T_ViewItem* array, int count) {
              return Answer(db().QueryViewItemInfo(array, count), releaseList);
          });
    batch("DeleteViewItemInfo (batch)", kCount, sources, &DBService::DeleteViewItemInfo);
    keyed("DeleteViewItemInfo", kCount, "ViewItemGuid", &DBService::DeleteViewItemInfo);
}

TEST_F(Operations, Carousels) {
    const auto release = &DBService::ReleaseCarouselList;
    const auto entries = recordsOf(db().QueryCarousel(""), release);
    const auto items = recordsOf(db().QueryViewItem(""), &DBService::ReleaseViewItemList);
    const auto sources =
        recordsOf(db().QueryViewItemInfo(items.data(), 2), &DBService::ReleaseViewItemInfoList);
    single("InsertCarousel", entries[0], &DBService::InsertCarousel);
    batch("InsertCarousel (batch)", kZero, entries, &DBService::InsertCarousel);
    single("UpdateCarousel", entries[0], &DBService::UpdateCarousel);
    keyed("QueryCarousel", kListOrEmpty, "ItemInfoGuid", &DBService::QueryCarousel, release);
    batch("QueryCarousel (sources)", kListOrEmpty, sources,
          [&](const T_ViewItemInfo* array, int count) {
              return Answer(db().QueryCarousel(array, count), release);
          });
    batch("DeleteCarousel (batch)", kCount, entries, &DBService::DeleteCarousel);
    keyed("DeleteCarousel", kCount, "ItemInfoGuid", &DBService::DeleteCarousel);
}

TEST_F(Carousel, TheInsertOfOneTracesItsStatement) {
    const T_CarouselInfo entry;
    testing::internal::CaptureStdout();
    db().InsertCarousel(entry);
    db().InsertCarousel(&entry, 1);
    EXPECT_EQ(
        "CarouselDao::InsertCarouselImp------------insert into carousel(Guid,ItemInfoGuid,ChannelGuid,ShowTime,nIndex,DisplayName,VideoStreamType) values('', '', '', 0,0,'',0);\n",
        testing::internal::GetCapturedStdout());
}

}  // namespace
}  // namespace dbservice
