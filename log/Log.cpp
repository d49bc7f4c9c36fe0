#include "log/Log.h"

#include <spdlog/logger.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>

#include <cstdlib>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

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

std::unique_ptr<spdlog::logger> openLogger() {
    auto logger = makeLogger(std::make_shared<spdlog::sinks::stderr_sink_mt>());
    std::string failure;
    const std::string file = environment("DBSERVICE_LOG_FILE");
    try {
        if (!file.empty())
            logger = makeLogger(std::make_shared<spdlog::sinks::basic_file_sink_mt>(file));
    } catch (const std::exception& exception) {
        failure = exception.what();
    }
    setLevel(*logger, environment("DBSERVICE_LOG_LEVEL"));
    if (!failure.empty()) write(*logger, spdlog::level::err, "Log", failure.c_str());
    return logger;
}

}  // namespace

void Qz_Write_Log(int level, const char* location, const char* message) {
    try {
        // Never destroyed: other static objects may speak while they are being destroyed.
        static spdlog::logger& logger = *openLogger().release();
        write(logger, levelOf(level), location, message);
    } catch (...) {  // a log that cannot be written must not stop the work it is about
        return;
    }
}
