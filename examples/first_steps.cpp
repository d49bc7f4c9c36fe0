// Stores a recording server in an embedded database. Usage: first_steps [EXISTING_DIRECTORY]
#include <cstdio>

#include "dbaccess/DataAccess.h"
#include "dbservice/DBService.h"
#include "schema/Schema.h"
using namespace dbservice;

static int fail() {
    const dbaccess::Error& error = dbaccess::LastError();
    std::fprintf(stderr, "error %d: %s\n", error.number, error.message.c_str());
    DBService::Cleanup();
    return 1;
}

int main(int argc, char** argv) {
    DB_CONNECTION_PROPERTY settings;
    settings.host = std::string("sqlite:") + (argc > 1 ? argv[1] : ".");
    settings.dbName = "first_steps";

    dbaccess::DataAccess access(settings.host, 0, "", "");  // only to create what is missing
    if (!access.Initialize(1, 1, true, true)) return fail();
    if (schema::Create(access, settings.dbName) != 0) return fail();

    if (DBService::Initialize(settings) != 1) return fail();
    DBService* service = DBService::GetDBServiceObject();

    T_ServerInfo server;
    server.Guid = getGuid();
    server.DisplayName = "Main hall";
    server.PrivateAddress = "10.20.0.11";
    server.PrivatePort = 9000;
    if (service->InsertServerInfo(server) != 0) return fail();

    T_ServerInfoList* servers = service->QueryServerInfo("");  // an empty key: all of them
    if (servers == nullptr) return fail();
    const T_ServerInfo& newest = servers->items[servers->count - 1];
    std::printf("%d stored, the newest is %s\n", servers->count, newest.DisplayName.c_str());
    service->ReleaseServerInfo(servers);
    DBService::Cleanup();
    return 0;
}
