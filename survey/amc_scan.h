// Quickly checks whether a frame has the same rows as a pattern, and nothing in it that the plug-in
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

    // Makes this frame the pattern for MatchFrame.
    void Learn(const AmcFrame& first);
    bool HasLearned() const { return !rows_.empty(); }

    // If the frame that begins at `at` matches, sets `number` to its number and returns where the
    // next frame's number is, or the text's end. Otherwise returns null; `number` may change then
    // too.
    const char* MatchFrame(const char* at, std::uint32_t& number) const;

  private:
    struct Row {
        std::string name;
        std::uint64_t word[2];  // the first 16 bytes of the name
        std::uint64_t mask[2];  // which of these bytes belong to the name
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
