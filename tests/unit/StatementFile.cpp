#include "tests/unit/StatementFile.h"

#include <fstream>
#include <stdexcept>

namespace {

constexpr std::size_t kIndent = 4;
constexpr std::size_t kTextColumn = 12;

std::vector<Section> read(const std::string& path) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error("cannot read " + path);
    std::vector<Section> sections;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#') continue;
        if (line.rfind("== ", 0) == 0) {
            sections.push_back({line.substr(3), "", {}});
        } else if (line[0] != ' ') {
            sections.back().operations.push_back({line, {}});
        } else {
            const std::string verb = line.substr(kIndent, line.find(' ', kIndent) - kIndent);
            const std::string text = line.substr(kTextColumn);
            if (verb == "Reads")
                sections.back().reads = text;
            else
                sections.back().operations.back().sent.push_back({verb, text});
        }
    }
    return sections;
}

}  // namespace

const std::vector<Section>& statementFile() {
    static const std::vector<Section> sections = read(SOURCE_DIR "/tests/unit/statements.txt");
    return sections;
}
