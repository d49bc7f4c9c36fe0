#include "dbaccess/pool/HostText.h"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "dbaccess/error/ErrorNumber.h"

namespace dbaccess {
namespace {

constexpr std::string_view kEmbeddedPrefix = "sqlite:";
constexpr unsigned int kDefaultPort = 3306;
constexpr unsigned int kHighestPort = 65535;

/// Without the text itself: somebody may have written a password into it.
Error illFormed(std::size_t entry) {
    return makeError(kUnknownHost, "host text: entry " + std::to_string(entry) +
                                       " is neither a name, an address "
                                       "nor a path, with or without a port");
}

/// The client library reads `;`, `=` and `://` in a host as settings of its own, down to plugins to
/// load: only what a name, an address or a path is made of may reach it.
bool isHostCharacter(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte > ' ' && byte != 0x7F &&
           std::string_view(";=\"'`\\,@?&").find(c) == std::string_view::npos;
}

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

bool parsePort(std::string_view digits, unsigned int& port) {
    const auto end = digits.data() + digits.size();
    const auto parsed = std::from_chars(digits.data(), end, port);
    return parsed.ec == std::errc() && parsed.ptr == end && port >= 1 && port <= kHighestPort;
}

bool isName(std::string_view name) {
    return !name.empty() && name.find_first_of("/[]") == std::string_view::npos;
}

/// "name", "name:port", "[v6]", "[v6]:port", a bare IPv6 address, or a socket's path.
bool parseServer(std::string_view entry, unsigned int port, ServerAddress& server) {
    if (entry.empty() || !std::all_of(entry.begin(), entry.end(), isHostCharacter)) return false;
    server.port = port == 0 ? kDefaultPort : port;
    if (entry.front() == '/') {
        server.socket = entry;
        return true;
    }
    const bool bracketed = entry.front() == '[';
    const auto nameEnd = bracketed ? entry.find(']') : entry.find(':');
    const bool bareV6 = !bracketed && std::count(entry.begin(), entry.end(), ':') > 1;
    if (nameEnd == std::string_view::npos || bareV6) {
        server.name = entry;
        return isName(entry);
    }
    server.name = bracketed ? entry.substr(1, nameEnd - 1) : entry.substr(0, nameEnd);
    const auto rest = entry.substr(nameEnd + (bracketed ? 1 : 0));
    if (!isName(server.name)) return false;
    return rest.empty() || (rest.front() == ':' && parsePort(rest.substr(1), server.port));
}

}  // namespace

HostText parseHost(const std::string& text, unsigned int port) {
    HostText host;
    if (std::string_view(text).substr(0, kEmbeddedPrefix.size()) == kEmbeddedPrefix) {
        host.engine = Engine::Embedded;
        host.directory = text.substr(kEmbeddedPrefix.size());
        if (host.directory.empty())
            host.error = makeError(kUnknownHost, "host text: 'sqlite:' without a directory");
        return host;
    }
    if (port > kHighestPort) {
        host.error = makeError(kUnknownHost, "ill-formed port " + std::to_string(port));
        return host;
    }
    std::string_view rest = text;
    for (bool more = true; more && !host.error;) {
        const auto comma = rest.find(',');
        const auto entry = trimmed(rest.substr(0, comma));
        ServerAddress server;
        const bool parsed = parseServer(entry, port, server);
        host.servers.push_back(std::move(server));
        if (!parsed) host.error = illFormed(host.servers.size());
        more = comma != std::string_view::npos;
        if (more) rest.remove_prefix(comma + 1);
    }
    return host;
}

}  // namespace dbaccess
