#include <fmt/format.h>

#include <deque>

#include "tools/dbservicectl/Commands.h"
#include "tools/dbservicectl/Inserts.h"
#include "tools/dbservicectl/NewFile.h"
#include "tools/dbservicectl/Progress.h"
#include "tools/dbservicectl/Rows.h"
#include "tools/dbservicectl/SiteFile.h"
#include "tools/dbservicectl/Snapshot.h"

namespace dbservicectl {
namespace {

SiteFile readWithoutErrors(const std::string& path) {
    SiteFile file = readSiteFile(path);
    for (const std::string& warning : file.warnings)
        note("warning: " + warning);
    if (file.errors.empty()) return file;
    std::string errors;
    for (const std::string& error : file.errors)
        errors += "\n" + error;
    throw Failure(
        fmt::format("nothing was imported; bad entries: {}{}", file.errors.size(), errors));
}

/// The tables that an import fills: the whole configuration, whatever of it the file names, and
/// those events that it names.
std::vector<const Entity*> entitiesOf(const SiteFile& file) {
    std::vector<const Entity*> chosen;
    for (const Entity& entity : entities()) {
        bool named = false;
        for (const SiteTable& table : file.tables)
            named = named || table.entity == &entity;
        if (named || !entity.isEvent) chosen.push_back(&entity);
    }
    return chosen;
}

/// "12 devices, 40 channels": the records of those tables that are not empty.
std::string contentOf(Session& session, const std::vector<const Entity*>& chosen) {
    std::string content;
    for (const Entity* entity : chosen) {
        const Cell count = valueOf(session.access(), session.dbName(), "count(*)", entity->table);
        if (count != "0") content += (content.empty() ? "" : ", ") + *count + " " + entity->name;
    }
    return content;
}

}  // namespace

void exportSite(Session& session, const std::string& path) {
    NewFile file(path, session);
    const auto snapshot = Snapshot::of(session.target());
    std::vector<SiteTable> tables;
    std::size_t records = 0;
    for (const Entity& entity : entities()) {
        if (entity.isEvent) continue;
        SiteTable table{&entity, {}};
        snapshot->forEachRow(tableOf(entity),
                             [&](const std::vector<Cell>& row) { table.rows.push_back(row); });
        records += table.rows.size();
        tables.push_back(std::move(table));
    }
    file.write(siteText(std::move(tables)));
    file.publish();
    note(fmt::format("{} records exported to {}, passwords among them", records, path));
}

void importSite(Session& session, const std::string& path, bool replace) {
    SiteFile file = readWithoutErrors(path);
    const std::vector<const Entity*> chosen = entitiesOf(file);
    const std::string content = contentOf(session, chosen);
    if (!content.empty()) {
        if (!replace)
            throw Failure("database " + session.dbName() + " is not empty: it has " + content,
                          "Give --replace to delete them in the same transaction");
        session.confirm(fmt::format("Delete {} in {}?", content, session.dbName()));
    }
    const Progress progress("Importing records");
    std::deque<std::string> statements;
    std::size_t records = 0;
    if (!content.empty())
        for (const Entity* entity : chosen)
            appendDeletions(session.access(), session.dbName(), tableOf(*entity), statements);
    for (SiteTable& table : file.tables) {
        Inserts inserts(tableOf(*table.entity), [&](std::string statement, std::size_t rows) {
            statements.push_back(std::move(statement));
            records += rows;
        });
        for (const std::vector<Cell>& row : table.rows)
            inserts.add(row);
        inserts.finish();
        table.rows = {};  // there may be many, whose room the statements take
    }
    const auto access = connect(session.target(), kLongCalls);
    check(access->Update(session.dbName(), statements), "importing " + path, Message::LeftOut);
    note(fmt::format("{} records imported", records));
}

}  // namespace dbservicectl
