// Any text as settings, as in an option file: read or refused, and no value stands in an error.
#include "dbaccess/settings/Settings.h"
#include "tests/fuzz/Fuzz.h"

namespace dbaccess {

void tryInput(const std::string& input) {
    Error error;
    const Settings settings = readSettings(input, error);
    if (!error) {
        require(settings.timeouts.answer > settings.timeouts.lock &&
                    settings.timeouts.call > settings.timeouts.connect,
                "what was read is within its bounds");
    }
    const std::string secret = "0h!secret";
    readSettings(input + "=" + secret, error);
    require(error.message.find(secret) == std::string::npos, "an error repeats no value");
}

}  // namespace dbaccess
