#ifndef DBSERVICE_LAYOUTS_LAYOUTRECORDS_H
#define DBSERVICE_LAYOUTS_LAYOUTRECORDS_H

#include <string>

namespace dbservice {

// The live-view layouts: a view group holds groups, these hold views, these view items, these
// sources, and these carousel entries. Nothing is deleted with what holds it. Numbers of types,
// scales and streams are the callers' own: the library only stores them.

/// The top of one user's layouts.
struct T_ViewGroupInfo {
    std::string Guid;                   ///< the key, made by the caller (`getGuid`)
    std::string UserGuid;               ///< the user whose it is
    int ReadOnly = 0;                   ///< a flag of the callers' own
    std::string Name;                   ///< what users see
    int ViewGroupType = 0;              ///< 1: shared, see `QueryViewGroupInfo`; else callers' own
    unsigned int LastModifiedTime = 0;  ///< seconds since 1970, set by the callers
    std::string LastModifiedUser;       ///< set by the callers
};

/// What `QueryViewGroupInfo` gives, to be given back to `ReleaseViewGroupInfoList`.
struct T_ViewGroupInfoList {
    int count = 0;                     ///< number of records
    T_ViewGroupInfo* items = nullptr;  ///< the records; null when there are none
};

/// A group of views.
struct T_GroupInfo {
    std::string GroupGuid;          ///< the key, made by the caller (`getGuid`)
    std::string ViewGroupInfoGuid;  ///< the view group that holds it
    std::string DisplayName;        ///< what users see
    std::string ParentGroupGuid;    ///< the group that encloses it; empty for none
};

/// What `QueryGroupInfo` gives, to be given back to `ReleaseGroupInfoList`.
struct T_GroupInfoList {
    int count = 0;                 ///< number of records
    T_GroupInfo* items = nullptr;  ///< the records; null when there are none
};

/// One screen.
struct T_ViewInfo {
    std::string ViewGuid;     ///< the key, made by the caller (`getGuid`)
    std::string GroupGuid;    ///< the group that holds it
    std::string DisplayName;  ///< what users see

    /// @{
    /// How its panes are laid out and scaled, and flags: numbers of the callers' own; the library
    /// only stores them.
    int ViewLayoutType = 0;
    int ViewScaleType = 0;
    int ShowTime = 0;
    int EnableCarousel = 0;
    /// @}
};

/// What `QueryViewInfo` gives, to be given back to `ReleaseViewInfoList`.
struct T_ViewInfoList {
    int count = 0;                ///< number of records
    T_ViewInfo* items = nullptr;  ///< the records; null when there are none
};

/// One pane of a screen.
struct T_ViewItem {
    std::string Guid;          ///< the key, made by the caller (`getGuid`)
    std::string ViewInfoGuid;  ///< the view that holds it
    std::string DisplayName;   ///< what users see
    int ItemNumber = 0;        ///< position in the view
    int ViewItemType = 0;      ///< a number of the callers' own
};

/// What `QueryViewItem` gives, to be given back to `ReleaseViewItemList`.
struct T_ViewItemList {
    int count = 0;                ///< number of records
    T_ViewItem* items = nullptr;  ///< the records; null when there are none
};

/// What a pane shows: a camera or an address.
struct T_ViewItemInfo {
    std::string Guid;          ///< the key, made by the caller (`getGuid`)
    std::string ViewItemGuid;  ///< the pane; what updates, deletes and queries go by
    std::string CameraGuid;    ///< the camera; empty for an address
    std::string Url;           ///< the address; empty for a camera
    std::string DisplayName;   ///< what users see
    int VideoStreamType = 0;   ///< which stream of the camera: a number of the callers' own
};

/// What `QueryViewItemInfo` gives, to be given back to `ReleaseViewItemInfoList`.
struct T_ViewItemInfoList {
    int count = 0;                    ///< number of records
    T_ViewItemInfo* items = nullptr;  ///< the records; null when there are none
};

/// One step of a source's rotation.
struct T_CarouselInfo {
    std::string Guid;          ///< the key, made by the caller (`getGuid`)
    std::string ItemInfoGuid;  ///< the source that holds it
    std::string ChannelGuid;   ///< the channel shown
    int ShowTime = 0;          ///< for how long, in a unit of the callers' own
    int nIndex = 0;            ///< position in the rotation; lists are ordered by it
    std::string DisplayName;   ///< what users see
    int VideoStreamType = 0;   ///< which stream of the channel: a number of the callers' own
};

/// What `QueryCarousel` gives, to be given back to `ReleaseCarouselList`.
struct T_CarouselInfoList {
    int count = 0;                    ///< number of records
    T_CarouselInfo* items = nullptr;  ///< the records; null when there are none
};

}  // namespace dbservice

#endif
