#include "examples/load_site/Loading.h"

namespace demo {
namespace {

std::string address(const std::string& host, int port) {
    return fmt::format("{}:{}", host, port);
}

void show(DBService& service) {
    Table table({"Name", "Private address", "Public address", "Clients"});
    for (const auto& server : check(servers(service), "Listing the servers")) {
        table.add(
            {server.DisplayName, address(server.PrivateAddress, server.PrivatePort),
             server.EnabledPublic == 1 ? address(server.PublicAddress, server.PublicPort) : "-",
             fmt::to_string(server.MaxClient)});
    }
    table.print("Recording servers");
}

}  // namespace

void loadServers(DBService& service, const Site& site, Table& summary) {
    load(summary, "Recording servers", site.servers, each(service, &DBService::InsertServerInfo),
         each(service, &DBService::UpdateServerInfo),
         byKey(service, &DBService::DeleteServerInfo, &T_ServerInfo::Guid));
    show(service);
}

}  // namespace demo
