#ifndef DBSERVICECTL_REPORT_H
#define DBSERVICECTL_REPORT_H

#include <functional>
#include <string>
#include <vector>

#include "tools/dbservicectl/Output.h"
#include "tools/dbservicectl/Session.h"

namespace dbservicectl {

/// What `doctor` has seen, a line each, and what of it is wrong.
class Report {
public:
    void tell(const std::string& what, const std::string& value);
    /// @param advice  what to do about it.
    void problem(const std::string& what, const std::string& problem, const std::string& advice);

    /// Looks at one thing. When that fails it is a problem and the others are looked at all the
    /// same; but a lost connection is thrown on.
    /// @return  whether it did not fail.
    bool look(const std::string& what, const std::function<void()>& at);

    void print(const Session& session) const;
    std::size_t problems() const;

private:
    struct Line {
        std::string what;
        Cell value;
        Cell problem;
        Cell advice;
    };
    std::vector<Line> lines_;
};

/// Bytes for people, as "12.3 MB" or "1.2 GB".
std::string sizeText(std::uint64_t bytes);

/// How thoroughly doctor looks at a file.
enum class Depth {
    Quick,  ///< not at all its pages
    Usual,  ///< at all of them, for a limited time
    Full,   ///< the indexes against the rows too, however long it takes
};

/// Looks at a server, and at the database on it. @return  whether that is there.
bool examineServer(Session& session, Report& report);

/// Looks at the file of an embedded database and at where it lies. @return  whether it is there.
bool examineFile(Session& session, Depth depth, Report& report);

}  // namespace dbservicectl

#endif
