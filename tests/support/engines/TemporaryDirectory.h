#ifndef TESTS_SUPPORT_ENGINES_TEMPORARYDIRECTORY_H
#define TESTS_SUPPORT_ENGINES_TEMPORARYDIRECTORY_H

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

/// An empty directory that only this account can enter. It is removed with all its content by the
/// destructor, and also when the process ends without one, by a crash or an interrupt: a shell
/// removes it when its input ends.
class TemporaryDirectory {
public:
    /// Throws std::system_error when it cannot be made.
    TemporaryDirectory() {
        if (::mkdtemp(path_.data()) == nullptr) fail("mkdtemp");
        // A process killed at the same moment may still be writing a file: hence the second round.
        guard_ = ::popen(("exec >/dev/null 2>&1; trap '' HUP INT TERM; read -r _; rm -rf '" +
                          path_ + "' || { sleep 1; rm -rf '" + path_ + "'; }")
                             .c_str(),
                         "we");
        if (guard_ == nullptr) fail("popen");
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    ~TemporaryDirectory() { ::pclose(guard_); }

    const std::string& path() const { return path_; }

private:
    [[noreturn]] static void fail(const char* what) {
        throw std::system_error(errno, std::generic_category(), what);
    }

    std::string path_ = std::filesystem::temp_directory_path() / "dbservice-XXXXXX";
    std::FILE* guard_ = nullptr;
};

#endif
