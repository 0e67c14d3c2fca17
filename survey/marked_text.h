// Where the lines of a text that is written anew come from.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "survey/source_text.h"
#include "survey/survey.h"

namespace survey {

// The text so far with its lines counted.
class MarkedText {
  public:
    explicit MarkedText(const SourceText& source) : source_(source) {}

    // What is appended from here on comes from the line of `at`, a byte of the source.
    void Mark(const char* at) { marks_.push_back({text.size(), at}); }
    // Counts the lines. To be called once.
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
