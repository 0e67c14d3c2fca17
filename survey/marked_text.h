// Writes a text and records which line of the source each part comes from.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "survey/source_text.h"
#include "survey/survey.h"

namespace survey {

// Does the same as LineWriter, but keeps the text in memory and gets pointers into the source
// instead of line numbers. Finish computes the line numbers. `source` must outlive this object.
class MarkedText {
  public:
    explicit MarkedText(const SourceText& source) : source_(source) {}

    // Says that what is appended to `text` after this call comes from the line of the source that
    // holds the byte `at`. `at` must point into the source's text.
    void Mark(const char* at) { marks_.push_back({text.size(), at}); }
    // Computes the line numbers of all marks and moves the text out. Must be called only once.
    std::shared_ptr<const MendedText> Finish();

    std::string text;  // the mended text; the caller appends to it

  private:
    struct Origin {
        std::size_t offset;  // byte offset in `text`
        const char* at;      // points into the source's text
    };

    const SourceText& source_;
    std::vector<Origin> marks_;
};

}  // namespace survey
