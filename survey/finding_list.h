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
    // `source` stays as long as this.
    explicit FindingList(const SourceText& source) : source_(source) {}

    // What a case of a code is, besides how often.
    struct Case {
        std::string_view code;
        Severity severity = Severity::Note;
        const char* at = nullptr;  // a byte of the text; null: the file as a whole
        // May hold any bytes: those that are not UTF-8 become U+FFFD, and long texts are shortened.
        std::string message = {};
        std::string joint = {};
        bool mended = false;
    };

    // Counts a case. The first of the highest severity gives position, joint and message; the
    // finding is mended where any case is.
    void Add(const Case& added);
    // Counts further cases of a code that has this severity or a higher one, which need no message;
    // false, with nothing done, where Add must be called.
    bool AddAgain(std::string_view code, Severity severity, std::size_t cases = 1);

    // Null where there is none. Valid until the next Add.
    Finding* Find(std::string_view code);
    bool HasErrors() const;
    bool HasMended() const;

    // All, by line and column.
    std::vector<Finding> Sorted() const;

    const SourceText& Source() const { return source_; }

  private:
    const SourceText& source_;
    std::vector<Finding> findings_;
};

}  // namespace survey
