// Writes a text and records which line of the source each part comes from.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "survey/source_text.h"
#include "survey/survey.h"

namespace survey {

// Unlike LineWriter, needs no line numbers: they are counted at the end. `source` must outlive it.
class MarkedText {
  public:
    explicit MarkedText(const SourceText& source) : source_(source) {}

    // What is appended to `text` after this call comes from the source's line that holds `at`,
    // which points into the source's text.
    void Mark(const char* at) { marks_.push_back({text.size(), at}); }
    // Counts the lines and moves the text out. To be called once.
    MendedText Finish();

    std::string text;

  private:
    struct Origin {
        std::size_t offset;  // in `text`
        const char* at;
    };

    const SourceText& source_;
    std::vector<Origin> marks_;
};

}  // namespace survey
