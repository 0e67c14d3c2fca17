// Finds and reads the rows of a motion without oddities, on several threads.
#pragma once

#include <cstddef>
#include <string_view>

#include "survey/bvh_rows.h"
#include "survey/bvh_skeleton.h"

namespace survey {

// The size of the parts in bytes in which threads find rows.
inline constexpr std::size_t kPlainRowBytes = std::size_t{128} << 10U;

// Sets everything in `frames` except the values to what ReadRows sets it to, if the rows go to the
// end of the text and ScanRows has found them plain. `rows` is the number of rows that it has
// found. Works on `threads` threads, the calling one included. Divides the rows into parts of about
// `partBytes` bytes. Returns false, and `frames` may have any content, if there are no rows, or no
// channels, if there are blank lines between the rows, or lines that end with a carriage return
// alone. ReadRows can read them.
bool FindPlainRows(const BvhSection& section, std::string_view text, std::size_t rows,
                   std::size_t threads, BvhFrames& frames, std::size_t partBytes = kPlainRowBytes);

// Reads the values of rows that FindPlainRows has found.
class PlainRowValues {
  public:
    // `frames` is what FindPlainRows has set. It and `text` must outlive this object.
    PlainRowValues(const BvhFrames& frames, std::string_view text)
        : frames_(frames), last_(text.data() + text.size()) {}

    // Reads the values of `count` frames from the one with index `first` on. Stores them frame by
    // frame. Several threads may call this function at the same time. Throws std::bad_alloc.
    void Read(std::size_t first, std::size_t count, double* values) const;

  private:
    void ReadByWords(const BvhRow& row, double* values) const;

    const BvhFrames& frames_;
    const char* last_;
};

// Finds the rows as FindPlainRows does, and reads their values.
bool ReadPlainRows(const BvhSection& section, std::string_view text, std::size_t rows,
                   std::size_t threads, BvhFrames& frames, std::size_t partBytes = kPlainRowBytes);

}  // namespace survey
