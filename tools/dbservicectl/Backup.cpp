#include <fmt/format.h>

#include <ctime>

#include "base/Version.h"
#include "dbaccess/pool/HostText.h"
#include "tools/dbservicectl/BackupFile.h"
#include "tools/dbservicectl/Commands.h"
#include "tools/dbservicectl/Entities.h"
#include "tools/dbservicectl/Interrupt.h"
#include "tools/dbservicectl/Loader.h"
#include "tools/dbservicectl/Snapshot.h"

namespace dbservicectl {
namespace {

std::string now() {
    const std::time_t time = std::time(nullptr);
    std::tm parts{};
    ::gmtime_r(&time, &parts);
    char text[32];
    return {text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts)};
}

BackupInfo readWhole(const std::string& path) {
    Progress progress("Checking rows");
    std::uint64_t rows = 0;
    BackupInfo info =
        readBackup(path, [&](const schema::Table& /*table*/, const std::vector<Cell>& /*row*/) {
            if (++rows % 1000 != 0) return;
            progress.at(rows);
            throwIfInterrupted("nothing was written");
        });
    note(harmless(fmt::format("{} is whole: {} rows of database {} ({}), made {} by version {}",
                              path, info.rows, info.database, info.engine, info.made,
                              info.library)));
    return info;
}

}  // namespace

void backUp(Session& session, const std::string& path) {
    const Target& target = session.target();
    NewFile file(path, session);
    const auto snapshot = Snapshot::of(target);
    const bool embedded =
        dbaccess::parseHost(target.host, target.port).engine == dbaccess::Engine::Embedded;
    BackupWriter backup(file,
                        {DBSERVICE_VERSION, now(), embedded ? "embedded" : "server", target.dbName,
                         static_cast<std::uint32_t>(snapshot->lastSerial()), 0});
    for (const Entity& entity : entities()) {
        const schema::Table& table = tableOf(entity);
        Progress progress(std::string("Backing up ") + entity.name, snapshot->count(table));
        std::uint64_t rows = 0;
        backup.begin(table);
        snapshot->forEachRow(table, [&](const std::vector<Cell>& row) {
            backup.add(row);
            if (++rows % 1000 == 0) progress.at(rows);
        });
    }
    backup.finish();
    file.publish();
    note(fmt::format("{} rows backed up to {}, passwords among them", backup.rows(), path));
}

/// Reads a backup to its end and says what it is.
void checkBackup(const std::string& path) {
    readWhole(path);
}

void restore(Session& session, const std::string& path, const Filling& filling) {
    const BackupInfo info = readWhole(path);
    Loader loader(session, session.target(), filling);
    loader.expect(info.rows, info.lastSerial);
    readBackup(path, [&](const schema::Table& table, const std::vector<Cell>& row) {
        loader.add(table, row);
    });
    loader.finish();
}

}  // namespace dbservicectl
