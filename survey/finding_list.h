// Collects the findings about a file. All cases with the same code become one finding.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "survey/finding.h"
#include "survey/source_text.h"

namespace survey {

class FindingList {
  public:
    // `source` must outlive this object.
    explicit FindingList(const SourceText& source) : source_(source) {}

    // One occurrence of an oddity.
    struct Case {
        std::string_view code;
        Severity severity = Severity::Note;
        const char* at = nullptr;  // a byte of the source's text; null means the file as a whole
        // `message` and `joint` may hold any bytes. In the finding, bytes that are not UTF-8 become
        // U+FFFD, and long texts are shortened.
        std::string message = {};
        std::string joint = {};
        bool mended = false;
    };

    // Counts a case. The first case with the highest severity gives the finding its position, joint
    // and message. The finding's `mended` is true if that of any of its cases is true.
    void Add(const Case& added);
    // Saves the caller from making a message that Add would not use. If there already is a finding
    // with this code and with this severity or a higher one, counts the cases and returns true.
    // Otherwise does nothing and returns false; the caller then calls Add.
    bool AddAgain(std::string_view code, Severity severity, std::size_t cases = 1);

    // The finding with this code, or null if there is none. The pointer is valid until the next
    // Add.
    Finding* Find(std::string_view code);
    bool HasErrors() const;
    bool HasMended() const;

    // Sets the frame of each finding that has a position to what `frameAt` returns for it. `at` is
    // the position in the source's text, in the line `line`.
    using FrameAt = std::function<std::optional<std::int64_t>(const char* at, std::size_t line)>;
    void SetFrames(const FrameAt& frameAt);

    // All findings, sorted by line and column.
    std::vector<Finding> Sorted() const;

    const SourceText& Source() const { return source_; }

  private:
    const SourceText& source_;
    std::vector<Finding> findings_;
    std::vector<const char*> positions_;  // for each finding; null if it has no position
};

}  // namespace survey
