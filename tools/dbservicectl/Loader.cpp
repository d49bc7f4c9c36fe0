#include "tools/dbservicectl/Loader.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "schema/Schema.h"
#include "tools/dbservicectl/Interrupt.h"
#include "tools/dbservicectl/Rows.h"
#include "tools/dbservicectl/Snapshot.h"

namespace dbservicectl {
namespace {

constexpr int kDeletedAtOnce = 5000;

std::size_t keyColumn(const schema::Table& table) {
    const std::vector<schema::Column> columns = schema::columnsOf(table);
    return static_cast<std::size_t>(
        std::find_if(columns.begin(), columns.end(),
                     [&](const auto& column) { return column.name == table.primaryKey; }) -
        columns.begin());
}

std::string placeOf(const Target& target) {
    return fmt::format("database {} at {}", target.dbName, target.host);
}

}  // namespace

Loader::Loader(Session& session, const Target& target, const Filling& filling)
    : session_(session), target_(target), access_(connect(target, kLongCalls)) {
    check(schema::Create(*access_, target_.dbName), "creating " + placeOf(target_));
    makeRoom(filling);
    for (const Entity& entity : entities()) {
        const schema::Table& table = tableOf(entity);
        digests_[&table];
        if (!entity.isEvent) {
            inserts_.emplace(&table, Inserts(table, [this](std::string statement, std::size_t) {
                configuration_.push_back(std::move(statement));
            }));
            continue;
        }
        Events& events = events_[&table];
        events.keyAt = keyColumn(table);
        events.inserts.emplace(table, [this, &table](const std::string& statement, std::size_t n) {
            writeEvents(table, statement, n);
        });
        const Cell last = valueOf(*access_, target_.dbName,
                                  std::string("max(") + table.primaryKey + ")", table.name);
        if (last) events.last = std::stoll(*last);
    }
    progress_.emplace("Writing rows");
}

void Loader::makeRoom(const Filling& filling) {
    std::string content;
    for (const Entity& entity : entities()) {
        const Cell count = valueOf(*access_, target_.dbName, "count(*)", entity.table);
        if (count != "0") content += (content.empty() ? "" : ", ") + *count + " " + entity.name;
    }
    if (content.empty()) return;
    if (!filling.replace && !filling.resume)
        throw Failure(
            placeOf(target_) + " is not empty: it has " + content,
            "Give --replace to delete that, or --resume to go on with an interrupted run");
    if (filling.replace) session_.confirm("Delete " + content + " in " + placeOf(target_) + "?");
    for (const Entity& entity : entities()) {
        if (!entity.isEvent) {
            appendDeletions(*access_, target_.dbName, tableOf(entity), configuration_);
        } else if (filling.replace) {
            deleteEvents(entity);
        }
    }
}

/// In chunks, as there may be many.
void Loader::deleteEvents(const Entity& entity) {
    const std::string statement =
        fmt::format("delete from {} limit {}", entity.table, kDeletedAtOnce);
    Progress progress(std::string("Deleting ") + entity.name);
    for (std::int64_t deleted = 0, rows = 0;; progress.at(static_cast<std::uint64_t>(deleted))) {
        rows = check(access_->Execute(target_.dbName, statement), "deleting " + placeOf(target_));
        if (rows == 0) return;
        deleted += rows;
        throwIfInterrupted(
            fmt::format("{} {} deleted; give --replace again", deleted, entity.name));
    }
}

void Loader::add(const schema::Table& table, const std::vector<Cell>& row) {
    digests_[&table].add(row);
    if (events_.count(&table) != 0) {
        if (!configurationIsThere_) writeConfiguration();
        addEvent(table, row);
    } else {
        inserts_.at(&table).add(row);
    }
    if (++taken_ % 1000 == 0 && expected_ != 0) progress_->at(taken_);
}

void Loader::writeConfiguration() {
    for (auto& [table, inserts] : inserts_)
        inserts.finish();
    throwIfInterrupted("nothing was written");
    check(access_->Update(target_.dbName, configuration_), "writing the configuration",
          Message::LeftOut);
    configuration_.clear();
    configurationIsThere_ = true;
}

void Loader::addEvent(const schema::Table& table, const std::vector<Cell>& row) {
    Events& events = events_.at(&table);
    const auto key = wholeNumber(row[events.keyAt].value_or(""));
    if (!events.last || !key || *key > *events.last) events.inserts->add(row);
}

void Loader::writeEvents(const schema::Table& table, const std::string& statement,
                         std::size_t rows) {
    const std::int64_t result = access_->Execute(target_.dbName, statement);
    if (result < 0) {
        const Failure failure = failureOf(dbaccess::LastError(),
                                          fmt::format("writing {}", table.name), Message::LeftOut);
        throw Failure(fmt::format("{}; {}", failure.what(), howFar()), failure.next());
    }
    events_.at(&table).written += rows;
    throwIfInterrupted(howFar());
}

std::string Loader::howFar() const {
    std::string text = "the configuration is written";
    for (const Entity& entity : entities())
        if (entity.isEvent)
            text += fmt::format(", {} {}", events_.at(&tableOf(entity)).written, entity.name);
    return text + "; --resume goes on there";
}

void Loader::writeRest() {
    if (!configurationIsThere_) writeConfiguration();
    for (auto& [table, events] : events_)
        events.inserts->finish();
    keepSerial();
    progress_.reset();
}

/// Databases go on behind the largest number that they were ever told.
void Loader::keepSerial() {
    const Cell largest = valueOf(*access_, target_.dbName, "max(SN)", "alarminfo");
    if (lastSerial_ <= (largest ? std::stoull(*largest) : 0)) return;
    std::deque<std::string> statements{
        fmt::format("insert into alarminfo(Guid,SN) values('last serial number',{})", lastSerial_),
        fmt::format("delete from alarminfo where SN={}", lastSerial_)};
    check(access_->Update(target_.dbName, statements), "writing alarminfo", Message::LeftOut);
}

void Loader::finish() {
    writeRest();
    const auto snapshot = Snapshot::of(target_);
    Output output = session_.output(
        {{"Table"}, {"Rows", true}, {"There", true}, {"SHA-256"}, {"SHA-256 there"}, {"Result"}});
    std::size_t different = 0;
    for (const Entity& entity : entities()) {
        const schema::Table& table = tableOf(entity);
        Digest there;
        Progress progress(std::string("Comparing ") + entity.name);
        snapshot->forEachRow(table, [&](const std::vector<Cell>& row) {
            there.add(row);
            if (there.rows() % 1000 == 0) progress.at(there.rows());
        });
        const Digest& expected = digests_.at(&table);
        const bool same = expected.rows() == there.rows() && expected.text() == there.text();
        if (!same) ++different;
        constexpr std::size_t kShown = 16;  // digits; all are compared
        output.add({table.name, std::to_string(expected.rows()), std::to_string(there.rows()),
                    expected.text().substr(0, kShown), there.text().substr(0, kShown),
                    same ? "same" : "different"});
    }
    output.finish();
    if (different != 0)
        throw Failure(fmt::format("{} tables differ in {}", different, placeOf(target_)),
                      "Did somebody else write there? --replace does it all again", Exit::Found);
}

}  // namespace dbservicectl
