#include "tests/support/engines/TemporaryDirectory.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "tests/support/engines/Process.h"

namespace {

// A process killed at the same moment may still be writing a file: hence the second round.
constexpr char kGuardScript[] = R"(read -r _; rm -rf "$1" || { sleep 1; rm -rf "$1"; })";

[[noreturn]] void fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

}  // namespace

TemporaryDirectory::TemporaryDirectory()
    : path_((std::filesystem::temp_directory_path() / "dbservice-XXXXXX").string()),
      owner_(::getpid()) {
    if (::mkdtemp(path_.data()) == nullptr) fail("mkdtemp");
    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0) fail("pipe");
    guard_ = startProcess({"sh", "-c", kGuardScript, "sh", path_}, {pipe[0], "/dev/null"},
                          Orphan::Lives);
    ::close(pipe[0]);
    guardInput_ = pipe[1];
}

TemporaryDirectory::~TemporaryDirectory() {
    ::close(guardInput_);
    if (::getpid() == owner_) ::waitpid(guard_, nullptr, 0);
}
