#pragma once

#include <cstddef>
#include <cstdint>

namespace threads {

// The environment variable that says how many threads an import or an export may use. If it is not
// set, or if it is not a number from 1 to 1000, they use as many as there are processors.
inline constexpr char kVariable[] = "ZKMOCAP_THREADS";

// Returns the number in the environment variable. Without it, it is the number of processors that
// the system lets this process use. It is never above 32.
std::size_t Most();

// Returns on how many threads, the calling one included, to do work on `bytes` bytes. This is
// Most(), but without the environment variable it is less if there is so little work that another
// thread would hardly be worth its start.
std::size_t CountFor(std::uint64_t bytes);

}  // namespace threads
