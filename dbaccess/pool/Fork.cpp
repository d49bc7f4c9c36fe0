#include "dbaccess/pool/Fork.h"

#include <pthread.h>

#include <atomic>

#include "dbaccess/stats/Counters.h"

namespace dbaccess {
namespace {

std::atomic<unsigned int> generation{0};

// Registered as the library is loaded: at the first use, a fork on another thread could come
// between.
const int registered = ::pthread_atfork(nullptr, nullptr, [] {
    ++generation;
    forgetParentsCounts();
});

}  // namespace

unsigned int forkGeneration() {
    return generation.load(std::memory_order_relaxed);
}

}  // namespace dbaccess
