#include "dbservice/accounts/ServerInfoDao.h"

#include "dbservice/statement/NextId.h"
#include "dbservice/statement/ReadRows.h"
#include "dbservice/statement/Result.h"
#include "dbservice/statement/Text.h"

namespace dbservice {

using namespace statement;

namespace {

constexpr char kColumns[] =
    "Guid,DisplayName,PrivateAddress,PrivatePort,EnabledPublic,PublicAddress,PublicPort,MaxClient";

}  // namespace

ServerInfoDao::ServerInfoDao(dbaccess::DataAccess* dataAccess, std::string dbName)
    : dataAccess_(dataAccess), dbName_(std::move(dbName)) {}

int ServerInfoDao::InsertServerImp(const T_ServerInfo& server) {
    IdSequence ids(*dataAccess_, dbName_, "serverinfo");
    std::string text =
        compose("insert into serverinfo({},Id) values('{}', '{}', '{}', {}, {}, '{}', {}, {}, {});",
                kColumns, server.Guid, server.DisplayName, server.PrivateAddress,
                server.PrivatePort, server.EnabledPublic, server.PublicAddress, server.PublicPort,
                server.MaxClient, ids.next());
    return zeroOrError(dataAccess_->Insert(dbName_, std::move(text)));
}

int ServerInfoDao::UpdateServerImp(const T_ServerInfo& server) {
    std::string text = compose(
        "update serverinfo set DisplayName = '{}',PrivateAddress = '{}',PrivatePort = '{}',"
        "EnabledPublic = '{}',PublicAddress = '{}',PublicPort = '{}',MaxClient = '{}'"
        " where Guid = '{}'",
        server.DisplayName, server.PrivateAddress, server.PrivatePort, server.EnabledPublic,
        server.PublicAddress, server.PublicPort, server.MaxClient, server.Guid);
    return zeroOrError(dataAccess_->Update(dbName_, std::move(text)));
}

int ServerInfoDao::DeleteServerImp(std::string guid) {
    return dataAccess_->Execute(dbName_, compose("delete from serverinfo where Guid ='{}'", guid));
}

T_ServerInfoList* ServerInfoDao::QueryServerImp(std::string guid) {
    std::string text = compose("select {} from serverinfo", kColumns);
    if (!guid.empty()) append(text, " where Guid='{}'", guid);
    text += " order by Id";
    return listOrNull<T_ServerInfoList>(dataAccess_->Query(dbName_, std::move(text)), SetValue);
}

int ServerInfoDao::SetValue(dbaccess::ResultSet* row, T_ServerInfo* server) {
    server->EnabledPublic = 0;
    server->PublicPort = 0;
    server->MaxClient = 500;  // what a server without a limit of its own serves
    const dbaccess::Field fields[] = {
        {"Guid", &server->Guid},
        {"DisplayName", &server->DisplayName},
        {"PrivateAddress", &server->PrivateAddress},
        {"PrivatePort", &server->PrivatePort},
        {"EnabledPublic", &server->EnabledPublic},
        {"PublicAddress", &server->PublicAddress},
        {"PublicPort", &server->PublicPort},
        {"MaxClient", &server->MaxClient},
    };
    dbaccess::readFields(*row, fields);
    return 0;
}

void ServerInfoDao::ReleaseServerList(T_ServerInfoList* list) {
    release(list);
}

}  // namespace dbservice
