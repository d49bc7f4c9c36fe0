#include "log/Log.h"

#include <spdlog/logger.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>

#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "log/RepeatLog.h"

namespace {

using spdlog::level::level_enum;

level_enum levelOf(int level) {
    if (level < kQzLogInfo) return spdlog::level::debug;
    if (level < kQzLogWarning) return spdlog::level::info;
    if (level < kQzLogError) return spdlog::level::warn;
    return spdlog::level::err;
}

/// The variable's value; empty when it is not set.
std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

/// Adds a text to a line. A message may carry what a stranger sent, and must neither look like two
/// lines nor steer the terminal that shows it.
void appendPrintable(std::string& line, const char* text) {
    constexpr char kDigits[] = "0123456789abcdef";
    for (const char c : std::string_view(text == nullptr ? "" : text)) {
        const auto code = static_cast<unsigned char>(c);
        if (code >= 0x20 && code != 0x7f) {
            line += c;
        } else if (c == '\n') {
            line += "\\n";
        } else {
            line += {'\\', 'x', kDigits[code / 16], kDigits[code % 16]};
        }
    }
}

void write(spdlog::logger& logger, level_enum level, const char* location, const char* message) {
    if (!logger.should_log(level)) return;
    std::string line;
    appendPrintable(line, location);
    if (!line.empty()) line += ": ";
    appendPrintable(line, message);
    logger.log(level, spdlog::string_view_t(line));
}

void setLevel(spdlog::logger& logger, const std::string& name) {
    const level_enum level = spdlog::level::from_str(name);
    const bool unknown = level == spdlog::level::off && name != "off";  // as from_str says it
    logger.set_level(unknown ? spdlog::level::warn : level);
    if (unknown && !name.empty()) {
        const std::string complaint = "DBSERVICE_LOG_LEVEL is '" + name + "', using 'warning'";
        write(logger, spdlog::level::warn, "Log", complaint.c_str());
    }
}

std::unique_ptr<spdlog::logger> makeLogger(spdlog::sink_ptr sink) {
    auto logger = std::make_unique<spdlog::logger>("DBService", std::move(sink));
    logger->set_pattern("%Y-%m-%dT%H:%M:%S.%e%z %l %t %v");
    // What is written last before a crash is what is wanted most.
    logger->flush_on(spdlog::level::trace);
    return logger;
}

constexpr std::size_t kMegabyte = std::size_t{1} << 20U;
constexpr std::size_t kMostMegabytes = 1000000;
constexpr std::size_t kMostFiles = 1000;

/// The variable's whole number; that of `usual` when it is not set, or with a `complaint`.
std::size_t numberOf(const char* name, std::size_t usual, std::size_t most,
                     std::string& complaint) {
    const std::string text = environment(name);
    if (text.empty()) return usual;
    std::size_t number = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
    if (parsed.ec == std::errc() && *parsed.ptr == '\0' && number <= most) return number;
    complaint = std::string(name) + " is '" + text + "', using " + std::to_string(usual);
    return usual;
}

/// The file, and older ones beside it once it is full.
spdlog::sink_ptr openFile(const std::string& name, std::string& complaint) {
    const std::size_t megabytes =
        numberOf("DBSERVICE_LOG_FILE_SIZE", 10, kMostMegabytes, complaint);
    const std::size_t older = numberOf("DBSERVICE_LOG_FILES", 5, kMostFiles, complaint);
    if (megabytes == 0) return std::make_shared<spdlog::sinks::basic_file_sink_mt>(name);
    return std::make_shared<spdlog::sinks::rotating_file_sink_mt>(name, megabytes * kMegabyte,
                                                                  older);
}

std::unique_ptr<spdlog::logger> openLogger() {
    auto logger = makeLogger(std::make_shared<spdlog::sinks::stderr_sink_mt>());
    std::string failure;
    std::string complaint;
    const std::string file = environment("DBSERVICE_LOG_FILE");
    try {
        if (!file.empty()) logger = makeLogger(openFile(file, complaint));
    } catch (const std::exception& exception) {
        failure = exception.what();
    }
    setLevel(*logger, environment("DBSERVICE_LOG_LEVEL"));
    if (!complaint.empty()) write(*logger, spdlog::level::warn, "Log", complaint.c_str());
    if (!failure.empty()) write(*logger, spdlog::level::err, "Log", failure.c_str());
    return logger;
}

/// Never destroyed: other static objects may speak while they are being destroyed.
spdlog::logger& theLogger() {
    static spdlog::logger& logger = *openLogger().release();
    return logger;
}

}  // namespace

void Qz_Write_Log(int level, const char* location, const char* message) {
    try {
        write(theLogger(), levelOf(level), location, message);
    } catch (...) {  // a log that cannot be written must not stop the work it is about
        return;
    }
}

bool logsDebug() {
    try {
        return theLogger().should_log(spdlog::level::debug);
    } catch (...) {
        return false;
    }
}
