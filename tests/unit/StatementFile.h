#ifndef TESTS_UNIT_STATEMENTFILE_H
#define TESTS_UNIT_STATEMENTFILE_H

#include <string>
#include <vector>

// tests/unit/statements.txt: what each operation sends.

struct SentText {
    std::string verb;  ///< the access layer's operation: Query, Insert, Update or Execute
    std::string text;
};

struct Operation {
    std::string name;  ///< as "QueryUser (password)"
    std::vector<SentText> sent;
};

struct Section {
    std::string name;
    std::string reads;  ///< the columns that its queries read, as "string Guid, int Num"
    std::vector<Operation> operations;
};

const std::vector<Section>& statementFile();

#endif
