#include "dbaccess/settings/OptionFile.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "log/Log.h"

namespace dbaccess {
namespace {

constexpr const char* kGroup = "dbservice";
constexpr int kDeepestInclude = 10;
constexpr const char* kBlanks = " \t\r\n\f\v";

std::string trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool isKey(const std::string& text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '-' || c == '_';
    });
}

/// Up to a comment, without the quotes around it, and with what a backslash stands for.
bool parseValue(const std::string& text, std::string& value) {
    constexpr std::string_view kEscapes = "nrtbs\\'\"";
    constexpr std::string_view kMeanings = "\n\r\t\b \\'\"";
    const char quote = text.empty() || (text[0] != '\'' && text[0] != '"') ? '\0' : text[0];
    std::size_t i = quote == '\0' ? 0 : 1;
    for (; i < text.size() && text[i] != (quote == '\0' ? '#' : quote); ++i) {
        const auto escape = text[i] == '\\' && i + 1 < text.size() ? kEscapes.find(text[i + 1])
                                                                   : std::string_view::npos;
        value += escape == std::string_view::npos ? text[i] : kMeanings[escape];
        if (escape != std::string_view::npos) ++i;
    }
    if (quote == '\0') {
        value = trimmed(value);
        return true;
    }
    if (i == text.size()) return false;
    const std::string rest = trimmed(text.substr(i + 1));
    return rest.empty() || rest[0] == '#';
}

/// "" or why the file is not to be read. Anybody could have written into it, or it would block.
std::string unfit(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return std::error_code(errno, std::generic_category()).message();
    if (!S_ISREG(status.st_mode)) return "it is no regular file";
    if ((status.st_mode & S_IWOTH) != 0) return "everybody may write into it";
    return "";
}

}  // namespace

struct OptionFiles::Source {
    std::string name;
    bool required = true;
    int depth = 0;
    bool hasGroups = true;
    bool inGroup = false;
    int line = 0;

    std::string where() const { return name + ", line " + std::to_string(line); }
};

std::string OptionFiles::readStandard(const std::string& home) {
    std::vector<std::string> paths{"/etc/my.cnf", "/etc/mysql/my.cnf"};
    if (!home.empty()) paths.push_back(home + "/.my.cnf");
    for (const std::string& path : paths) {
        std::string complaint = readFile(path, false, 0);
        if (!complaint.empty()) return complaint;
    }
    return "";
}

std::string OptionFiles::readFile(const std::string& path, bool required, int depth) {
    if (depth > kDeepestInclude) return path + ": too many files that include one another";
    std::string reason = unfit(path);
    if (reason.empty()) {
        std::ifstream file(path, std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        if (file.is_open() && !file.bad()) return readText(text, {path, required, depth});
        reason = "it cannot be read";
    }
    if (required) return path + ": " + reason;
    std::error_code failure;
    if (std::filesystem::exists(path, failure) || failure)
        Qz_Write_Log(kQzLogWarning, "Settings", (path + " is passed over: " + reason).c_str());
    return "";
}

/// All *.cnf, by name.
std::string OptionFiles::readDirectory(const std::string& path, bool required, int depth) {
    std::error_code failure;
    std::vector<std::string> files;
    for (std::filesystem::directory_iterator entry(path, failure), end; !failure && entry != end;
         entry.increment(failure))
        if (entry->path().extension() == ".cnf") files.push_back(entry->path().string());
    if (failure && required) return path + ": " + failure.message();
    std::sort(files.begin(), files.end());
    for (const std::string& file : files) {
        std::string complaint = readFile(file, required, depth);
        if (!complaint.empty()) return complaint;
    }
    return "";
}

std::string OptionFiles::readLines(const std::string& text) {
    return readText(text, {"options", true, 0, false, true});
}

std::string OptionFiles::readText(const std::string& text, Source source) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        ++source.line;
        std::string complaint = readLine(trimmed(line), source);
        if (!complaint.empty()) return complaint;
    }
    return "";
}

std::string OptionFiles::readLine(const std::string& line, Source& source) {
    if (line.empty() || line[0] == '#' || line[0] == ';') return "";
    if (source.hasGroups && line[0] == '[') {
        source.inGroup = trimmed(line.substr(1, line.find(']') - 1)) == kGroup;
        return "";
    }
    if (source.hasGroups && line[0] == '!') return include(line, source);
    if (!source.inGroup) return "";  // another program's, whatever it is
    const auto sign = line.find('=');
    Option option{trimmed(line.substr(0, sign)), "", source.where()};
    // What is no key may be a value: a password, say.
    if (sign == std::string::npos || !isKey(option.key))
        return option.where + ": 'key=value' is wanted";
    std::replace(option.key.begin(), option.key.end(), '_', '-');
    if (!parseValue(trimmed(line.substr(sign + 1)), option.value))
        return option.where + ": setting '" + option.key + "': ill-formed quotes";
    return take_(option);
}

/// Followed as the client does: systems keep their settings in folders that the main file includes.
std::string OptionFiles::include(const std::string& line, const Source& source) {
    const auto blank = std::min(line.find_first_of(kBlanks), line.size());
    const std::string directive = line.substr(1, blank - 1);
    const std::filesystem::path named = trimmed(line.substr(blank));
    if (named.empty()) return source.where() + ": a path is wanted";
    const std::string path = (std::filesystem::path(source.name).parent_path() / named).string();
    if (directive == "include") return readFile(path, source.required, source.depth + 1);
    if (directive == "includedir") return readDirectory(path, source.required, source.depth + 1);
    return source.where() + ": '!include' or '!includedir' is wanted";
}

}  // namespace dbaccess
