#include "tests/unit/StatementCases.h"

namespace dbservice {
namespace {

using scripted::script;

using ViewGroups = ScriptedService;
using Groups = ScriptedService;
using Views = ScriptedService;
using ViewItems = ScriptedService;
using ViewItemSources = ScriptedService;
using Carousels = ScriptedService;

/// No rows give an empty list, a failed query null.
template <class List>
void checkEmptyList(const std::function<List*()>& query, void (DBService::*release)(List*)) {
    script() = {};
    List* list = query();
    ASSERT_NE(nullptr, list);
    EXPECT_EQ(0, list->count);
    EXPECT_EQ(nullptr, list->items);
    (DBService::GetDBServiceObject()->*release)(list);
    script().queries.push_back(std::nullopt);
    EXPECT_EQ(nullptr, query());
}

T_ViewGroupInfo viewGroup(const char* guid) {
    T_ViewGroupInfo viewGroup;
    viewGroup.Guid = guid;
    viewGroup.UserGuid = "u";
    viewGroup.ReadOnly = 1;
    viewGroup.Name = "n";
    viewGroup.ViewGroupType = -2;
    viewGroup.LastModifiedTime = 3000000000U;
    viewGroup.LastModifiedUser = "m";
    return viewGroup;
}

TEST_F(ViewGroups, Statements) {
    const std::string columns =
        "Guid,UserGuid,ReadOnly,Name,ViewGroupType,LastModifiedTime,LastModifiedUser";
    const std::string row = "', 'u','1','n','-2', '3000000000', 'm')";
    const std::string select = "Query select " + columns + " from viewgroupinfo";
    const T_ViewGroupInfo two[] = {viewGroup("a"), viewGroup("b")};
    const auto query = [](const char* guid, const char* user, bool includeType1) {
        return [=] {
            service().ReleaseViewGroupInfoList(
                service().QueryViewGroupInfo(guid, user, includeType1));
        };
    };
    check({
        {"insert",
         [&] { service().InsertViewGroupInfo(two[0]); },
         {"Insert insert into viewgroupinfo(" + columns + ") values('a" + row + ";"}},
        {"batch insert",
         [&] { service().InsertViewGroupInfo(two, 2); },
         {"Insert insert into viewgroupinfo(" + columns + ") values('a" + row + ",('b" + row +
          ";"}},
        {"update, with a comma missing and the time signed",
         [&] { service().UpdateViewGroupInfo(two[0]); },
         {"Update update viewgroupinfo set UserGuid = 'u',ReadOnly = '1'Name = 'n',ViewGroupType = '-2',LastModifiedTime = '-1294967296',LastModifiedUser = 'm' where Guid = 'a'"}},
        {"delete",
         [] { service().DeleteViewGroupInfo("g", "u"); },
         {"Execute delete from viewgroupinfo where Guid='g' and UserGuid='u'"}},
        {"delete by nothing",
         [] { service().DeleteViewGroupInfo("", ""); },
         {"Execute delete from viewgroupinfo"}},
        {"query by user and type 1",
         query("", "u1", true),
         {select + " where UserGuid='u1' or ViewGroupType=1 order by ViewGroupType"}},
        {"query by both and type 1",
         query("g", "u", true),
         {select + " where Guid='g' and UserGuid='u' or ViewGroupType=1 order by ViewGroupType"}},
        {"query by guid",
         query("g", "", false),
         {select + " where Guid='g' order by ViewGroupType"}},
        {"query all, type 1 among them", query("", "", true), {select + " order by ViewGroupType"}},
        {"no records",
         [&] {
             EXPECT_EQ(-1, service().InsertViewGroupInfo(nullptr, 1));
             EXPECT_EQ(-1, service().InsertViewGroupInfo(two, 0));
         },
         {}},
    });
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertViewGroupInfo(two[0]); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertViewGroupInfo(two, 2); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().UpdateViewGroupInfo(two[0]); }));
    EXPECT_EQ(passedThrough(), resultsOf([] { return service().DeleteViewGroupInfo("g", ""); }));
    checkEmptyList<T_ViewGroupInfoList>([] { return service().QueryViewGroupInfo("", "", false); },
                                        &DBService::ReleaseViewGroupInfoList);
}

