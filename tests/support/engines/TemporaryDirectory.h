#ifndef TESTS_SUPPORT_ENGINES_TEMPORARYDIRECTORY_H
#define TESTS_SUPPORT_ENGINES_TEMPORARYDIRECTORY_H

#include <sys/types.h>

#include <string>

/// An empty directory that only this account can enter. It is removed with all its content by the
/// destructor, and also when the process ends without one, by a crash or an interrupt.
class TemporaryDirectory {
public:
    /// Throws std::system_error when it cannot be made.
    TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    ~TemporaryDirectory();

    const std::string& path() const { return path_; }

private:
    std::string path_;
    int guardInput_ = -1;  // its end of file is the guard's order to remove the directory
    pid_t guard_ = -1;
    pid_t owner_;
};

#endif
