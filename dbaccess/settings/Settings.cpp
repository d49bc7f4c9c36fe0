#include "dbaccess/settings/Settings.h"

#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string_view>
#include <variant>
#include <vector>

#include "dbaccess/error/ErrorNumber.h"
#include "dbaccess/settings/OptionFile.h"

namespace dbaccess {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;

/// As the keys are written here.
std::string folded(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        if (c == '_') c = '-';
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return result;
}

struct Unit {
    std::string_view name;
    std::uint64_t factor;
};

/// A whole number and one of the units.
template <std::size_t count>
bool parseAmount(std::string_view text, const Unit (&units)[count], std::uint64_t& amount) {
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), amount);
    if (parsed.ec != std::errc()) return false;
    text.remove_prefix(static_cast<std::size_t>(parsed.ptr - text.data()));
    for (const Unit& unit : units) {
        if (text != unit.name) continue;
        if (amount > std::numeric_limits<std::int64_t>::max() / unit.factor) return false;
        amount *= unit.factor;
        return true;
    }
    return false;
}

struct Duration {
    milliseconds& (*place)(Settings& settings);
    milliseconds least;
    milliseconds most;
    const char* wanted;

    bool set(Settings& settings, const std::string& text) const {
        constexpr Unit kUnits[] = {
            {"", 1000}, {"ms", 1}, {"s", 1000}, {"min", 60000}, {"h", 3600000}};
        std::uint64_t count = 0;
        if (!parseAmount(text, kUnits, count)) return false;
        place(settings) = milliseconds(count);
        return place(settings) >= least && place(settings) <= most;
    }
};

struct Size {
    std::size_t& (*place)(Settings& settings);
    const char* wanted = "a number of bytes, as 64M, or 0 for any";

    bool set(Settings& settings, const std::string& text) const {
        constexpr Unit kUnits[] = {{"", 1}, {"K", 1U << 10U}, {"M", 1U << 20U}, {"G", 1U << 30U}};
        std::uint64_t bytes = 0;
        if (!parseAmount(text, kUnits, bytes)) return false;
        place(settings) = bytes;
        return true;
    }
};

struct Port {
    const char* wanted = "a port from 1 to 65535";

    static bool set(Settings& settings, const std::string& text) {
        constexpr std::uint64_t kHighest = 65535;
        std::uint64_t port = 0;
        if (!parseAmount(text, {Unit{"", 1}}, port)) return false;
        settings.port = static_cast<unsigned int>(std::min(port, kHighest));
        return port >= 1 && port <= kHighest;
    }
};

struct Text {
    std::string& (*place)(Settings& settings);
    const char* wanted = "a text without NUL";

    bool set(Settings& settings, const std::string& text) const {
        place(settings) = text;
        return text.find('\0') == std::string::npos;
    }
};

/// One of a few words.
struct Choice {
    std::vector<std::string_view> words;
    void (*choose)(Settings& settings, std::size_t word);
    const char* wanted;

    bool set(Settings& settings, const std::string& text) const {
        const auto found = std::find(words.begin(), words.end(), folded(text));
        if (found == words.end()) return false;
        choose(settings, static_cast<std::size_t>(found - words.begin()));
        return true;
    }
};

struct Key {
    std::string_view name;
    std::variant<Duration, Size, Port, Text, Choice> kind;
};

/// All settings there are; docs/settings.md describes them in this order.
const std::vector<Key>& keys() {
    static const std::vector<Key> keys{
        {"connect-timeout",
         Duration{[](Settings& s) -> milliseconds& { return s.timeouts.connect; },
                  milliseconds(100), minutes(5), "a time from 100ms to 5min"}},
        {"lock-timeout", Duration{[](Settings& s) -> milliseconds& { return s.timeouts.lock; },
                                  seconds(1), minutes(10), "a time from 1s to 10min"}},
        {"answer-timeout", Duration{[](Settings& s) -> milliseconds& { return s.timeouts.answer; },
                                    seconds(1), hours(24), "a time from 1s to 24h"}},
        {"call-timeout", Duration{[](Settings& s) -> milliseconds& { return s.timeouts.call; },
                                  seconds(1), hours(24), "a time from 1s to 24h"}},
        {"idle-timeout", Duration{[](Settings& s) -> milliseconds& { return s.idle; }, seconds(1),
                                  hours(24), "a time from 1s to 24h"}},
        {"max-age", Duration{[](Settings& s) -> milliseconds& { return s.age; }, seconds(10),
                             hours(720), "a time from 10s to 720h"}},
        {"largest-result", Size{[](Settings& s) -> std::size_t& { return s.largestResult; }}},
        {"slow-statement", Duration{[](Settings& s) -> milliseconds& { return s.slowStatement; },
                                    milliseconds(0), hours(24), "a time up to 24h, or 0 for none"}},
        {"causal-reads", Choice{{"0", "1"},
                                [](Settings& s, std::size_t word) { s.causalReads = word == 1; },
                                "'0' or '1'"}},
        {"synchronous", Choice{{"normal", "full"},
                               [](Settings& s, std::size_t word) { s.syncCommits = word == 1; },
                               "'full' or 'normal'"}},
        {"socket", Text{[](Settings& s) -> std::string& { return s.localSocket; }}},
        {"ssl-mode", Choice{{"disabled", "required", "verify-ca", "verify-identity"},
                            [](Settings& s, std::size_t word) {
                                s.tls.mode = static_cast<TlsMode>(word + 1);  // after Default
                            },
                            "'disabled', 'required', 'verify-ca' or 'verify-identity'"}},
        {"ssl-ca", Text{[](Settings& s) -> std::string& { return s.tls.ca; }}},
        {"ssl-capath", Text{[](Settings& s) -> std::string& { return s.tls.caPath; }}},
        {"ssl-cert", Text{[](Settings& s) -> std::string& { return s.tls.certificate; }}},
        {"ssl-key", Text{[](Settings& s) -> std::string& { return s.tls.key; }}},
        {"ssl-crl", Text{[](Settings& s) -> std::string& { return s.tls.crl; }}},
        {"ssl-crlpath", Text{[](Settings& s) -> std::string& { return s.tls.crlPath; }}},
        {"ssl-cipher", Text{[](Settings& s) -> std::string& { return s.tls.ciphers; }}},
        {"tls-version",
         Choice{{"tlsv1.2", "tlsv1.3", "tlsv1.2,tlsv1.3"},
                [](Settings& s, std::size_t word) {
                    constexpr const char* kNames[] = {"TLSv1.2", "TLSv1.3", "TLSv1.2,TLSv1.3"};
                    s.tls.versions = kNames[word];
                },
                "'TLSv1.2', 'TLSv1.3' or 'TLSv1.2,TLSv1.3'"}},
        {"get-server-public-key",
         Choice{{"0", "1"},
                [](Settings& s, std::size_t word) { s.fetchServerKey = word == 1; },
                "'0' or '1'"}},
        {"host", Text{[](Settings& s) -> std::string& { return s.host; }}},
        {"port", Port{}},
        {"user", Text{[](Settings& s) -> std::string& { return s.user; }}},
        {"password", Text{[](Settings& s) -> std::string& { return s.password; }}},
        {"database", Text{[](Settings& s) -> std::string& { return s.database; }}},
    };
    return keys;
}

