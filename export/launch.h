// How threads are started.
// Internal to export/.
#pragma once

#include <future>

namespace exporters {

// If no thread can be started, std::async normally catches the exception and computes the block
// when its result is needed. WebAssembly without threads aborts instead, so no thread is requested
// there.
#if defined(__EMSCRIPTEN__) && !defined(__EMSCRIPTEN_PTHREADS__)
inline constexpr std::launch kLaunch = std::launch::deferred;
#else
inline constexpr std::launch kLaunch = std::launch::async | std::launch::deferred;
#endif

}  // namespace exporters
