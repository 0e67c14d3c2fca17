#include "threads/thread_count.h"

#include <algorithm>
#include <cstdlib>
#include <thread>

#include "threads/helpers.h"

#if defined(__linux__)
#include <sched.h>
#endif

namespace threads {
namespace {

// So many bytes of text take about a millisecond to read.
constexpr std::uint64_t kBytesPerThread = std::uint64_t{512} << 10U;
constexpr std::size_t kMostRequested = 1000;
constexpr std::size_t kMostUsed = 1 + Helpers::kMost;

// Returns 0 if there is no valid number.
std::size_t Requested() {
    const char* at = std::getenv(kVariable);
    if (at == nullptr || *at == '\0') return 0;
    std::size_t count = 0;
    for (; *at != '\0'; ++at) {
        if (*at < '0' || *at > '9') return 0;
        count = count * 10 + static_cast<std::size_t>(*at - '0');
        if (count > kMostRequested) return 0;
    }
    return count;
}

// The number of processors that the system lets this process use. std::thread::hardware_concurrency
// counts all processors, and reads a file each time.
std::size_t Processors() {
#if defined(__linux__)
    cpu_set_t allowed;
    if (sched_getaffinity(0, sizeof allowed, &allowed) == 0)
        return static_cast<std::size_t>(std::max(CPU_COUNT(&allowed), 1));
#endif
    return std::max(1U, std::thread::hardware_concurrency());
}

}  // namespace

std::size_t Most() {
    const std::size_t requested = Requested();
    return std::min(requested != 0 ? requested : Processors(), kMostUsed);
}

std::size_t CountFor(std::uint64_t bytes) {
    if (Requested() != 0) return Most();
    return static_cast<std::size_t>(std::clamp<std::uint64_t>(bytes / kBytesPerThread, 1, Most()));
}

}  // namespace threads