TEST_F(ViewGroups, Reads) {
    checkReads(
        {"string Guid", "string UserGuid", "int ReadOnly", "string Name", "int ViewGroupType",
         "uint LastModifiedTime", "string LastModifiedUser"},
        [] {
            T_ViewGroupInfoList* list = service().QueryViewGroupInfo("", "", false);
            service().InsertViewGroupInfo(list->items[0]);
            service().ReleaseViewGroupInfoList(list);
        },
        "Insert vms: insert into viewgroupinfo(Guid,UserGuid,ReadOnly,Name,ViewGroupType,LastModifiedTime,LastModifiedUser) values('Guid', 'UserGuid','3','Name','5', '6', 'LastModifiedUser');");
}

TEST_F(Groups, Statements) {
    const std::string columns = "GroupGuid,ViewGroupInfoGuid,DisplayName,ParentGroupGuid,Id";
    const std::string probe = "Query select max(Id) as Id from groupinfo";
    const T_GroupInfo two[] = {{"a", "v", "n", ""}, {"b", "v", "o", "a"}};
    check({
        {"insert, the Id bare",
         [&] { service().InsertGroupInfo(two[0]); },
         {probe, "Insert insert into groupinfo(" + columns + ") values('a', 'v', 'n', '', 8);"}},
        {"batch insert, the Id in quotes",
         [&] { service().InsertGroupInfo(two, 2); },
         {probe, "Insert insert into groupinfo(" + columns +
                     ") values('a', 'v', 'n', '', '8'),('b', 'v', 'o', 'a', '9');"}},
        {"update, with a comma missing",
         [&] { service().UpdateGroupInfo(two[1]); },
         {"Update update groupinfo set ViewGroupInfoGuid = 'v',DisplayName = 'o'ParentGroupGuid = 'a' where GroupGuid = 'b'"}},
        {"delete",
         [] { service().DeleteGroupInfo("v"); },
         {"Execute delete from groupinfo where ViewGroupInfoGuid ='v'"}},
        {"delete by nothing",
         [] { service().DeleteGroupInfo(""); },
         {"Execute delete from groupinfo"}},
        {"batch delete",
         [&] { service().DeleteGroupInfo(two, 2); },
         {"Execute delete from groupinfo where ViewGroupInfoGuid='v' or ViewGroupInfoGuid='v'"}},
        {"query",
         [] { service().ReleaseGroupInfoList(service().QueryGroupInfo("v")); },
         {"Query select " + columns + " from groupinfo where ViewGroupInfoGuid='v' order by Id"}},
        {"query all",
         [] { service().ReleaseGroupInfoList(service().QueryGroupInfo("")); },
         {"Query select " + columns + " from groupinfo order by Id"}},
        {"no records",
         [&] {
             EXPECT_EQ(-1, service().InsertGroupInfo(nullptr, 1));
             EXPECT_EQ(-1, service().DeleteGroupInfo(two, 0));
         },
         {}},
    });
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertGroupInfo(two[0]); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertGroupInfo(two, 2); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().UpdateGroupInfo(two[0]); }));
    EXPECT_EQ(passedThrough(), resultsOf([] { return service().DeleteGroupInfo("v"); }));
    EXPECT_EQ(passedThrough(), resultsOf([&] { return service().DeleteGroupInfo(two, 2); }));
    checkEmptyList<T_GroupInfoList>([] { return service().QueryGroupInfo(""); },
                                    &DBService::ReleaseGroupInfoList);
    checkReads(
        {"string GroupGuid", "string ViewGroupInfoGuid", "string DisplayName",
         "string ParentGroupGuid"},
        [] {
            T_GroupInfoList* list = service().QueryGroupInfo("");
            service().UpdateGroupInfo(list->items[0]);
            service().ReleaseGroupInfoList(list);
        },
        "Update vms: update groupinfo set ViewGroupInfoGuid = 'ViewGroupInfoGuid',DisplayName = 'DisplayName'ParentGroupGuid = 'ParentGroupGuid' where GroupGuid = 'GroupGuid'");
}

