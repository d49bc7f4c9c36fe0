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
    std::string MapGuid;  ///< the key, made by the caller (`getGuid`)
    std::string UserGuid;
    std::string ServerGuid;  ///< not stored
    std::string ParentMapGuid;
    int MapType = 0;
    std::string MapName;
    std::string Gis_CenterCityName;
    std::string Gis_Pos_X;  ///< coordinates are texts
    std::string Gis_Pos_Y;
    int Gis_Zoom = 0;
    std::string Customize_Image_Path;
    int Customize_Image_Size = 0;
    int Customize_Image_Type;
    int EditFlag;            ///< see `EMapEditFlag`; not stored, and not set by queries
    std::uint64_t LastTime;  ///< seconds since 1970 of the last write; set by the library
};

struct T_EMapInfoList {
    int count = 0;
    T_EMapInfo* items = nullptr;
};

/// One item on a map. `EditFlag` has no default: write `T_EMapItemInfo item{};`, with the braces.
struct T_EMapItemInfo {
    std::string Guid;         ///< the key, made by the caller (`getGuid`)
    std::string MapInfoGuid;  ///< the map that holds it
    std::string MapItemGuid;  ///< the thing placed, as a camera
    int MapItemType = 0;
    std::string DisplayName;
    std::string Discription;
    std::string MapItemPos_X;  ///< positions are texts
    std::string MapItemPos_Y;
    int EditFlag;  ///< see `EMapEditFlag`; not stored, and not set by queries
};

struct T_EMapItemInfoList {
    int count = 0;
    T_EMapItemInfo* items = nullptr;
};

/// One folder of the resource tree.
struct T_NodeParam {
    int Id = 0;            ///< not stored
    std::string NodeGuid;  ///< the key, made by the caller (`getGuid`)
    int Level = 0;         ///< not stored
    std::string ParentNodeGuid;
    std::string ServerGuid;
    std::string NodeName;
    int NodeType = 0;
};

struct T_NodeParamList {
    int count = 0;
    T_NodeParam* items = nullptr;
};

/// One channel under a folder of the resource tree, for one user.
struct T_NodeElementParam {
    int Id = 0;        ///< not stored
    std::string Guid;  ///< the key, made by the caller (`getGuid`)
    std::string UserGuid;
    std::string NodeGuid;  ///< the folder that holds it
    std::string DeviceGuid;
    std::string ChannelGuid;
    std::string DisplayName;
    int StreamType = 0;
    int VenderType = 0;
    int DeviceType = 0;
};

struct T_NodeElementList {
    int count = 0;
    T_NodeElementParam* items = nullptr;
};

}  // namespace dbservice

#endif
