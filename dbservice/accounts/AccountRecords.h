#ifndef DBSERVICE_ACCOUNTS_ACCOUNTRECORDS_H
#define DBSERVICE_ACCOUNTS_ACCOUNTRECORDS_H

#include <string>

namespace dbservice {

/// One recording server.
struct T_ServerInfo {
    std::string Guid;  ///< the key, made by the caller (`getGuid`)
    std::string DisplayName;
    std::string PrivateAddress;
    int PrivatePort = 0;
    int EnabledPublic = 0;  ///< 1: reachable at the public address too
    std::string PublicAddress;
    int PublicPort = 0;
    int MaxClient = 0;  ///< clients at a time; a query gives 500 where the column is NULL
};

/// Unlike most lists this one has its pointer first: callers are compiled against it.
struct T_ServerInfoList {
    T_ServerInfo* items = nullptr;
    int count = 0;
};

/// One user account. The passwords are stored and compared as they are given.
struct T_UserInfo {
    std::string Guid;  ///< the key, made by the caller (`getGuid`)
    std::string UserId;
    std::string AdsPath;  ///< of a directory account: its path
    std::string UserName;
    std::string Password;
    int Type = 0;                ///< the callers' own code
    std::string SId;             ///< of a directory account: its security identifier
    std::string SamacCountName;  ///< of a directory account: its name
};

struct T_UserInfoList {
    int count = 0;
    T_UserInfo* items = nullptr;
};

/// A kind of user. No operation uses it.
struct T_UserType {
    int Type = 0;
    std::string Name;
};

/// What one user may do anywhere; the numbers are the callers' own flags.
struct T_UserRights {
    std::string User_Guid;  ///< the user; empty in what a query without a match returns
    int SharedViews = 0;
    int PrivateViews = 0;
    int ViewLive = 0;
    int ViewBrowse = 0;
    int ViewSetup = 0;
    int ManagementAccess = 0;
};

/// What one user may do with one camera; the numbers are the callers' own flags.
struct T_UserCameras {
    std::string Guid;  ///< the key, made by the caller (`getGuid`)
    std::string User_Guid;
    std::string Camera_Guid;
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
};

struct T_UserCamerasList {
    int count = 0;
    T_UserCameras* items = nullptr;
};

}  // namespace dbservice

#endif
