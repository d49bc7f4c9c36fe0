#include "examples/load_site/Loading.h"

namespace demo {
namespace {

void addPanes(Table& table, DBService& service, const T_ViewInfo& view, std::size_t depth) {
    for (const T_ViewItem& pane :
         check(viewItems(service, EscapeText(view.ViewGuid)), "Looking up a view's panes")) {
        const auto source =
            check(viewItemSource(service, EscapeText(pane.Guid)), "Looking up a pane's source");
        const std::string name = fmt::format("{} {}", pane.ItemNumber, pane.DisplayName);
        if (!source) {
            table.add({indented(depth, name), ""});
            continue;
        }
        table.add({indented(depth, name),
                   source->Url.empty() ? cameraName(service, source->CameraGuid) : source->Url});
        for (const T_CarouselInfo& entry :
             check(carousels(service, EscapeText(source->Guid)), "Looking up a source's carousel"))
            table.add({indented(depth + 1, fmt::format("for {} s", entry.ShowTime)),
                       cameraName(service, entry.ChannelGuid)});
    }
}

void addViews(Table& table, DBService& service, const T_GroupInfo& group, std::size_t depth) {
    for (const T_ViewInfo& view :
         check(views(service, EscapeText(group.GroupGuid)), "Looking up a group's views")) {
        table.add({indented(depth, view.DisplayName), ""});
        addPanes(table, service, view, depth + 1);
    }
}

/// The view groups of a user, and those that are shared.
void show(DBService& service, const std::string& userGuid) {
    Table table({"View group, its groups, views, panes", "Shows"});
    for (const T_ViewGroupInfo& viewGroup :
         check(viewGroups(service, "", userGuid, true), "Listing a user's view groups")) {
        table.add({viewGroup.Name, viewGroup.ViewGroupType == 1 ? "(shared)" : ""});
        const auto inside =
            check(groups(service, EscapeText(viewGroup.Guid)), "Looking up a view group's groups");
        walk(inside, &T_GroupInfo::GroupGuid, &T_GroupInfo::ParentGroupGuid, "", 1,
             [&](const T_GroupInfo& group, std::size_t depth) {
                 table.add({indented(depth, group.DisplayName), ""});
                 addViews(table, service, group, depth + 1);
             });
    }
    table.print("A user's views");
}

}  // namespace

// Groups, views, panes, sources and carousel entries are deleted with their siblings, by what holds
// them: only a view group can go alone, and takes all below along.
void loadLayouts(DBService& service, const Site& site, Table& summary) {
    const auto removeViewGroup = [&service](const T_ViewGroupInfo& viewGroup) {
        return service.DeleteViewGroupInfo(viewGroup.Guid, "");
    };
    const auto changeViewGroup = [&](const T_ViewGroupInfo& viewGroup) {
        const int result = removeViewGroup(viewGroup);
        return result < 0 ? result : service.InsertViewGroupInfo(viewGroup);
    };
    load(summary, "View groups", site.viewGroups, all(service, &DBService::InsertViewGroupInfo),
         changeViewGroup, removeViewGroup);
    load(summary, "Groups of views", site.groups, all(service, &DBService::InsertGroupInfo),
         NoUpdate(), all(service, &DBService::DeleteGroupInfo));
    load(summary, "Views", site.views, all(service, &DBService::InsertViewInfo),
         each(service, &DBService::UpdateViewInfo), all(service, &DBService::DeleteViewInfo));
    load(summary, "Panes", site.panes, all(service, &DBService::InsertViewItem),
         each(service, &DBService::UpdateViewItem), all(service, &DBService::DeleteViewItem));
    load(summary, "Sources of panes", site.sources, all(service, &DBService::InsertViewItemInfo),
         each(service, &DBService::UpdateViewItemInfo),
         all(service, &DBService::DeleteViewItemInfo));
    load(summary, "Carousel entries", site.carousels, all(service, &DBService::InsertCarousel),
         NoUpdate(), all(service, &DBService::DeleteCarousel));
    if (!site.viewGroups.stored.empty()) show(service, site.viewGroups.stored.front().UserGuid);
}

}  // namespace demo