/// "" or what is wrong.
std::string apply(Settings& settings, const Option& option) {
    const std::string complaint = option.where + ": setting '" + option.key + "': ";
    const auto key = std::find_if(keys().begin(), keys().end(),
                                  [&](const Key& known) { return known.name == option.key; });
    if (key == keys().end()) return complaint + "unknown";
    return std::visit(
        [&](const auto& kind) {
            return kind.set(settings, option.value) ? "" : complaint + kind.wanted + " is wanted";
        },
        key->kind);
}

const char* environment(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value == nullptr ? "" : value;
}

bool startsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

/// DBSERVICE_CONNECT_TIMEOUT=5s and the like.
std::string readEnvironment(Settings& settings) {
    constexpr std::string_view kPrefix = "DBSERVICE_";
    for (char** entry = ::environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view variable = *entry;
        if (!startsWith(variable, kPrefix)) continue;
        const std::string_view name = variable.substr(0, variable.find('='));
        const std::string_view rest = name.substr(kPrefix.size());
        // The latter two are set by container platforms for a service of this name.
        if (name == "DBSERVICE_OPTION_FILE" || startsWith(rest, "LOG_") ||
            startsWith(rest, "SERVICE_") || startsWith(rest, "PORT"))
            continue;
        const std::string value(variable.substr(std::min(name.size() + 1, variable.size())));
        if (value.empty()) continue;  // as good as not set
        std::string complaint = apply(settings, {folded(rest), value, "environment"});
        if (!complaint.empty()) return complaint;
    }
    return "";
}

/// What no setting can say of itself.
std::string checkTogether(const Settings& settings) {
    const Timeouts& timeouts = settings.timeouts;
    const Tls& tls = settings.tls;
    if (timeouts.answer <= timeouts.lock)
        return "settings: 'answer-timeout' must be longer than 'lock-timeout'";
    if (timeouts.call <= timeouts.connect)
        return "settings: 'call-timeout' must be longer than 'connect-timeout'";
    if (tls.certificate.empty() != tls.key.empty())
        return "settings: 'ssl-cert' and 'ssl-key' belong together";
    if (tls.effectiveMode() == TlsMode::VerifyCa && tls.ca.empty() && tls.caPath.empty())
        return "settings: 'ssl-mode' verify-ca wants 'ssl-ca' or 'ssl-capath'";
    return "";
}

}  // namespace

TlsMode Tls::effectiveMode() const {
    if (mode != TlsMode::Default) return mode;
    if (!ca.empty() || !caPath.empty() || !crl.empty() || !crlPath.empty())
        return TlsMode::VerifyIdentity;
    const bool any = !certificate.empty() || !ciphers.empty() || !versions.empty();
    return any ? TlsMode::Required : TlsMode::Off;
}

Settings readSettings(const std::string& options, Error& error) {
    Settings settings;
    OptionFiles files([&](const Option& option) { return apply(settings, option); });
    const std::string named = environment("DBSERVICE_OPTION_FILE");
    std::string complaint =
        named.empty() ? files.readStandard(environment("HOME")) : files.readNamed(named);
    if (complaint.empty()) complaint = readEnvironment(settings);
    if (complaint.empty()) complaint = files.readLines(options);
    if (complaint.empty()) complaint = checkTogether(settings);
    if (!complaint.empty()) error = makeError(kIllFormedSetting, complaint);
    return settings;
}

}  // namespace dbaccess
