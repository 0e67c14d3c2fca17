#pragma once

namespace support {

// Long tests divide their size by this, because they take five times as long under the address
// sanitizer.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr int kShorter = 5;
#else
inline constexpr int kShorter = 1;
#endif

}  // namespace support
