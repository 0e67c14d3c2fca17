// Writes a text line by line and records which line of the file each one comes from.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "survey/survey.h"

namespace survey {

class LineWriter {
  public:
    // `likelySize` is the expected size of the text in bytes.
    explicit LineWriter(std::size_t likelySize);

    // Says that the line that is being written comes from the file's line `original`, counted from
    // 1. Does nothing if `original` is 0. A line for which the caller does not say this is assumed
    // to come from the next line of the file after the one that the previous line came from.
    void From(std::size_t original);
    // The text so far. The caller appends the line to it.
    std::string& Text() { return mended_.text; }
    // Appends a line feed and begins the next line.
    void EndLine();
    // Begins the next line. To be called instead of EndLine if the caller has already appended the
    // line feed.
    void CountLine();

    MendedText Finish() { return std::move(mended_); }

  private:
    MendedText mended_;
    std::size_t line_ = 1;      // the line of the mended text that is being written, from 1
    std::size_t original_ = 1;  // the line of the file that `line_` comes from, counted from 1
};

}  // namespace survey
