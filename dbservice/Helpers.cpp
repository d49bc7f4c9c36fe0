#include "dbservice/Helpers.h"

#include <uuid/uuid.h>

#include <cstdio>

namespace dbservice {

std::string Itostr(int value) {
    return std::to_string(value);
}

std::string Uitostr(unsigned int value) {
    return std::to_string(value);
}

std::string getGuid() {
    uuid_t uuid;
    char text[UUID_STR_LEN];
    uuid_generate(uuid);
    uuid_unparse(uuid, text);
    std::puts(text);
    return text;
}

}  // namespace dbservice
