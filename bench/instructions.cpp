// Fixed works through the public interface on an embedded database, for `bench/instructions` to
// count their instructions. Usage: instructions EMPTY_DIRECTORY
#include <valgrind/callgrind.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "dbaccess/DataAccess.h"
#include "dbservice/DBService.h"
#include "schema/Schema.h"

namespace {

using namespace dbservice;

constexpr int kRows = 1000;
constexpr unsigned int kFirstTime = 1'700'000'000;

void require(bool success) {
    if (success) return;
    std::fprintf(stderr, "%s\n", dbaccess::LastError().message.c_str());
    std::exit(1);
}

/// Only devices of the same number have the same key.
T_Device deviceOf(int number) {
    const std::string digits = std::to_string(100'000'000 + number);
    T_Device device;
    device.Guid = "8f14e45f-ceea-467f-ab2e-1c0" + digits;
    device.ServerGuid = "45c48cce-2e2d-4fbd-9a6c-5d3f8a7b1e90";
    device.Mac = "00:1b:44:11:3a:b7";
    device.DriverKey = "onvif-s";
    device.DisplayName = "Platform 3, camera " + digits;
    device.IPAddress = "10.20.3.117";
    device.HttpPort = device.DefaultHttpPort = 80;
    device.FtpPort = device.DefaultFtpPort = 21;
    device.UserName = "operator";
    device.Password = "a password of some length";
    device.Com1Driver = "pelco-d";
    device.ChannelCount = 4;
    return device;
}

/// The next ones that are not stored yet.
std::vector<T_Device> newDevices(int count) {
    static int stored = 0;
    std::vector<T_Device> devices;
    while (count-- > 0)
        devices.push_back(deviceOf(stored++));
    return devices;
}

/// The next ones, one each second.
std::vector<T_FaceCapture> newFaces(int count) {
    static unsigned int time = kFirstTime;
    std::vector<T_FaceCapture> faces;
    while (count-- > 0) {
        T_FaceCapture face;
        face.filePath = "/srv/captures/2026-03-02/hall-0004.jpg";
        face.age = 52;
        face.sex = 1;
        face.addTime = time++;
        faces.push_back(face);
    }
    return faces;
}

/// The call alone is counted, not what makes its arguments.
template <class Call>
auto counted(Call call) {
    CALLGRIND_TOGGLE_COLLECT;
    auto result = call();
    CALLGRIND_TOGGLE_COLLECT;
    return result;
}

void byKey(DBService& service) {
    const std::string key = deviceOf(kRows / 2).Guid;
    T_DeviceList* list = counted([&] { return service.QueryDevice(key); });
    require(list != nullptr && list->count == 1);
    service.ReleaseDevice(list);
}

void list(DBService& service) {
    T_DeviceList* list = counted([&] { return service.QueryDevice(""); });
    require(list != nullptr && list->count == kRows);
    service.ReleaseDevice(list);
}

void range(DBService& service) {
    T_FaceCaptureList* list =
        counted([&] { return service.QueryFaceCapture(kFirstTime - 1, kFirstTime + kRows); });
    require(list != nullptr && list->count == kRows);
    service.ReleaseFaceCaptureLsit(list);
}

template <int count>
void insert(DBService& service) {
    const std::vector<T_Device> devices = newDevices(count);
    require(counted([&] { return service.InsertDevice(devices.data(), count); }) == 0);
}

template <int count>
void store(DBService& service) {
    const std::vector<T_FaceCapture> faces = newFaces(count);
    require(counted([&] { return service.InsertFaceCapture(faces.data(), count); }) == 0);
}

struct Work {
    const char* name;
    int calls;
    void (*call)(DBService& service);
};

// Those that read stand before those that add to what they read. Short ones are called often: what
// the first calls alone take must not count.
constexpr Work kWorks[] = {
    {"by_key", 1000, byKey},          {"list_1000", 3, list},           {"range_1000", 3, range},
    {"batch_1000", 2, insert<kRows>}, {"probe_insert", 500, insert<1>}, {"store", 500, store<1>},
};

}  // namespace

int main(int argc, char** argv) {
    DB_CONNECTION_PROPERTY settings;
    settings.host = std::string("sqlite:") + (argc > 1 ? argv[1] : ".");
    settings.dbName = "instructions";
    dbaccess::DataAccess access(settings.host, 0, "", "");
    require(access.Initialize(1, 1, true, true));
    require(schema::Create(access, settings.dbName) == 0);
    require(DBService::Initialize(settings) == 1);
    DBService& service = *DBService::GetDBServiceObject();

    insert<kRows>(service);
    store<kRows>(service);
    for (const Work& work : kWorks) {
        work.call(service);  // the first time something is prepared that is kept
        CALLGRIND_ZERO_STATS;
        for (int i = 0; i < work.calls; ++i)
            work.call(service);
        const std::string name = std::string(work.name) + " " + std::to_string(work.calls);
        CALLGRIND_DUMP_STATS_AT(name.c_str());
    }
    DBService::Cleanup();
    std::printf("g++ %s\n", __VERSION__);
    return 0;
}
