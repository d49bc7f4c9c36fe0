#include "examples/Site.h"

#include <fmt/format.h>

#include <fstream>
#include <limits>
#include <stdexcept>

#define JSON_DIAGNOSTICS 1  // exceptions name the place, as /servers/2/PrivatePort
#include <nlohmann/json.hpp>

namespace demo {
namespace {

using nlohmann::json;

constexpr int kHighestPort = 65535;

/// A text as it goes between the single quotes of a statement: both engines read a doubled quote or
/// backslash back as one.
std::string text(const json& record, const char* name) {
    std::string result;
    for (const char c : record.at(name).get_ref<const std::string&>()) {
        if (c == '\'' || c == '\\') result += c;
        result += c;
    }
    return result;
}

int number(const json& record, const char* name, int most = std::numeric_limits<int>::max()) {
    const json& value = record.at(name);
    if (value.is_number_integer() && value >= 0 && value <= most) return value.get<int>();
    throw std::runtime_error(fmt::format("{} of {} is not a whole number from 0 to {}", name,
                                         record.at("Guid").dump(), most));
}

dbservice::T_ServerInfo readServer(const json& record) {
    dbservice::T_ServerInfo server;
    server.Guid = text(record, "Guid");
    server.DisplayName = text(record, "DisplayName");
    server.PrivateAddress = text(record, "PrivateAddress");
    server.PrivatePort = number(record, "PrivatePort", kHighestPort);
    server.EnabledPublic = number(record, "EnabledPublic", 1);
    server.PublicAddress = text(record, "PublicAddress");
    server.PublicPort = number(record, "PublicPort", kHighestPort);
    server.MaxClient = number(record, "MaxClient");
    return server;
}

template <class Record>
Plan<Record> readPlan(const json& records, Record (*read)(const json&)) {
    Plan<Record> plan;
    for (const json& record : records) {
        plan.stored.push_back(read(record));
        const auto then = record.find("then");
        if (then == record.end()) continue;
        if (*then == "delete") {
            plan.deleted.push_back(plan.stored.back());
            continue;
        }
        json changed = record;
        changed.update(*then);
        changed["Guid"] = record["Guid"];  // another key would be another record
        plan.changed.push_back(read(changed));
    }
    return plan;
}

}  // namespace

Site readSite(const std::string& file) {
    std::ifstream stream(file);
    try {
        if (!stream) throw std::runtime_error("cannot be read");
        const json document = json::parse(stream);
        Site site;
        site.name = document.at("name").get<std::string>();
        site.servers = readPlan(document.at("servers"), readServer);
        return site;
    } catch (const std::exception& error) {
        throw std::runtime_error(fmt::format("{}: {}", file, error.what()));
    }
}

}  // namespace demo
