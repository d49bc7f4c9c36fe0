#ifndef TESTS_SUPPORT_ENGINES_PROCESS_H
#define TESTS_SUPPORT_ENGINES_PROCESS_H

#include <sys/types.h>

#include <string>
#include <vector>

/// Where a new process reads from and writes to; it inherits no other descriptor.
struct ProcessStreams {
    int input = -1;      ///< -1: nothing to read
    std::string output;  ///< the file that standard output and standard error are appended to
};

/// What becomes of a new process when the calling thread ends.
enum class Orphan {
    Dies,  ///< it is killed
    Lives
};

/// Starts a program, looked for along PATH and in the folders of system programs.
/// Throws std::system_error when no process can be made; a program that is not there exits with
/// 127.
pid_t startProcess(std::vector<std::string> command, const ProcessStreams& streams, Orphan orphan);

#endif
