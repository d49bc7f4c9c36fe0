#include "schema/Version.h"

#include <uuid/uuid.h>

#include <ctime>

#include "base/Version.h"
#include "schema/Steps.h"

namespace schema {
namespace {

// 1: before versions were recorded.
// 2: alarminfo has indexes on BeginTime and on ChannelGuid with BeginTime.
constexpr int kVersion = 2;

/// Of all that makes the tables, but for the collation, by which servers differ.
std::string checksum(dbaccess::Engine engine) {
    std::string text;
    for (const Step& step : missingTables(Dialect(engine), {}))
        text += step.statement + ";";
    uuid_t none;
    uuid_t sum;
    char result[UUID_STR_LEN];
    uuid_clear(none);
    uuid_generate_sha1(sum, none, text.data(), text.size());
    uuid_unparse_lower(sum, result);
    return result;
}

std::string now() {
    const std::time_t time = std::time(nullptr);
    std::tm parts{};
    char text[sizeof "2026-11-22 03:00:00"];
    gmtime_r(&time, &parts);
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &parts);
    return text;
}

}  // namespace

int Version() {
    return kVersion;
}

const Table& versionTable() {
    static const Table table{
        "dbservice_schema",
        "Version",
        {{Type::NumberKey, "Version"}, {Type::ShortText, "Checksum, MadeBy, MadeAt"}},
        {}};
    return table;
}

RecordedVersion ownVersion(dbaccess::Engine engine) {
    RecordedVersion own;
    own.version = kVersion;
    own.checksum = checksum(engine);
    own.library = dbservice::Version();
    own.time = now();
    return own;
}

bool isOwn(const RecordedVersion& recorded, dbaccess::Engine engine) {
    return recorded.version == kVersion && recorded.checksum == checksum(engine);
}

bool isNewer(const RecordedVersion& recorded) {
    return recorded.version > kVersion;
}

std::string describe(const RecordedVersion& recorded) {
    return "version " + std::to_string(recorded.version) + " of library " + recorded.library;
}

std::string recording(const RecordedVersion& version) {
    return std::string("replace into ") + versionTable().name +
           "(Version,Checksum,MadeBy,MadeAt) values(" + std::to_string(version.version) + ",'" +
           version.checksum + "','" + version.library + "','" + version.time + "')";
}

}  // namespace schema
