#ifndef DBSERVICE_ACCOUNTS_ACCOUNTRECORDS_H
#define DBSERVICE_ACCOUNTS_ACCOUNTRECORDS_H

#include <string>

namespace dbservice {

/// One recording server. Addresses and ports are for the callers: the library connects to none.
struct T_ServerInfo {
    std::string Guid;            ///< the key, made by the caller (`getGuid`)
    std::string DisplayName;     ///< what users see
    std::string PrivateAddress;  ///< where it is within the site
    int PrivatePort = 0;         ///< its port there
    int EnabledPublic = 0;       ///< 1: reachable at the public address too; 0: not
    std::string PublicAddress;   ///< where it is from outside; empty for nowhere
    int PublicPort = 0;          ///< its port there
    int MaxClient = 0;           ///< clients at a time; a query gives 500 where the column is NULL
};

/// What `QueryServerInfo` gives, to be given back to `ReleaseServerInfo`.
/// Unlike most lists it has its pointer first: callers are compiled against it.
struct T_ServerInfoList {
    T_ServerInfo* items = nullptr;  ///< the records; null when there are none
    int count = 0;                  ///< number of records
};

/// One user account. The passwords are stored and compared as they are given.
struct T_UserInfo {
    std::string Guid;            ///< the key, made by the caller (`getGuid`)
    std::string UserId;          ///< the callers' own
    std::string AdsPath;         ///< of a directory account: its path; empty for others
    std::string UserName;        ///< what `Login` asks for; nothing keeps it unique
    std::string Password;        ///< nothing hashes it: do so before, where it must not be readable
    int Type = 0;                ///< a number of the callers' own; the library only stores it
    std::string SId;             ///< of a directory account: its security identifier
    std::string SamacCountName;  ///< of a directory account: its name
};

/// What `QueryUser` gives, to be given back to `ReleaseUser`.
struct T_UserInfoList {
    int count = 0;                ///< number of records
    T_UserInfo* items = nullptr;  ///< the records; null when there are none
};

/// A kind of user. No operation uses it.
struct T_UserType {
    int Type = 0;      ///< as in `T_UserInfo`
    std::string Name;  ///< what users see
};

/// What one user may do anywhere. `QueryUserRights` gives one, to be given back to
/// `ReleaseUserRights`.
struct T_UserRights {
    std::string User_Guid;  ///< the user; empty in what a query without a match returns

    /// @{
    /// Whether the user may use shared and private views, see live and recorded video, set up
    /// views, and manage: numbers of the callers' own, as 0 and 1; the library only stores them.
    int SharedViews = 0;
    int PrivateViews = 0;
    int ViewLive = 0;
    int ViewBrowse = 0;
    int ViewSetup = 0;
    int ManagementAccess = 0;
    /// @}
};

/// What one user may do with one camera.
struct T_UserCameras {
    std::string Guid;         ///< the key, made by the caller (`getGuid`)
    std::string User_Guid;    ///< the user
    std::string Camera_Guid;  ///< the camera; nothing keeps the pair unique

    /// @{
    /// What is allowed with it: numbers of the callers' own, as 0 and 1; the library only stores
    /// them.
    int Access = 0;
    int AviExport = 0;
    int JpegExport = 0;
    int DatabaseExport = 0;
    int VideoLive = 0;
    int VideoBrowse = 0;
    int Ptz = 0;
    int ManagePresets = 0;
    int Outputs = 0;
    int Presets = 0;
    int Events = 0;
    int SmartSearch = 0;
    int Sequences = 0;
    int StartRecording = 0;
    int AudioLive = 0;
    int AudioBrowse = 0;
    int SpeakerLive = 0;
    int SpeakerSpeak = 0;
    int SubscriptionAlarm = 0;
    /// @}
};

/// What `QueryUserCameras` gives, to be given back to `ReleaseUserCameras`.
struct T_UserCamerasList {
    int count = 0;                   ///< number of records
    T_UserCameras* items = nullptr;  ///< the records; null when there are none
};

}  // namespace dbservice

#endif
