// Writes a text line by line and records which line of the file each one comes from.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "survey/survey.h"
#include "text/byte_sink.h"

namespace survey {

// The functions throw std::bad_alloc, and what the sink throws.
class LineWriter {
  public:
    // `out` must outlive this object.
    explicit LineWriter(text::ByteSink& out) : out_(out) {}

    // Says that the line that is being written comes from the file's line `original`, counted from
    // 1. Does nothing if `original` is 0. A line for which the caller does not say this is assumed
    // to come from the next line of the file after the one that the previous line came from.
    void From(std::size_t original);
    // The last lines so far. The caller appends the line to them.
    std::string& Text() { return text_; }
    // Appends a line feed and begins the next line.
    void EndLine();
    // Begins the next line. To be called instead of EndLine if the caller has already written the
    // line with its line feed.
    void CountLine();
    // Writes the lines so far. The caller may append the next lines to the sink that this returns,
    // and must then call CountLine for each of them.
    text::ByteSink& Flush();

    // Writes the last lines. Returns the marks in the order of the text.
    std::vector<LineMark> Finish();

  private:
    text::ByteSink& out_;
    std::string text_;  // not written yet
    std::vector<LineMark> marks_;
    std::size_t line_ = 1;      // the line of the mended text that is being written, from 1
    std::size_t original_ = 1;  // the line of the file that `line_` comes from, counted from 1
};

}  // namespace survey
