// What the headers of dbservice/convenience/ save a caller. Usage: convenience [EXISTING_DIRECTORY]
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "dbaccess/DataAccess.h"
#include "dbservice/Convenience.h"
#include "schema/Schema.h"
using namespace dbservice;

/// Records with texts as people write them, under keys of their own. Nothing is printed.
static T_Device storeDevice(DBService& service) {
    T_Device device;
    device.Guid = newGuid();
    device.DisplayName = "Porter's Yard recorder";
    device.IPAddress = "10.20.2.32";
    const T_Device stored = escaped(device);
    check(service.InsertDevice(&stored, 1), "Storing a device");

    std::vector<T_Channel> channels;
    for (int i = 1; i <= 3; ++i) {
        T_Channel channel;
        channel.Guid = newGuid();
        channel.Device_Guid = device.Guid;
        channel.DisplayName = "Camera " + std::to_string(i);
        channel.Num = i;
        channels.push_back(channel);
    }
    // Should the connection break under it, all three are looked for, and sent again if need be.
    check(insertSettled(service, &DBService::InsertChannel, channels.data(), 3,
                        std::chrono::seconds(30)));
    return device;
}

static void showDevices(DBService& service) {
    for (const T_Device& device : check(devices(service))) {
        const Channels inputs = channels(service, device.Guid);
        std::printf("%s has %zu channels\n", device.DisplayName.c_str(), inputs.size());
        for (const T_Channel& channel : inputs)
            std::printf("  %d %s\n", channel.Num, channel.DisplayName.c_str());
    }
}

/// The same failure as a value and as an exception.
static void showErrors(DBService& service, const T_Device& stored) {
    const T_Device again = escaped(stored);
    const Result result = service.InsertDevice(&again, 1);
    if (result.number() == ErrorNumber::kDuplicateKey && !isInDoubt(result))
        std::printf("As a value: %d\n", result.error().number);
    try {
        check(service.InsertDevice(&again, 1), "Storing it again");
    } catch (const DatabaseError& error) {
        std::printf("As an exception: %s\n", error.what());
    }
}

/// One alarm a minute, and a face at the same times, read back page by page.
static void showEvents(DBService& service, const T_Device& device) {
    Time begin;
    if (!parseTime("2026-03-02 08:00:00", begin)) return;
    std::vector<T_AlarmInfo> alarms;
    std::vector<T_FaceCapture> faces;
    for (int i = 0; i < 5; ++i) {
        const Time time = begin + std::chrono::minutes(i);
        T_AlarmInfo alarm;
        alarm.Guid = newGuid();
        alarm.DeviceGuid = device.Guid;
        alarm.BeginTime = alarm.EndTime = timeText(time);
        alarm.AlarmContent = "O'Hare's door, number " + std::to_string(i);
        alarms.push_back(escaped(alarm));
        T_FaceCapture face;
        face.filePath = "face-" + std::to_string(i) + ".jpg";
        face.minority = static_cast<unsigned int>(i);
        face.addTime = timeNumber(begin + std::chrono::minutes(i / 3));  // three at one time
        faces.push_back(escaped(face));
    }
    check(storeAlarms(service, alarms.data(), static_cast<int>(alarms.size())));
    check(service.InsertFaceCapture(faces.data(), static_cast<int>(faces.size())));

    const Time end = begin + std::chrono::minutes(4);  // the last alarm lies behind the range
    int number = 0;
    AlarmPages alarmPages(service, timeText(begin), timeText(end), "", 3);
    for (std::vector<T_AlarmInfo> page; check(alarmPages.next(page)) > 0;) {
        std::printf("Alarms, page %d\n", ++number);
        for (const T_AlarmInfo& alarm : page)
            std::printf("  %s %s\n", alarm.BeginTime.c_str(), alarm.AlarmContent.c_str());
    }
    number = 0;
    FaceCapturePages facePages(service, timeNumber(begin), timeNumber(end), 2);
    for (std::vector<T_FaceCapture> page; check(facePages.next(page)) > 0;) {
        std::printf("Faces, page %d\n", ++number);
        for (const T_FaceCapture& face : page)
            std::printf("  %s %s %u\n", timeText(timeOf(face.addTime)).c_str(),
                        face.filePath.c_str(), face.minority);
    }
}

static int fail(const std::string& why) {
    std::fprintf(stderr, "%s\n", why.c_str());
    DBService::Cleanup();
    return 1;
}

int main(int argc, char** argv) {
    DB_CONNECTION_PROPERTY settings;
    settings.host = std::string("sqlite:") + (argc > 1 ? argv[1] : ".");
    settings.dbName = "convenience";
    try {
        dbaccess::DataAccess access(settings.host, 0, "", "");
        if (!access.Initialize(1, 1, true, true)) check(Result::lastFailure(), "Opening");
        check(schema::Create(access, settings.dbName), "Creating the tables");
        if (DBService::Initialize(settings) != 1) check(Result::lastFailure(), "Connecting");
        DBService& service = *DBService::GetDBServiceObject();
        const T_Device device = storeDevice(service);
        showDevices(service);
        showErrors(service, device);
        showEvents(service, device);
        DBService::Cleanup();
        return 0;
    } catch (const DatabaseError& error) {
        return fail(error.what() + (": " + error.error().message));
    } catch (const std::exception& error) {
        return fail(error.what());
    }
}
