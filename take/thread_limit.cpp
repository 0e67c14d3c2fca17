#include "take/thread_limit.h"

#include <algorithm>
#include <cstdlib>
#include <string>

#include "threads/thread_count.h"

namespace take {

void LimitThreads(std::size_t count) {
    const std::size_t limited = std::clamp<std::size_t>(count, 1, kMostThreads);
    setenv(threads::kVariable, std::to_string(limited).c_str(), 1);
}

bool IsThreadCountSet() {
    return std::getenv(threads::kVariable) != nullptr;
}

}  // namespace take