TEST_F(Views, Statements) {
    const std::string columns =
        "ViewGuid,GroupGuid,DisplayName,ViewLayoutType,ViewScaleType,ShowTime,EnableCarousel,Id";
    const std::string probe = "Query select max(Id) as Id from viewinfo";
    T_ViewInfo view;
    view.ViewGuid = "a";
    view.GroupGuid = "g";
    view.DisplayName = "n";
    view.ViewLayoutType = 4;
    view.ViewScaleType = view.ShowTime = 1;
    const T_ViewInfo two[] = {view, view};
    check({
        {"insert, the numbers close together",
         [&] { service().InsertViewInfo1(view); },
         {probe, "Insert insert into viewinfo(" + columns + ") values('a', 'g', 'n', 4,1,1,0,8);"}},
        {"batch insert, the numbers spaced",
         [&] { service().InsertViewInfo(two, 2); },
         {probe, "Insert insert into viewinfo(" + columns +
                     ") values('a', 'g', 'n', 4, 1, 1, 0,8),('a', 'g', 'n', 4, 1, 1, 0,9);"}},
        {"delete",
         [] { service().DeleteViewInfo("g"); },
         {"Execute delete from viewinfo where GroupGuid ='g'"}},
        {"delete by nothing",
         [] { service().DeleteViewInfo(""); },
         {"Execute delete from viewinfo"}},
        {"batch delete",
         [&] { service().DeleteViewInfo(two, 2); },
         {"Execute delete from viewinfo where GroupGuid='g' or GroupGuid='g'"}},
        {"query",
         [] { service().ReleaseViewInfoList(service().QueryViewInfo("g")); },
         {"Query select " + columns + " from viewinfo where GroupGuid='g' order by Id"}},
        {"query all",
         [] { service().ReleaseViewInfoList(service().QueryViewInfo("")); },
         {"Query select " + columns + " from viewinfo order by Id"}},
        {"no records",
         [&] {
             EXPECT_EQ(-1, service().InsertViewInfo(nullptr, 1));
             EXPECT_EQ(-1, service().DeleteViewInfo(&view, 0));
         },
         {}},
    });
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertViewInfo1(view); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertViewInfo(&view, 1); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().UpdateViewInfo(view); }));
    EXPECT_EQ(passedThrough(), resultsOf([] { return service().DeleteViewInfo("g"); }));
    EXPECT_EQ(passedThrough(), resultsOf([&] { return service().DeleteViewInfo(&view, 1); }));
    checkEmptyList<T_ViewInfoList>([] { return service().QueryViewInfo(""); },
                                   &DBService::ReleaseViewInfoList);
    checkReads(
        {"string ViewGuid", "string GroupGuid", "string DisplayName", "int ViewLayoutType",
         "int ViewScaleType", "int ShowTime", "int EnableCarousel"},
        [] {
            T_ViewInfoList* list = service().QueryViewInfo("");
            service().UpdateViewInfo(list->items[0]);
            service().ReleaseViewInfoList(list);
        },
        "Update vms: update viewinfo set GroupGuid = 'GroupGuid',DisplayName = 'DisplayName',ViewLayoutType = '4',ViewScaleType = '5',ShowTime = '6',EnableCarousel = '7' where ViewGuid = 'ViewGuid'");
}

T_ViewItem viewItem(const char* guid) {
    T_ViewItem item;
    item.Guid = guid;
    item.ViewInfoGuid = "v";
    item.DisplayName = "n";
    item.ItemNumber = 3;
    item.ViewItemType = 1;
    return item;
}

TEST_F(ViewItems, Statements) {
    const std::string columns = "Guid,ViewInfoGuid,DisplayName,ItemNumber,ViewItemType,Id";
    const std::string probe = "Query select max(Id) as Id from viewitem";
    const T_ViewItem two[] = {viewItem("a"), viewItem("b")};
    check({
        {"insert, with a stray quote",
         [&] { service().InsertViewItem(two[0]); },
         {probe,
          "Insert insert into viewitem(" + columns + ") values('a', 'v', 'n', '3', 1', 8);"}},
        {"batch insert",
         [&] { service().InsertViewItem(two, 2); },
         {probe, "Insert insert into viewitem(" + columns +
                     ") values('a', 'v', 'n', 3, 1, 8),('b', 'v', 'n', 3, 1, 9);"}},
        {"delete",
         [] { service().DeleteViewItem("v"); },
         {"Execute delete from viewitem where ViewInfoGuid ='v'"}},
        {"delete by nothing",
         [] { service().DeleteViewItem(""); },
         {"Execute delete from viewitem"}},
        {"batch delete",
         [&] { service().DeleteViewItem(two, 2); },
         {"Execute delete from viewitem where ViewInfoGuid='v' or ViewInfoGuid='v'"}},
        {"query",
         [] { service().ReleaseViewItemList(service().QueryViewItem("v")); },
         {"Query select " + columns + " from viewitem where ViewInfoGuid='v' order by Id"}},
        {"query all",
         [] { service().ReleaseViewItemList(service().QueryViewItem("")); },
         {"Query select " + columns + " from viewitem order by Id"}},
        {"no records",
         [&] {
             EXPECT_EQ(-1, service().InsertViewItem(nullptr, 1));
             EXPECT_EQ(-1, service().DeleteViewItem(two, 0));
         },
         {}},
    });
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertViewItem(two[0]); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertViewItem(two, 2); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().UpdateViewItem(two[0]); }));
    EXPECT_EQ(passedThrough(), resultsOf([] { return service().DeleteViewItem("v"); }));
    EXPECT_EQ(passedThrough(), resultsOf([&] { return service().DeleteViewItem(two, 2); }));
    checkEmptyList<T_ViewItemList>([] { return service().QueryViewItem(""); },
                                   &DBService::ReleaseViewItemList);
    checkReads(
        {"string Guid", "string ViewInfoGuid", "string DisplayName", "int ItemNumber",
         "int ViewItemType"},
        [] {
            T_ViewItemList* list = service().QueryViewItem("");
            service().UpdateViewItem(list->items[0]);
            service().ReleaseViewItemList(list);
        },
        "Update vms: update viewitem set ViewInfoGuid = 'ViewInfoGuid',DisplayName = 'DisplayName',ItemNumber = '4',ViewItemType = '5' where Guid = 'Guid'");
}

