#include "tests/support/engines/Process.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <system_error>

namespace {

// Between fork and exec only calls that are safe in a signal handler: other threads may have held
// any lock.
[[noreturn]] void become(char* const* arguments, const ProcessStreams& streams, Orphan orphan,
                         pid_t parent) {
    if (orphan == Orphan::Dies) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != parent) ::_exit(1);  // it died before it could be watched
    }
    ::setsid();  // an interrupt from the terminal is the test process' business
    const int input = streams.input < 0 ? ::open("/dev/null", O_RDONLY) : streams.input;
    const int output = ::open(streams.output.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    ::dup2(input, STDIN_FILENO);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(output, STDERR_FILENO);
    ::close_range(STDERR_FILENO + 1, ~0U, 0);
    ::execvp(arguments[0], arguments);
    ::_exit(127);
}

}  // namespace

pid_t startProcess(std::vector<std::string> command, const ProcessStreams& streams, Orphan orphan) {
    const char* path = std::getenv("PATH");
    // "env" becomes the program, so that the process id stays.
    command.insert(command.begin(),
                   {"env", std::string("PATH=") + (path == nullptr ? "/usr/bin:/bin" : path) +
                               ":/usr/local/sbin:/usr/sbin:/sbin"});
    std::vector<char*> arguments;
    for (std::string& argument : command)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    const pid_t parent = ::getpid();
    const pid_t process = ::fork();
    if (process == 0) become(arguments.data(), streams, orphan, parent);
    if (process < 0) throw std::system_error(errno, std::generic_category(), "fork");
    return process;
}
