#include "tools/dbservicectl/Interrupt.h"

#include <atomic>
#include <csignal>

#include "tools/dbservicectl/Failure.h"

namespace dbservicectl {
namespace {

std::atomic<bool> g_interrupted{false};

extern "C" void noteInterrupt(int /*signal*/) {
    g_interrupted = true;
}

}  // namespace

void watchForInterrupt(WhileReading reading) {
    struct sigaction action {};
    action.sa_handler = noteInterrupt;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    if (reading == WhileReading::GoOn) action.sa_flags |= SA_RESTART;
    ::sigaction(SIGINT, &action, nullptr);
    ::sigaction(SIGTERM, &action, nullptr);
}

void throwIfInterrupted(const std::string& howFar) {
    if (g_interrupted) throw Failure("interrupted: " + howFar, "", Exit::Interrupted);
}

}  // namespace dbservicectl
