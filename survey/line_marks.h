// Writes a text line by line and records which line of the file each one comes from.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "survey/survey.h"

namespace survey {

class LineWriter {
  public:
    explicit LineWriter(std::size_t likelySize) { mended_.text.reserve(likelySize); }

    // The next line comes from the file's line `original`, counted from 1. With 0, or without a
    // call, it comes from the line after that of the line before.
    void From(std::size_t original);
    std::string& Text() { return mended_.text; }
    void EndLine();
    // Counts a line that was already appended to Text() with its line end.
    void CountLine();

    MendedText Finish() { return std::move(mended_); }

  private:
    MendedText mended_;
    std::size_t line_ = 1;      // of the mended text
    std::size_t original_ = 1;  // the file's line for `line_`, by the marks so far
};

}  // namespace survey
