// Scans the rows of a long motion on several threads.
#pragma once

#include <cstddef>
#include <string_view>

#include "survey/byte_masks.h"
#include "survey/row_scan.h"

namespace survey {

// The size of a part in bytes. It is large enough to be worth the attention of a thread.
inline constexpr std::size_t kScannedBytes = std::size_t{128} << 10U;

// Returns what ScanRows returns for the same text. Scans it on `threads` threads, the calling one
// included. Divides it after line feeds into parts of about `partBytes` bytes, which must not be 0.
// Starts no thread if the rows end in the first part.
RowScan ScanRowsInParts(std::string_view text, std::size_t words, std::size_t threads,
                        std::size_t partBytes = kScannedBytes,
                        ByteMasksKernel kernel = ChooseByteMasks());

// On how many threads to scan a text of so many bytes.
std::size_t ScanThreads(std::size_t bytes);

}  // namespace survey
