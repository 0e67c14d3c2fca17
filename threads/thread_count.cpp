#include "threads/thread_count.h"

#include <algorithm>
#include <cstdlib>
#include <thread>

namespace threads {
namespace {

// So many bytes of text take about a millisecond to read.
constexpr std::uint64_t kBytesPerThread = std::uint64_t{512} << 10U;
constexpr std::size_t kMostRequested = 1000;

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

}  // namespace

std::size_t Most() {
    const std::size_t requested = Requested();
    return requested != 0 ? requested : std::max(1U, std::thread::hardware_concurrency());
}

std::size_t CountFor(std::uint64_t bytes) {
    if (const std::size_t requested = Requested(); requested != 0) return requested;
    return static_cast<std::size_t>(std::clamp<std::uint64_t>(bytes / kBytesPerThread, 1, Most()));
}

}  // namespace threads
