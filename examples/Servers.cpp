#include <fmt/format.h>

#include "examples/Entities.h"

namespace demo {
namespace {

using dbservice::DBService;
using dbservice::T_ServerInfo;
using Servers = std::vector<T_ServerInfo>;

void store(DBService& service, const Servers& servers) {
    Progress progress("Storing recording servers", servers.size());
    for (const T_ServerInfo& server : servers) {
        check(service.InsertServerInfo(server), "Storing recording server " + server.Guid);
        progress.step();
    }
}

void change(DBService& service, const Servers& servers) {
    for (const T_ServerInfo& server : servers)
        check(service.UpdateServerInfo(server), "Changing recording server " + server.Guid);
}

int remove(DBService& service, const Servers& servers) {
    int removed = 0;
    for (const T_ServerInfo& server : servers) {
        removed += check(service.DeleteServerInfo(server.Guid),
                         "Deleting recording server " + server.Guid);
    }
    return removed;
}

std::string address(const std::string& host, int port) {
    return fmt::format("{}:{}", host, port);
}

void show(DBService& service, const std::string& title) {
    const auto list = hold(service, service.QueryServerInfo(""), &DBService::ReleaseServerInfo,
                           "Listing the recording servers");
    Table table({"Name", "Private address", "Public address", "Clients"});
    for (int i = 0; list && i < list->count; ++i) {
        const T_ServerInfo& server = list->items[i];
        table.add(
            {server.DisplayName, address(server.PrivateAddress, server.PrivatePort),
             server.EnabledPublic == 1 ? address(server.PublicAddress, server.PublicPort) : "-",
             fmt::to_string(server.MaxClient)});
    }
    table.print(title);
}

}  // namespace

void loadServers(DBService& service, const Site& site, Table& summary) {
    const Plan<T_ServerInfo>& plan = site.servers;
    const int replaced = remove(service, plan.stored);
    store(service, plan.stored);
    show(service, "Recording servers");
    change(service, plan.changed);
    const int deleted = remove(service, plan.deleted);
    show(service, "Recording servers, after the changes");
    summary.add({"Recording servers", fmt::to_string(replaced), fmt::to_string(plan.stored.size()),
                 fmt::to_string(plan.changed.size()), fmt::to_string(deleted)});
}

}  // namespace demo
