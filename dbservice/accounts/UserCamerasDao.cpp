#include "dbservice/accounts/UserCamerasDao.h"

#include "dbservice/statement/Condition.h"
#include "dbservice/statement/NextId.h"
#include "dbservice/statement/ReadRows.h"
#include "dbservice/statement/Records.h"
#include "dbservice/statement/Result.h"
#include "dbservice/statement/Rows.h"
#include "dbservice/statement/Text.h"

namespace dbservice {

using namespace statement;

namespace {

constexpr char kColumns[] =
    "Guid,User_Guid,Camera_Guid,Access,AviExport,JpegExport,DatabaseExport,VideoLive,VideoBrowse,"
    "Ptz,ManagePresets,Outputs,Presets,Events,SmartSearch,Sequences,StartRecording,AudioLive,"
    "AudioBrowse,SpeakerLive,SpeakerSpeak,SubscriptionAlarm";

/// A row up to its last permission, still open.
void appendRow(std::string& rows, const T_UserCameras& camera) {
    append(rows,
           "('{}', '{}', '{}', {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}, "
           "{}, {}",
           camera.Guid, camera.User_Guid, camera.Camera_Guid, camera.Access, camera.AviExport,
           camera.JpegExport, camera.DatabaseExport, camera.VideoLive, camera.VideoBrowse,
           camera.Ptz, camera.ManagePresets, camera.Outputs, camera.Presets, camera.Events,
           camera.SmartSearch, camera.Sequences, camera.StartRecording, camera.AudioLive,
           camera.AudioBrowse, camera.SpeakerLive, camera.SpeakerSpeak, camera.SubscriptionAlarm);
}

std::string keyFilter(const std::string& guid, const std::string& userGuid,
                      const std::string& cameraGuid) {
    std::string condition;
    andGivenKey(condition, " Guid='{}'", guid);
    andGivenKey(condition, " User_Guid='{}'", userGuid);
    andGivenKey(condition, " Camera_Guid='{}'", cameraGuid);
    return condition;
}

/// The key filters of all records. A record without keys behind another one leaves the " or"
/// dangling, deliberately: the database refuses the statement. Without any key every row is meant.
std::string anyKeyFilter(const Records<T_UserCameras>& records) {
    std::string condition;
    for (const T_UserCameras& camera : records) {
        separate(condition, " or");
        condition += keyFilter(camera.Guid, camera.User_Guid, camera.Camera_Guid);
    }
    return condition;
}

}  // namespace

UserCamerasDao::UserCamerasDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int UserCamerasDao::InsertUserCamerasImp(const T_UserCameras* cameras, int count) {
    const Records<T_UserCameras> records(cameras, count);
    if (records.empty()) return noRecords();
    IdSequence ids(*dataAccess_, dbName_, "usercameras");
    std::string text = compose("insert into usercameras({},Id) values{};", kColumns,
                               rowsOf(records, appendRow, ", {})", ids));
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

int UserCamerasDao::UpdateUserCamerasImp(const T_UserCameras* cameras, int count) {
    const Records<T_UserCameras> records(cameras, count);
    if (records.empty()) return noRecords();
    // Without the Id: replaced rows get a new one from the schema.
    std::string text = compose("replace into usercameras({}) values{};", kColumns,
                               rowsOf(records, appendRow, ")"));
    return zeroOrError(dataAccess_->Execute(dbName_, std::move(text)));
}

int UserCamerasDao::UpdateUserCamerasImp(const T_UserCameras& camera) {
    std::string text = compose(
        "update usercameras set User_Guid = '{}',Camera_Guid = '{}',Access = '{}',AviExport = '{}',"
        "JpegExport = '{}',DatabaseExport = '{}',VideoLive = '{}',VideoBrowse = '{}',Ptz = '{}',"
        "ManagePresets = '{}',Outputs = '{}',Presets = '{}',Events = '{}',SmartSearch = '{}',"
        "Sequences = '{}',StartRecording = '{}',AudioLive = '{}',AudioBrowse = '{}',"
        "SpeakerLive = '{}',SpeakerSpeak = '{}',SubscriptionAlarm = '{}' where Guid = '{}'",
        camera.User_Guid, camera.Camera_Guid, camera.Access, camera.AviExport, camera.JpegExport,
        camera.DatabaseExport, camera.VideoLive, camera.VideoBrowse, camera.Ptz,
        camera.ManagePresets, camera.Outputs, camera.Presets, camera.Events, camera.SmartSearch,
        camera.Sequences, camera.StartRecording, camera.AudioLive, camera.AudioBrowse,
        camera.SpeakerLive, camera.SpeakerSpeak, camera.SubscriptionAlarm, camera.Guid);
    return zeroOrError(dataAccess_->Update(dbName_, std::move(text)));
}

int UserCamerasDao::DeleteUserCamerasImp(const T_UserCameras* cameras, int count) {
    const Records<T_UserCameras> records(cameras, count);
    if (records.empty()) return noRecords();
    return dataAccess_->Execute(dbName_,
                                compose("delete from usercameras{}", where(anyKeyFilter(records))));
}

int UserCamerasDao::DeleteUserCamerasImp(std::string guid, std::string userGuid,
                                         std::string cameraGuid) {
    const std::string condition = keyFilter(guid, userGuid, cameraGuid);
    return dataAccess_->Execute(dbName_, compose("delete from usercameras{}", where(condition)));
}

T_UserCamerasList* UserCamerasDao::QueryUserCamerasImp(const T_UserCameras* cameras, int count) {
    const std::string condition = anyKeyFilter({cameras, count});
    std::string text =
        compose("select {} from usercameras{} order by Id", kColumns, where(condition));
    return listOrNull<T_UserCamerasList>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

T_UserCamerasList* UserCamerasDao::QueryUserCamerasImp(std::string guid, std::string userGuid,
                                                       std::string cameraGuid) {
    const std::string condition = keyFilter(guid, userGuid, cameraGuid);
    std::string text =
        compose("select {} from usercameras{} order by Id", kColumns, where(condition));
    return listOrNull<T_UserCamerasList>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

int UserCamerasDao::SetValue(dbaccess::ResultSet* row, T_UserCameras* camera) {
    const dbaccess::Field fields[] = {
        {"Guid", &camera->Guid},
        {"User_Guid", &camera->User_Guid},
        {"Camera_Guid", &camera->Camera_Guid},
        {"Access", &camera->Access},
        {"AviExport", &camera->AviExport},
        {"JpegExport", &camera->JpegExport},
        {"DatabaseExport", &camera->DatabaseExport},
        {"VideoLive", &camera->VideoLive},
        {"VideoBrowse", &camera->VideoBrowse},
        {"Ptz", &camera->Ptz},
        {"ManagePresets", &camera->ManagePresets},
        {"Outputs", &camera->Outputs},
        {"Presets", &camera->Presets},
        {"Events", &camera->Events},
        {"SmartSearch", &camera->SmartSearch},
        {"Sequences", &camera->Sequences},
        {"StartRecording", &camera->StartRecording},
        {"AudioLive", &camera->AudioLive},
        {"AudioBrowse", &camera->AudioBrowse},
        {"SpeakerLive", &camera->SpeakerLive},
        {"SpeakerSpeak", &camera->SpeakerSpeak},
        {"SubscriptionAlarm", &camera->SubscriptionAlarm},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void UserCamerasDao::ReleaseUserCameras(T_UserCamerasList* list) {
    release(list);
}

}  // namespace dbservice
