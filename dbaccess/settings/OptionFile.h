#ifndef DBSERVICE_DBACCESS_SETTINGS_OPTIONFILE_H
#define DBSERVICE_DBACCESS_SETTINGS_OPTIONFILE_H

#include <functional>
#include <string>

namespace dbaccess {

/// A setting as it was written, and where, as "/etc/my.cnf, line 3".
struct Option {
    std::string key;  ///< with dashes
    std::string value;
    std::string where;
};

/// Reads text in the client's option-file format. It is read here, and not by the client library,
/// which would also take what it says of plugins to load, statements to run and files to give away.
///
/// Each call hands over the options in the order of the text until `take` gives a complaint, and
/// gives that back; "": all went well. Complaints repeat no value.
class OptionFiles {
public:
    using Take = std::function<std::string(const Option& option)>;

    explicit OptionFiles(Take take) : take_(std::move(take)) {}

    /// Group [dbservice] of the files where the client looks for them. What is not there, or cannot
    /// be read by this account, is passed over; the latter is logged.
    std::string readStandard(const std::string& home);

    /// Group [dbservice] of a file that must be there, as must those that it includes.
    std::string readNamed(const std::string& path) { return readFile(path, true, 0); }

    /// Lines without groups.
    std::string readLines(const std::string& text);

private:
    struct Source;
    std::string readFile(const std::string& path, bool required, int depth);
    std::string readDirectory(const std::string& path, bool required, int depth);
    std::string readText(const std::string& text, Source source);
    std::string readLine(const std::string& line, Source& source);
    std::string include(const std::string& line, const Source& source);

    const Take take_;
};

}  // namespace dbaccess

#endif
