#pragma once

namespace support {

// Long tests divide their size by this: under the sanitizers all takes five times as long.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr int kShorter = 5;
#else
inline constexpr int kShorter = 1;
#endif

}  // namespace support
