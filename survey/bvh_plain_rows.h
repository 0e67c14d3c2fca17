// Reads the rows of a motion without oddities, on several threads.
#pragma once

#include <cstddef>
#include <string_view>

#include "survey/bvh_rows.h"
#include "survey/bvh_skeleton.h"

namespace survey {

// The size of the parts in bytes that threads read.
inline constexpr std::size_t kPlainRowBytes = std::size_t{128} << 10U;

// Sets `frames` to what ReadRows sets it to, if the rows go to the end of the text and ScanRows has
// found them plain. `rows` is the number of rows that it has found. Reads on `threads` threads, the
// calling one included. Divides the rows into parts of about `partBytes` bytes. Returns false, and
// `frames` may have any content, if it cannot read the rows: if there are none, or no channels, if
// there are blank lines between them, lines that end with a carriage return alone, or numbers that
// textio::ReadRow leaves to others. ReadRows can read them.
bool ReadPlainRows(const BvhSection& section, std::string_view text, std::size_t rows,
                   std::size_t threads, BvhFrames& frames, std::size_t partBytes = kPlainRowBytes);

}  // namespace survey