TEST_F(ViewItemSources, Statements) {
    const std::string columns = "Guid,ViewItemGuid,CameraGuid,Url,DisplayName,VideoStreamType";
    const std::string select = "Query select " + columns + " from viewiteminfo";
    T_ViewItemInfo source;
    source.Guid = "a";
    source.ViewItemGuid = "i";
    source.CameraGuid = "c";
    source.Url = "rtsp://x";
    source.DisplayName = "n";
    source.VideoStreamType = 2;
    const T_ViewItemInfo two[] = {source, source};
    const T_ViewItem items[] = {viewItem("x"), viewItem("y")};
    check({
        {"insert, without a blank before the number",
         [&] { service().InsertViewItemInfo(source); },
         {"Insert insert into viewiteminfo(" + columns +
          ") values('a', 'i', 'c', 'rtsp://x', 'n',2);"}},
        {"batch insert, with one",
         [&] { service().InsertViewItemInfo(two, 2); },
         {"Insert insert into viewiteminfo(" + columns +
          ") values('a', 'i', 'c', 'rtsp://x', 'n', 2),('a', 'i', 'c', 'rtsp://x', 'n', 2);"}},
        {"delete, its condition also with an empty key",
         [] { service().DeleteViewItemInfo(""); },
         {"Execute delete from viewiteminfo where ViewItemGuid =''"}},
        {"batch delete",
         [&] { service().DeleteViewItemInfo(two, 2); },
         {"Execute delete from viewiteminfo where ViewItemGuid='i' or ViewItemGuid='i'"}},
        {"query one",
         [] { service().ReleaseViewItemInfo(service().QueryViewItemInfo("i")); },
         {select + " where ViewItemGuid='i'"}},
        {"query any",
         [] { service().ReleaseViewItemInfo(service().QueryViewItemInfo("")); },
         {select}},
        {"query by items",
         [&] { service().ReleaseViewItemInfoList(service().QueryViewItemInfo(items, 2)); },
         {select + " where ViewItemGuid='x' or ViewItemGuid='y'"}},
        {"no records",
         [&] {
             EXPECT_EQ(-1, service().InsertViewItemInfo(nullptr, 1));
             EXPECT_EQ(-1, service().DeleteViewItemInfo(two, 0));
             EXPECT_EQ(nullptr, service().QueryViewItemInfo(nullptr, 2));
             EXPECT_EQ(nullptr, service().QueryViewItemInfo(items, 0));
         },
         {}},
    });
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertViewItemInfo(source); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertViewItemInfo(two, 2); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().UpdateViewItemInfo(source); }));
    EXPECT_EQ(passedThrough(), resultsOf([] { return service().DeleteViewItemInfo("i"); }));
    EXPECT_EQ(passedThrough(), resultsOf([&] { return service().DeleteViewItemInfo(two, 2); }));
    checkEmptyList<T_ViewItemInfoList>([&] { return service().QueryViewItemInfo(items, 2); },
                                       &DBService::ReleaseViewItemInfoList);
    script() = {};
    EXPECT_EQ(nullptr, service().QueryViewItemInfo("i"));  // no rows
    script().queries.push_back(std::nullopt);
    EXPECT_EQ(nullptr, service().QueryViewItemInfo("i"));
    service().ReleaseViewItemInfo(nullptr);
    checkReads(
        {"string Guid", "string ViewItemGuid", "string CameraGuid", "string Url",
         "string DisplayName", "int VideoStreamType"},
        [] {
            T_ViewItemInfo* found = service().QueryViewItemInfo("i");
            service().UpdateViewItemInfo(*found);
            service().ReleaseViewItemInfo(found);
        },
        "Update vms: update viewiteminfo set ViewItemGuid = 'ViewItemGuid',CameraGuid = 'CameraGuid',Url = 'Url',DisplayName = 'DisplayName',VideoStreamType = '6' where ViewItemGuid = 'ViewItemGuid'");
}

