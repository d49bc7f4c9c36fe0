#include <fmt/format.h>

#include <array>
#include <iterator>
#include <random>

#include "dbservice/Convenience.h"
#include "tools/dbservicectl/Commands.h"
#include "tools/dbservicectl/Interrupt.h"
#include "tools/dbservicectl/LocalTime.h"
#include "tools/dbservicectl/Progress.h"
#include "tools/dbservicectl/Rows.h"

namespace dbservicectl {
namespace {

using dbservice::DBService;

constexpr int kBatch = 1000;
constexpr int kDevicesOfServer = 64;
constexpr int kFacesOfKnown = 20;  // one captured face in so many is a known person's

/// Chance that is the same on every machine for the same seed.
class Chance {
public:
    explicit Chance(std::uint64_t seed) : random_(seed) {}

    std::uint64_t below(std::uint64_t count) { return random_() % count; }

    template <class Items>
    const auto& of(const Items& items) {
        return items[below(std::size(items))];
    }

    /// A key in the form of a random UUID.
    std::string key() {
        const std::uint64_t a = random_();
        const std::uint64_t b = random_();
        return fmt::format("{:08x}-{:04x}-4{:03x}-{:04x}-{:012x}", a >> 32U, (a >> 16U) & 0xffffU,
                           a & 0xfffU, 0x8000U | ((b >> 48U) & 0x3fffU), b & 0xffffffffffffU);
    }

private:
    std::mt19937_64 random_;
};

constexpr std::array kPlaces{"Main entrance", "Platform", "Concourse", "Car park", "Loading dock",
                             "Ticket hall",   "Corridor", "Stairwell", "Lift",     "Fence"};
constexpr std::array kAlarms{"Motion",     "Motion",
                             "Motion",     "Line crossed",
                             "Loitering",  "Object left behind",
                             "Video lost", "Camera tampered with"};
constexpr std::array kSources{"camera", "analytics"};
constexpr std::array kNames{"Ada", "Ben", "Chloé", "D'Arcy", "Eva", "Farid", "Greta", "Hồng"};

/// Stores so many records in batches.
/// @param make  makes the record of a number, counted from 0.
template <class Record, class Make, class Store>
void store(const std::string& what, std::int64_t total, const Make& make, const Store& store) {
    Progress progress("Storing " + what, static_cast<std::uint64_t>(total));
    std::vector<Record> batch;
    batch.reserve(kBatch);
    for (std::int64_t i = 0; i < total;) {
        const std::string howFar = fmt::format("{} of {} {} stored", i, total, what);
        throwIfInterrupted(howFar);
        batch.clear();
        for (; i < total && batch.size() < kBatch; ++i)
            batch.push_back(dbservice::escaped(make(i)));
        const dbservice::Result result = store(batch.data(), static_cast<int>(batch.size()));
        if (result.number() == dbservice::ErrorNumber::kDuplicateKey)
            throw Failure(howFar + ": the next ones are there already", "Give another --seed");
        if (!result) throw failureOf(result.error(), howFar + ": storing", Message::LeftOut);
        progress.at(static_cast<std::uint64_t>(i));
    }
}

/// An operation that takes an array.
template <class Record>
auto all(DBService& service, int (DBService::*operation)(const Record*, int)) {
    return [&service, operation](const Record* records, int count) {
        return (service.*operation)(records, count);
    };
}

/// One that takes a single record.
template <class Record>
auto each(DBService& service, int (DBService::*operation)(const Record&)) {
    return [&service, operation](const Record* records, int count) {
        int answer = 0;
        for (int i = 0; i < count && answer >= 0; ++i)
            answer = (service.*operation)(records[i]);
        return answer;
    };
}

struct Keys {
    std::vector<std::string> servers;
    std::vector<std::string> devices;
    std::vector<std::string> channels;
};

Keys storeSite(DBService& service, const SeedOptions& options, Chance& chance) {
    Keys keys;
    const auto make = [&](std::vector<std::string>& of, int count) {
        for (int i = 0; i < count; ++i)
            of.push_back(chance.key());
    };
    make(keys.servers, (options.devices + kDevicesOfServer - 1) / kDevicesOfServer);
    make(keys.devices, options.devices);
    make(keys.channels, options.channels);
    const auto address = [](int place, std::int64_t number) {
        return fmt::format("10.{}.{}.{}", place, number / 250 % 250, number % 250 + 1);
    };
    store<dbservice::T_ServerInfo>(
        "servers", static_cast<std::int64_t>(keys.servers.size()),
        [&](std::int64_t i) {
            dbservice::T_ServerInfo server;
            server.Guid = keys.servers[static_cast<std::size_t>(i)];
            server.DisplayName = fmt::format("Recorder {}", i + 1);
            server.PrivateAddress = address(0, i);
            server.PrivatePort = 9000;
            server.MaxClient = 100;
            return server;
        },
        each(service, &DBService::InsertServerInfo));
    store<dbservice::T_Device>(
        "devices", options.devices,
        [&](std::int64_t i) {
            dbservice::T_Device device;
            device.Guid = keys.devices[static_cast<std::size_t>(i)];
            device.ServerGuid = keys.servers[static_cast<std::size_t>(i / kDevicesOfServer)];
            device.DisplayName = fmt::format("{} {}", chance.of(kPlaces), i + 1);
            device.IPAddress = address(1 + static_cast<int>(i / 62500), i);
            device.Mac = fmt::format("02:00:00:{:02x}:{:02x}:{:02x}", i >> 16U & 0xff,
                                     i >> 8U & 0xff, i & 0xff);
            device.HttpPort = device.DefaultHttpPort = 80;
            device.State = chance.below(50) == 0 ? 0 : 1;
            device.ChannelCount = static_cast<int>(options.channels / options.devices +
                                                   (i < options.channels % options.devices));
            return device;
        },
        all(service, &DBService::InsertDevice));
    store<dbservice::T_Channel>(
        "channels", options.channels,
        [&](std::int64_t i) {
            dbservice::T_Channel channel;
            channel.Guid = keys.channels[static_cast<std::size_t>(i)];
            channel.Device_Guid = keys.devices[static_cast<std::size_t>(i % options.devices)];
            channel.Num = static_cast<int>(i / options.devices) + 1;
            channel.DisplayName = fmt::format("{} {}", chance.of(kPlaces), i + 1);
            return channel;
        },
        all(service, &DBService::InsertChannel));
    return keys;
}

/// Stores events, evenly over the days, in the order of their times.
void storeEvents(DBService& service, const SeedOptions& options, const Keys& keys, Chance& chance) {
    using std::chrono::seconds;
    const dbservice::Time end =
        options.until.empty() ? std::chrono::system_clock::now() : timeIn(options.until);
    const std::int64_t span = options.days * std::int64_t{86400};
    const auto timeOfEvent = [&](std::int64_t i, std::int64_t total) {
        return end - seconds(span - static_cast<std::int64_t>(static_cast<double>(span) *
                                                              static_cast<double>(i) /
                                                              static_cast<double>(total)));
    };
    store<dbservice::T_AlarmInfo>(
        "alarms", options.alarms,
        [&](std::int64_t i) {
            const std::size_t channel = chance.below(keys.channels.size());
            const dbservice::Time begin = timeOfEvent(i, options.alarms);
            dbservice::T_AlarmInfo alarm;
            alarm.Guid = chance.key();
            alarm.ChannelGuid = keys.channels[channel];
            alarm.DeviceGuid = keys.devices[channel % keys.devices.size()];
            alarm.AlarmLevel = std::array{1, 1, 1, 1, 1, 1, 2, 2, 2, 3}[chance.below(10)];
            alarm.AlarmMethod = static_cast<int>(chance.below(3));
            alarm.BeginTime = dbservice::timeText(begin);
            alarm.EndTime = dbservice::timeText(begin + seconds(5 + chance.below(90)));
            alarm.AlarmContent = chance.of(kAlarms);
            alarm.AlarmSource = chance.of(kSources);
            return alarm;
        },
        [&](const dbservice::T_AlarmInfo* alarms, int count) {
            return dbservice::storeAlarms(service, alarms, count);
        });
    const auto picture = [](std::int64_t i) { return fmt::format("/faces/{:09}.jpg", i); };
    store<dbservice::T_FaceCapture>(
        "face captures", options.faces,
        [&](std::int64_t i) {
            dbservice::T_FaceCapture face;
            face.filePath = picture(i);
            face.age = static_cast<unsigned int>(16 + chance.below(70));
            face.sex = static_cast<unsigned int>(chance.below(2));
            face.addTime = dbservice::timeNumber(timeOfEvent(i, options.faces));
            return face;
        },
        all(service, &DBService::InsertFaceCapture));
    store<dbservice::T_FaceCompare>(
        "face comparisons", options.faces / kFacesOfKnown,
        [&](std::int64_t i) {
            const std::size_t person = chance.below(kNames.size());
            dbservice::T_FaceCompare face;
            face.facePath = picture(i * kFacesOfKnown);
            face.basePath = fmt::format("/known/{}.jpg", person);
            face.faceID = fmt::to_string(person);
            face.name = kNames[person];
            face.similarity = static_cast<int>(70 + chance.below(30));
            face.addTime = static_cast<int>(
                dbservice::timeNumber(timeOfEvent(i * kFacesOfKnown, options.faces)));
            return face;
        },
        each(service, &DBService::InsertFaceCompare));
}

}  // namespace

void seed(Session& session, const SeedOptions& options) {
    if (options.channels > 0 && options.devices == 0)
        throw Failure("channels belong to devices", "Give --devices", Exit::WrongUsage);
    if (options.alarms > 0 && options.channels == 0)
        throw Failure("alarms come from channels", "Give --channels", Exit::WrongUsage);
    for (const char* table : {"serverinfo", "device", "channel", "alarminfo", "facecapture"})
        if (valueOf(session.access(), session.dbName(), "1", std::string(table) + " limit 1")) {
            session.confirm(
                fmt::format("Database {} holds records. Add test data?", session.dbName()));
            break;
        }
    Chance chance(options.seed);
    const Keys keys = storeSite(session.service(), options, chance);
    storeEvents(session.service(), options, keys, chance);
    note(fmt::format("{} devices, {} channels, {} alarms and {} captured faces stored",
                     options.devices, options.channels, options.alarms, options.faces));
}

}  // namespace dbservicectl
