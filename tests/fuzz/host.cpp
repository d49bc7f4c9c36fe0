// A host text is taken or refused. The servers of one that is taken have names in which the client
// library finds no settings; a refusal does not repeat a password that stood in the text.
#include "dbaccess/pool/HostText.h"

#include "tests/fuzz/Fuzz.h"

void dbaccess::tryInput(const std::string& input) {
    // An asterisk stands for a password, which no mutation shall change.
    std::string text;
    for (const char c : input)
        text += c == '*' ? "s3cret" : std::string(1, c);
    const HostText host = parseHost(text, 0);
    require(host.error.number == 0 || host.error.number == kUnknownHost, "a refusal is 2005");
    const std::string& message = host.error.message;
    require(text.find_first_of("@=;") == std::string::npos || text.size() < 4 ||
                (message.find("s3cret") == std::string::npos &&
                 message.find(text) == std::string::npos),
            "a refusal does not repeat what may be a password");
    if (host.error || host.engine == Engine::Embedded) return;
    for (const ServerAddress& server : host.servers)
        require(
            server.name.empty() != server.socket.empty() &&
                server.name.find_first_of("/[]") == std::string::npos &&
                (server.name + server.socket).find_first_of(" ,;='\"\n@\\") == std::string::npos &&
                server.port - 1 < 65535,
            "a name or a path without signs, and a port");
}
