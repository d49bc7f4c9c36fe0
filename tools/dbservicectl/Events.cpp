#include <fmt/format.h>

#include <functional>
#include <limits>
#include <map>
#include <utility>

#include "dbservice/Convenience.h"
#include "tools/dbservicectl/Commands.h"
#include "tools/dbservicectl/Interrupt.h"
#include "tools/dbservicectl/LocalTime.h"

namespace dbservicectl {
namespace {

using dbaccess::EscapeText;
using dbservice::AlarmPages;
using dbservice::FaceCapturePages;
using dbservice::FaceComparisonPages;
using dbservice::T_AlarmInfo;
using dbservice::T_FaceCapture;
using dbservice::T_FaceCompare;

/// The records of pages one by one.
template <class Pages, class Record>
class Stream {
public:
    explicit Stream(Pages pages) : pages_(std::move(pages)) {}

    /// The record in front; null behind the last one.
    const Record* front() {
        if (at_ == page_.size() && !ended_) {
            const dbservice::Result result = pages_.next(page_);
            if (!result) throw failureOf(result.error(), "reading events", Message::LeftOut);
            at_ = 0;
            ended_ = page_.empty();
        }
        return ended_ ? nullptr : &page_[at_];
    }

    void pop() { ++at_; }

private:
    Pages pages_;
    std::vector<Record> page_;
    std::size_t at_ = 0;
    bool ended_ = false;
};

/// Writes the page that was asked for, or all.
/// @param next  takes the next event, and returns its row; none behind the last one.
void writePage(const EventOptions& options, Output& output,
               const std::function<std::optional<std::vector<Cell>>()>& next) {
    constexpr auto kNoEnd = std::numeric_limits<std::int64_t>::max();
    const std::int64_t begin = options.all ? 0 : (options.page - 1) * options.pageSize;
    const std::int64_t end = options.all ? kNoEnd : begin + options.pageSize;
    std::optional<std::vector<Cell>> row = next();
    for (std::int64_t i = 0; row && i < end; ++i, row = next()) {
        throwIfInterrupted(fmt::format("{} events read", i));
        if (i >= begin) output.add(std::move(*row));
    }
    output.finish();
    if (row) note(fmt::format("There are more: --page {}", options.page + 1));
}

/// The time of an alarm in the local zone; as it is stored when it is of another form.
std::string alarmTime(const std::string& stored) {
    dbservice::Time time;
    return dbservice::parseTime(stored, time) ? localText(time) : stored;
}

/// Looks up the names of channels, each once.
class CameraNames {
public:
    explicit CameraNames(dbservice::DBService& service) : service_(service) {}

    /// Empty for a channel that is not there.
    const std::string& of(const std::string& channelGuid) {
        const auto [known, isNew] = names_.try_emplace(channelGuid);
        if (isNew && !channelGuid.empty()) {  // an empty key would be all channels
            const dbservice::Channels found =
                dbservice::channels(service_, "", EscapeText(channelGuid));
            if (!found.result())
                throw failureOf(found.result().error(), "reading channels", Message::LeftOut);
            if (!found.empty()) known->second = found.front().DisplayName;
        }
        return known->second;
    }

private:
    dbservice::DBService& service_;
    std::map<std::string, std::string> names_;
};

unsigned int faceTime(const std::string& text) {
    if (text.empty()) return 0;
    const dbservice::Time time = timeIn(text);
    const std::int64_t seconds = dbservice::secondsOf(time);
    if (seconds < 1 || seconds > std::numeric_limits<std::int32_t>::max())
        throw Failure(fmt::format("'{}' is no time that a face can have", text),
                      "They reach from 1970 to 2038-01-19", Exit::WrongUsage);
    return dbservice::timeNumber(time);
}

}  // namespace

void showAlarms(Session& session, const EventOptions& options) {
    const auto text = [](const std::string& time) {
        return time.empty() ? "" : dbservice::timeText(timeIn(time));
    };
    const std::string from = text(options.from);
    const std::string to = text(options.to);
    std::vector<Column> columns{{"Begin"},       {"End"},   {"Camera"},
                                {"Level", true}, {"Alarm"}, {"Source"}};
    const bool keys = session.format() != Format::Table;
    if (keys)
        columns.insert(columns.end(),
                       {{"Method", true}, {"SN", true}, {"Guid"}, {"ChannelGuid"}, {"DeviceGuid"}});
    Output output = session.output(columns);
    CameraNames names(session.service());
    Stream<AlarmPages, T_AlarmInfo> alarms(
        AlarmPages(session.service(), from, to, EscapeText(options.channel), options.atOnce()));
    writePage(options, output, [&]() -> std::optional<std::vector<Cell>> {
        const T_AlarmInfo* alarm = alarms.front();
        if (alarm == nullptr) return std::nullopt;
        std::vector<Cell> row{alarmTime(alarm->BeginTime),  alarmTime(alarm->EndTime),
                              names.of(alarm->ChannelGuid), std::to_string(alarm->AlarmLevel),
                              alarm->AlarmContent,          alarm->AlarmSource};
        if (keys)
            row.insert(row.end(), {std::to_string(alarm->AlarmMethod), std::to_string(alarm->SN),
                                   alarm->Guid, alarm->ChannelGuid, alarm->DeviceGuid});
        alarms.pop();
        return row;
    });
}

void showFaces(Session& session, const EventOptions& options) {
    const unsigned int from = faceTime(options.from);
    const unsigned int to = faceTime(options.to);
    const bool withCaptures = options.kind != "comparisons";
    const bool withComparisons = options.kind != "captures";
    std::vector<Column> columns{{"Time"}, {"Kind"}, {"Picture"}};
    if (withCaptures) columns.insert(columns.end(), {{"Age", true}, {"Sex", true}});
    if (withComparisons)
        columns.insert(columns.end(),
                       {{"Person"}, {"FaceID"}, {"Similarity", true}, {"KnownPicture"}});
    const Cell none = session.format() == Format::Table ? Cell("") : Cell();
    Output output = session.output(columns);
    Stream<FaceCapturePages, T_FaceCapture> captures(
        FaceCapturePages(session.service(), from, to, options.atOnce()));
    Stream<FaceComparisonPages, T_FaceCompare> comparisons(
        FaceComparisonPages(session.service(), from, to, options.atOnce()));
    writePage(options, output, [&]() -> std::optional<std::vector<Cell>> {
        const T_FaceCapture* capture = withCaptures ? captures.front() : nullptr;
        const T_FaceCompare* comparison = withComparisons ? comparisons.front() : nullptr;
        if (capture == nullptr && comparison == nullptr) return std::nullopt;
        std::vector<Cell> row;
        if (comparison == nullptr ||
            (capture != nullptr && std::int64_t{capture->addTime} <= comparison->addTime)) {
            row = {localText(dbservice::timeOf(capture->addTime)), "capture", capture->filePath,
                   std::to_string(capture->age), std::to_string(capture->sex)};
            captures.pop();
        } else {
            row = {localText(dbservice::timeOf(comparison->addTime)), "comparison",
                   comparison->facePath};
            if (withCaptures) row.insert(row.end(), 2, none);
            row.insert(row.end(), {comparison->name, comparison->faceID,
                                   std::to_string(comparison->similarity), comparison->basePath});
            comparisons.pop();
        }
        row.resize(columns.size(), none);
        return row;
    });
}

}  // namespace dbservicectl
