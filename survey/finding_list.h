// Gathers a file's findings: one of each code, however many cases there are.
#pragma once

#include <cstddef>
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

    // One case of a finding.
    struct Case {
        std::string_view code;
        Severity severity = Severity::Note;
        const char* at = nullptr;  // a byte of the source's text; null means the file as a whole
        // `message` and `joint` may hold any bytes. Bytes that are not UTF-8 become U+FFFD; long
        // texts are shortened.
        std::string message = {};
        std::string joint = {};
        bool mended = false;
    };

    // Counts a case. The first case of the highest severity gives the finding its position, joint
    // and message. The finding is mended if any case is.
    void Add(const Case& added);
    // If there already is a finding of this code with this severity or a higher one, counts further
    // cases of it and returns true. Such cases need no message, because the finding keeps its own.
    // Otherwise does nothing and returns false; then call Add.
    bool AddAgain(std::string_view code, Severity severity, std::size_t cases = 1);

    // The finding of this code, or null if there is none. Valid until the next Add.
    Finding* Find(std::string_view code);
    bool HasErrors() const;
    bool HasMended() const;

    // All findings, by line and column.
    std::vector<Finding> Sorted() const;

    const SourceText& Source() const { return source_; }

  private:
    const SourceText& source_;
    std::vector<Finding> findings_;
};

}  // namespace survey
