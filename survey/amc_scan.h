// Quickly checks whether a frame has the same rows as another one, and nothing that the plug-in
// would misread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "survey/amc_frame.h"

namespace survey {

class AmcScan {
  public:
    explicit AmcScan(std::string_view text) : end_(text.data() + text.size()) {}

    // Makes the rows of this frame the pattern that MatchFrame compares other frames with.
    void Learn(const AmcFrame& first);
    bool HasLearned() const { return !rows_.empty(); }

    // If the frame that begins at `at` matches, sets `number` to its number. Returns where the next
    // frame's number is, or the text's end. If the frame does not match, returns null, and `number`
    // may have any value.
    const char* MatchFrame(const char* at, std::uint32_t& number) const;

  private:
    struct Row {
        std::string name;
        std::uint64_t word[2];  // the first 16 bytes of the name
        std::uint64_t mask[2];  // bytes of 0xFF where `word` holds the name, of 0 after it
        unsigned values;        // number of values in the row
    };

    bool BeginsWith(const Row& row, const char* at) const;
    const char* MatchNumber(const char* at, std::uint32_t& number) const;
    const char* MatchValues(const char* at, unsigned values) const;
    const char* ReadValues(const char* at, unsigned values) const;

    const char* end_;
    std::vector<Row> rows_;
};

}  // namespace survey
