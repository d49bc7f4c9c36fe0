#ifndef DBSERVICE_LAYOUTS_LAYOUTRECORDS_H
#define DBSERVICE_LAYOUTS_LAYOUTRECORDS_H

#include <string>

namespace dbservice {

// The live-view layouts: a view group holds groups, these hold views, these view items, these
// sources, and these carousel entries. Nothing is deleted with what holds it.

/// The top of one user's layouts.
struct T_ViewGroupInfo {
    std::string Guid;  ///< the key, made by the caller (`getGuid`)
    std::string UserGuid;
    int ReadOnly = 0;
    std::string Name;
    int ViewGroupType = 0;              ///< 1: shared, see `QueryViewGroupInfo`
    unsigned int LastModifiedTime = 0;  ///< seconds since 1970
    std::string LastModifiedUser;
};

struct T_ViewGroupInfoList {
    int count = 0;
    T_ViewGroupInfo* items = nullptr;
};

/// A group of views.
struct T_GroupInfo {
    std::string GroupGuid;          ///< the key, made by the caller (`getGuid`)
    std::string ViewGroupInfoGuid;  ///< the view group that holds it
    std::string DisplayName;
    std::string ParentGroupGuid;  ///< the group that encloses it; empty for none
};

struct T_GroupInfoList {
    int count = 0;
    T_GroupInfo* items = nullptr;
};

/// One screen.
struct T_ViewInfo {
    std::string ViewGuid;   ///< the key, made by the caller (`getGuid`)
    std::string GroupGuid;  ///< the group that holds it
    std::string DisplayName;
    int ViewLayoutType = 0;
    int ViewScaleType = 0;
    int ShowTime = 0;
    int EnableCarousel = 0;
};

struct T_ViewInfoList {
    int count = 0;
    T_ViewInfo* items = nullptr;
};

/// One pane of a screen.
struct T_ViewItem {
    std::string Guid;          ///< the key, made by the caller (`getGuid`)
    std::string ViewInfoGuid;  ///< the view that holds it
    std::string DisplayName;
    int ItemNumber = 0;  ///< position in the view
    int ViewItemType = 0;
};

struct T_ViewItemList {
    int count = 0;
    T_ViewItem* items = nullptr;
};

/// What a pane shows: a camera or an address.
struct T_ViewItemInfo {
    std::string Guid;          ///< the key, made by the caller (`getGuid`)
    std::string ViewItemGuid;  ///< the pane; what updates, deletes and queries go by
    std::string CameraGuid;
    std::string Url;
    std::string DisplayName;
    int VideoStreamType = 0;
};

struct T_ViewItemInfoList {
    int count = 0;
    T_ViewItemInfo* items = nullptr;
};

/// One step of a source's rotation.
struct T_CarouselInfo {
    std::string Guid;          ///< the key, made by the caller (`getGuid`)
    std::string ItemInfoGuid;  ///< the source that holds it
    std::string ChannelGuid;
    int ShowTime = 0;
    int nIndex = 0;  ///< position in the rotation
    std::string DisplayName;
    int VideoStreamType = 0;
};

struct T_CarouselInfoList {
    int count = 0;
    T_CarouselInfo* items = nullptr;
};

}  // namespace dbservice

#endif
