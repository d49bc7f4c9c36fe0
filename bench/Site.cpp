#include "bench/Site.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <stdexcept>

#include "dbservice/events/CFaceCaptureDao.h"
#include "dbservice/statement/ReadRows.h"
#include "dbservice/statement/Text.h"
#include "schema/Schema.h"

namespace bench {
namespace {

using dbaccess::Engine;
using dbservice::statement::append;
using dbservice::statement::compose;

constexpr int kChannels = 100;
constexpr int kLevels = 4;
constexpr int kMethods = 5;
constexpr int kTimes = 10;
constexpr int kFirstTime = 1'700'000'000;
constexpr int kBatch = 1000;

// As a benchmark's server is, and not as a test's: each commit is on the disk, the data in memory.
const std::vector<std::string> kServerOptions = {
    "--innodb-flush-log-at-trx-commit=1", "--debug-no-sync=0", "--innodb-buffer-pool-size=1G",
    "--innodb-log-file-size=512M"};

/// Splitmix64: neighbouring numbers become far ones, and no two the same one.
std::uint64_t scattered(std::uint64_t number) {
    number += 0x9E3779B97F4A7C15U;
    number = (number ^ (number >> 30U)) * 0xBF58476D1CE4E5B9U;
    number = (number ^ (number >> 27U)) * 0x94D049BB133111EBU;
    return number ^ (number >> 31U);
}

std::string hex(std::uint64_t number, int digits) {
    std::string text(static_cast<std::size_t>(digits), '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, number >>= 4U)
        *digit = "0123456789abcdef"[number & 15U];
    return text;
}

int check(int result) {
    if (result < 0) throw std::runtime_error(dbaccess::LastError().message);
    return result;
}

}  // namespace

std::string keyOf(int number) {
    const std::uint64_t high = scattered(static_cast<std::uint64_t>(number));
    const std::uint64_t low = scattered(high);
    return hex(high >> 32U, 8) + "-" + hex(high >> 16U, 4) + "-" + hex(high, 4) + "-" +
           hex(low >> 48U, 4) + "-" + hex(low, 12);
}

T_Device deviceOf(int number) {
    T_Device device;
    device.Guid = keyOf(number);
    device.ServerGuid = keyOf(number % 16 - 100);
    device.Mac = "00:1b:" + device.Guid.substr(0, 2) + ":" + device.Guid.substr(2, 2);
    device.DriverKey = "onvif-s";
    device.DisplayName =
        "Platform " + device.Guid.substr(9, 4) + ", camera " + std::to_string(number);
    device.IPAddress = "10." + std::to_string(number >> 16) + "." +
                       std::to_string(number >> 8 & 255) + "." + std::to_string(number & 255);
    device.HttpPort = 80 + number % 7;
    device.FtpPort = 21;
    device.DefaultHttpPort = 80;
    device.DefaultFtpPort = 21;
    device.State = number % 3;
    device.UserName = "operator";
    device.Password = device.Guid.substr(24);
    device.Com1Driver = "pelco-d";
    device.Com2Driver = "";
    device.Browsable = 1;
    device.VenderType = number % 11;
    device.DeviceType = number % 5;
    device.DriverType = number % 13;
    device.ChannelCount = 1 + number % 16;
    return device;
}

T_AlarmInfo alarmOf(int number) {
    T_AlarmInfo alarm;
    alarm.Guid = keyOf(number);
    alarm.ChannelGuid = keyOf(-200 - number % kChannels);
    alarm.DeviceGuid = keyOf(number % 1000);
    number /= kChannels;
    alarm.AlarmLevel = number % kLevels;
    number /= kLevels;
    alarm.AlarmMethod = number % kMethods;
    number /= kMethods;
    alarm.BeginTime = "2026-11-21 03:0" + std::to_string(number % kTimes) + ":00";
    alarm.EndTime = "2026-11-21 03:0" + std::to_string(number % kTimes) + ":10";
    alarm.AlarmContent = "Motion in the area " + alarm.Guid;
    alarm.AlarmSource = "camera";
    return alarm;
}

/// Callers read the time as minority and the minority as `mouthClose`: here all three are one.
T_FaceCapture faceOf(int number) {
    T_FaceCapture face;
    face.filePath = "/faces/" + keyOf(number) + ".jpg";
    face.age = static_cast<unsigned int>(number % 80);
    face.sex = static_cast<unsigned int>(number % 2);
    face.headWear = static_cast<unsigned int>(number % 3);
    face.addTime = static_cast<unsigned int>(kFirstTime + number);
    face.minority = face.addTime;
    face.mouthClose = face.addTime;
    return face;
}

T_SearchAlarmParam searchOf(int number, dbservice::T_Channel& channel) {
    const T_AlarmInfo alarm = alarmOf(number);
    channel.Guid = alarm.ChannelGuid;
    T_SearchAlarmParam request;
    request.AlarmLevel = alarm.AlarmLevel;
    request.AlarmMethod = alarm.AlarmMethod;
    request.BeginTime = alarm.BeginTime;
    request.EndTime = alarm.EndTime;
    request.EndIndex = 1'000'000;
    request.ChannelCount = 1;
    request.Channels = &channel;
    return request;
}

Site::Site(Engine engine, Place server) : place_(std::move(server)) {
    place_.engine = engine;
    if (engine == Engine::Embedded) {
        place_.host = directory_.path();
    } else if (place_.host.empty()) {
        server_ = std::make_unique<PrivateServer>(kServerOptions);
        place_.host = PrivateServer::host();
        place_.port = server_->port();
        place_.user = PrivateServer::user();
        place_.password = server_->password();
    }
    connect();
}

/// Anew, so that no embedded database is open: what is measured in a forked process could use none.
void Site::connect() {
    access_ = std::make_unique<dbaccess::DataAccess>(
        (place_.engine == Engine::Embedded ? "sqlite:" : "") + place_.host, place_.port,
        place_.user, place_.password);
    if (!access_->Initialize(1, 1, true, true)) check(-1);
}

Site::~Site() {
    if (place_.engine == Engine::Embedded || server_) return;
    for (const std::string& name : databases_)
        access_->Execute("", "drop database if exists " + name);
}

Place Site::database(const std::string& name, int devices, int events, bool indexed) {
    Place place = place_;
    place.database = "bench_" + name;
    if (!databases_.insert(place.database).second) return place;
    if (place.engine == Engine::Server)
        execute(place_, "drop database if exists " + place.database);
    check(schema::Create(*access_, place.database));
    if (!indexed) {
        const auto drop = [&](const std::string& index, const std::string& table) {
            const bool named = place.engine == Engine::Server;
            execute(place, "drop index " + index + (named ? " on " + table : ""));
        };
        drop("alarminfo_ChannelGuid_BeginTime", "alarminfo");
        drop("alarminfo_BeginTime", "alarminfo");
        drop("facecapture_addTime", "facecapture");
    }
    fill(place, devices, events);
    connect();
    return place;
}

void Site::fill(const Place& place, int devices, int events) {
    const auto raw = makeRaw(place);
    for (int first = 0; first < devices; first += kBatch) {
        std::vector<T_Device> batch;
        for (int i = first; i < std::min(first + kBatch, devices); ++i)
            batch.push_back(deviceOf(i));
        raw->insertDevices(batch.data(), static_cast<int>(batch.size()));
    }
    dbservice::CFaceCaptureDao faces(access_.get(), place.database);
    for (int first = 0; first < events; first += kBatch) {
        std::vector<T_FaceCapture> batch;
        std::string alarms;
        for (int i = first; i < std::min(first + kBatch, events); ++i) {
            batch.push_back(faceOf(i));
            const T_AlarmInfo alarm = alarmOf(i);
            append(alarms, "{}('{}','{}','{}',{},{},'{}','{}','{}','{}')",
                   alarms.empty() ? "" : ",", alarm.Guid, alarm.DeviceGuid, alarm.ChannelGuid,
                   alarm.AlarmLevel, alarm.AlarmMethod, alarm.BeginTime, alarm.EndTime,
                   alarm.AlarmContent, alarm.AlarmSource);
        }
        check(faces.insertFaceCaptureImp(batch.data(), static_cast<int>(batch.size())));
        execute(place, compose("insert into alarminfo(Guid,DeviceGuid,ChannelGuid,AlarmLevel,"
                               "AlarmMethod,BeginTime,EndTime,AlarmContent,AlarmSource) values{}",
                               alarms));
    }
}

void Site::execute(const Place& place, const std::string& statement) {
    check(access_->Execute(place.database, statement));
}

int Site::count(const Place& place, const std::string& table) {
    const dbservice::statement::RowsPtr rows(
        access_->Query(place.database, "select count(*) as n from " + table));
    if (!rows || !rows->next()) check(-1);
    return static_cast<int>(rows->getUInt("n"));
}

std::optional<clockid_t> Site::serverClock() {
    if (place_.engine == Engine::Embedded) return std::nullopt;
    const dbservice::statement::RowsPtr rows(access_->Query("", "select @@pid_file as file"));
    std::string file;
    pid_t process = 0;
    clockid_t clock = 0;
    if (!rows || !rows->next() || !rows->getString("file", file)) return std::nullopt;
    if (!(std::ifstream(file) >> process) || ::clock_getcpuclockid(process, &clock) != 0)
        return std::nullopt;
    return clock;
}

}  // namespace bench