TEST_F(Carousels, Statements) {
    const std::string columns =
        "Guid,ItemInfoGuid,ChannelGuid,ShowTime,nIndex,DisplayName,VideoStreamType";
    const std::string select = "Query select " + columns + " from carousel";
    T_CarouselInfo entry;
    entry.Guid = "a";
    entry.ItemInfoGuid = "s";
    entry.ChannelGuid = "c";
    entry.ShowTime = 10;
    entry.nIndex = 2;
    entry.DisplayName = "gate";
    entry.VideoStreamType = 1;
    const T_CarouselInfo two[] = {entry, entry};
    T_ViewItemInfo sources[2];
    sources[0].Guid = "x";
    sources[1].Guid = "y";
    const std::string insert = "insert into carousel(" + columns + ") values";
    const std::string row = "('a', 's', 'c', 10,2,'gate',1)";
    check({
        {"insert",
         [&] {
             testing::internal::CaptureStdout();
             service().InsertCarousel(entry);
             EXPECT_EQ("CarouselDao::InsertCarouselImp------------" + insert + row + ";\n",
                       testing::internal::GetCapturedStdout());
         },
         {"Insert " + insert + row + ";"}},
        {"batch insert, without a trace",
         [&] {
             testing::internal::CaptureStdout();
             service().InsertCarousel(two, 2);
             EXPECT_EQ("", testing::internal::GetCapturedStdout());
         },
         {"Insert " + insert + row + "," + row + ";"}},
        {"delete",
         [] { service().DeleteCarousel("s"); },
         {"Execute delete from carousel where ItemInfoGuid ='s'"}},
        {"delete by nothing",
         [] { service().DeleteCarousel(""); },
         {"Execute delete from carousel"}},
        {"batch delete",
         [&] { service().DeleteCarousel(two, 2); },
         {"Execute delete from carousel where ItemInfoGuid='s' or ItemInfoGuid='s'"}},
        {"query",
         [] { service().ReleaseCarouselList(service().QueryCarousel("s")); },
         {select + " where ItemInfoGuid='s' order by nIndex"}},
        {"query all",
         [] { service().ReleaseCarouselList(service().QueryCarousel("")); },
         {select + " order by nIndex"}},
        {"query by sources",
         [&] { service().ReleaseCarouselList(service().QueryCarousel(sources, 2)); },
         {select + " where ItemInfoGuid='x' or ItemInfoGuid='y'"}},
        {"no records",
         [&] {
             EXPECT_EQ(-1, service().InsertCarousel(nullptr, 1));
             EXPECT_EQ(-1, service().DeleteCarousel(two, 0));
             EXPECT_EQ(nullptr, service().QueryCarousel(nullptr, 1));
             EXPECT_EQ(nullptr, service().QueryCarousel(sources, 0));
         },
         {}},
    });
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertCarousel(entry); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().InsertCarousel(two, 2); }));
    EXPECT_EQ(folded(), resultsOf([&] { return service().UpdateCarousel(entry); }));
    EXPECT_EQ(passedThrough(), resultsOf([] { return service().DeleteCarousel("s"); }));
    EXPECT_EQ(passedThrough(), resultsOf([&] { return service().DeleteCarousel(two, 2); }));
    checkEmptyList<T_CarouselInfoList>([&] { return service().QueryCarousel(sources, 2); },
                                       &DBService::ReleaseCarouselList);
    checkReads(
        {"string Guid", "string ItemInfoGuid", "string ChannelGuid", "int ShowTime", "int nIndex",
         "string DisplayName", "int VideoStreamType"},
        [] {
            T_CarouselInfoList* list = service().QueryCarousel("");
            service().UpdateCarousel(list->items[0]);
            service().ReleaseCarouselList(list);
        },
        "Update vms: update carousel set ItemInfoGuid = 'ItemInfoGuid',ChannelGuid = 'ChannelGuid',ShowTime = '4',nIndex = '5'DisplayName = 'DisplayName',VideoStreamType = '7' where Guid = 'Guid'");
}

}  // namespace
}  // namespace dbservice
