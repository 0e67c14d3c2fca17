// Writes the rows of a mended text on several threads.
#pragma once

#include <cstddef>
#include <string_view>

#include "survey/bvh_plan.h"
#include "survey/bvh_rows.h"
#include "survey/bvh_skeleton.h"
#include "text/byte_sink.h"

namespace survey {

// Writes the rows of all frames to `out`, each with a line feed, on at most `threads` threads, the
// calling one included. `text` is the file that the frames were read from. If FindPlainRows has set
// `frames`, their values are read now. The result does not depend on the number of threads. Throws
// std::bad_alloc, and what `out` throws.
void WriteMendedRows(const BvhSection& section, const BvhPlan& plan, const BvhFrames& frames,
                     std::string_view text, std::size_t threads, text::ByteSink& out);

}  // namespace survey
