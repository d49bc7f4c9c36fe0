#ifndef DBSERVICE_MAPS_MAPRECORDS_H
#define DBSERVICE_MAPS_MAPRECORDS_H

#include <cstdint>
#include <string>

namespace dbservice {

/// What the batch operations of maps and map items take of an array, by each record's `EditFlag`;
/// records with another value are left out.
enum EMapEditFlag {
    kEMapNew = 0,      ///< taken by the insert
    kEMapChanged = 1,  ///< taken by the update
    kEMapRemoved = 2,  ///< taken by the deletes
};

/// One electronic map. The members behind `Customize_Image_Size` have no default, and writes take
/// whatever lies there: write `T_EMapInfo map{};`, with the braces, for 0. A query does not set
/// `Customize_Image_Type` either where the column is NULL.
struct T_EMapInfo {
    std::string MapGuid;        ///< the key, made by the caller (`getGuid`)
    std::string UserGuid;       ///< the user whose it is
    std::string ServerGuid;     ///< not stored
    std::string ParentMapGuid;  ///< the map above it; empty for none
    int MapType = 0;            ///< a geographic view or an image: a number of the callers' own
    std::string MapName;        ///< what users see
    std::string Gis_CenterCityName;    ///< of a geographic view
    std::string Gis_Pos_X;             ///< of a geographic view: its centre, as text in any form
    std::string Gis_Pos_Y;             ///< likewise
    int Gis_Zoom = 0;                  ///< of a geographic view: a whole step of the callers' own
    std::string Customize_Image_Path;  ///< of an image
    int Customize_Image_Size = 0;      ///< of an image, in a unit of the callers' own
    int Customize_Image_Type;          ///< of an image: a number of the callers' own
    int EditFlag;                      ///< see `EMapEditFlag`; not stored, and not set by queries
    std::uint64_t LastTime;            ///< seconds since 1970 of the last write; set by the library
};

/// What `QueryEMapInfo` gives, to be given back to `ReleaseEMapInfoList`.
struct T_EMapInfoList {
    int count = 0;                ///< number of records
    T_EMapInfo* items = nullptr;  ///< the records; null when there are none
};

/// One item on a map. `EditFlag` has no default: write `T_EMapItemInfo item{};`, with the braces.
struct T_EMapItemInfo {
    std::string Guid;          ///< the key, made by the caller (`getGuid`)
    std::string MapInfoGuid;   ///< the map that holds it
    std::string MapItemGuid;   ///< the thing placed, as a camera
    int MapItemType = 0;       ///< a number of the callers' own; the library only stores it
    std::string DisplayName;   ///< what users see
    std::string Discription;   ///< free text
    std::string MapItemPos_X;  ///< where it is on the map, as text in any form
    std::string MapItemPos_Y;  ///< likewise
    int EditFlag;              ///< see `EMapEditFlag`; not stored, and not set by queries
};

/// What `QueryEMapItemInfo` gives, to be given back to `ReleaseEMapItemInfoList`.
struct T_EMapItemInfoList {
    int count = 0;                    ///< number of records
    T_EMapItemInfo* items = nullptr;  ///< the records; null when there are none
};

/// One folder of the resource tree.
struct T_NodeParam {
    int Id = 0;                  ///< not stored
    std::string NodeGuid;        ///< the key, made by the caller (`getGuid`)
    int Level = 0;               ///< not stored
    std::string ParentNodeGuid;  ///< the folder above it; empty for none
    std::string ServerGuid;      ///< the recording server it belongs to
    std::string NodeName;        ///< what users see, and lists are ordered by
    int NodeType = 0;            ///< a number of the callers' own; the library only stores it
};

/// What `NodeInfo::QueryNodeInfoImp` gives, to be given back to its `ReleaseNodeInfo`.
struct T_NodeParamList {
    int count = 0;                 ///< number of records
    T_NodeParam* items = nullptr;  ///< the records; null when there are none
};

/// One channel under a folder of the resource tree, for one user.
struct T_NodeElementParam {
    int Id = 0;               ///< not stored
    std::string Guid;         ///< the key, made by the caller (`getGuid`)
    std::string UserGuid;     ///< the user for whom it is
    std::string NodeGuid;     ///< the folder that holds it
    std::string DeviceGuid;   ///< the device that has the channel
    std::string ChannelGuid;  ///< the channel
    std::string DisplayName;  ///< what users see, and lists are ordered by

    /// @{
    /// What opening the channel takes: numbers of the callers' own; the library only stores them.
    int StreamType = 0;
    int VenderType = 0;
    int DeviceType = 0;
    /// @}
};

/// What `NodeElementParam::QueryNodeElementImp` gives, to be given back to its
/// `ReleaseNodeElementList`.
struct T_NodeElementList {
    int count = 0;                        ///< number of records
    T_NodeElementParam* items = nullptr;  ///< the records; null when there are none
};

}  // namespace dbservice

#endif
