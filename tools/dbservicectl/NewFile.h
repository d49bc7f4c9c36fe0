#ifndef DBSERVICECTL_NEWFILE_H
#define DBSERVICECTL_NEWFILE_H

#include <cstdio>
#include <string>
#include <string_view>

#include "tools/dbservicectl/Session.h"

namespace dbservicectl {

/// A file that only this account may read, and that has its name from the moment on when all of it
/// is on the disk. Until then it lies beside that name, and goes when the object does. All
/// operations throw a Failure that names the file.
class NewFile {
public:
    /// Asks before it replaces a file that is there.
    NewFile(std::string path, const Session& session);
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile();

    void write(std::string_view text);

    /// Gives the file its name. To be called once, at the end.
    void publish();

private:
    [[noreturn]] void fail(int error) const;
    void syncDirectory() const;

    std::string path_;
    std::string temporary_;
    std::FILE* stream_ = nullptr;
};

}  // namespace dbservicectl

#endif
