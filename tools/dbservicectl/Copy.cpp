#include <fmt/format.h>

#include <filesystem>

#include "dbaccess/pool/HostText.h"
#include "tools/dbservicectl/Commands.h"
#include "tools/dbservicectl/Loader.h"
#include "tools/dbservicectl/Rows.h"
#include "tools/dbservicectl/Snapshot.h"

namespace dbservicectl {
namespace {

Target targetOf(const Side& side, Session& session) {
    Target target = session.targetAt(side.options.host);
    if (!side.options.dbName.empty()) target.dbName = side.options.dbName;
    if (side.options.port != 0) target.port = side.options.port;
    if (!side.options.user.empty()) {
        target.user = side.options.user;
        target.password.clear();  // it was another account's
    }
    if (!side.passwordFile.empty()) target.password = passwordIn(side.passwordFile);
    if (target.dbName.empty())
        throw Failure("no database is named at " + target.host, "Give --database NAME",
                      Exit::WrongUsage);
    return target;
}

/// What tells one database from all others, as far as one can see from here.
std::string identityOf(const Target& target) {
    const dbaccess::HostText host = dbaccess::parseHost(target.host, target.port);
    if (host.engine == dbaccess::Engine::Embedded) {
        std::error_code failure;
        const auto file =
            std::filesystem::canonical(host.directory + "/" + target.dbName + ".db", failure);
        return failure ? "" : file.string();
    }
    const auto access = connect(target);
    std::string identity;
    for (const char* variable : {"@@hostname", "@@port", "@@datadir"})
        identity += valueOf(*access, "", variable).value_or("") + '\n';
    return identity + target.dbName;
}

}  // namespace

void copyDatabase(Session& session, const CopyOptions& options) {
    const Target from = targetOf(options.from, session);
    const Target to = targetOf(options.to, session);
    const std::string identity = identityOf(from);
    if (!identity.empty() && identity == identityOf(to))
        throw Failure("both sides are the same database", "", Exit::WrongUsage);
    const auto snapshot = Snapshot::of(from);
    Loader loader(session, to, options.filling);
    std::uint64_t rows = 0;
    for (const Entity& entity : entities())
        rows += snapshot->count(tableOf(entity));
    loader.expect(rows, snapshot->lastSerial());
    for (const Entity& entity : entities()) {
        const schema::Table& table = tableOf(entity);
        snapshot->forEachRow(table, [&](const std::vector<Cell>& row) { loader.add(table, row); });
    }
    loader.finish();
}

}  // namespace dbservicectl
