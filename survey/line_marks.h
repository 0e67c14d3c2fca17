// A text that is written line by line and remembers which line of the file each one is from.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "survey/survey.h"

namespace survey {

class LineWriter {
  public:
    explicit LineWriter(std::size_t likelySize) { mended_.text.reserve(likelySize); }

    // Further lines are from the file's line `original` on; 0: from the one after the last.
    void From(std::size_t original);
    std::string& Text() { return mended_.text; }
    void EndLine();
    // Of a line whose text, its end included, is there already.
    void CountLine();

    MendedText Finish() { return std::move(mended_); }

  private:
    MendedText mended_;
    std::size_t line_ = 1;
    std::size_t original_ = 1;  // of this line, by the marks so far
};

}  // namespace survey
