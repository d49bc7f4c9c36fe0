#ifndef DBSERVICE_CONVENIENCE_GUID_H
#define DBSERVICE_CONVENIENCE_GUID_H

#include <cstddef>
#include <random>
#include <string>

namespace dbservice {

/// A new random UUID (version 4) as its 36-character lower-case text, like `getGuid`, but without
/// printing it. Of the system's own random numbers; throws std::runtime_error should it have none.
/// Threads: any number at once.
inline std::string newGuid() {
    std::random_device random;
    std::string text = "xxxxxxxx-xxxx-4xxx-yxxx-xxxxxxxxxxxx";
    unsigned int bits = 0;
    std::size_t digits = 0;  // taken of these bits
    for (char& place : text) {
        if (place != 'x' && place != 'y') continue;
        if (digits % 8 == 0) bits = random();
        ++digits;
        const unsigned int digit = bits & 0xFU;
        bits >>= 4U;
        place = "0123456789abcdef"[place == 'y' ? (8U | (digit & 3U)) : digit];  // y: the variant
    }
    return text;
}

}  // namespace dbservice

#endif
