// A quick look at frames: whether one is like the first, with nothing that the plug-in would read
// otherwise than it is meant.
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

    // What every frame is held against.
    void Learn(const AmcFrame& first);
    bool HasLearned() const { return !rows_.empty(); }

    // The end of the frame that begins with the number at `at`, which is where the next one's
    // number is; null where it must be read. `number` is set where it is not null.
    const char* Look(const char* at, std::uint32_t& number) const;

  private:
    struct Row {
        std::string name;
        std::uint64_t word[2];  // the name's first bytes
        std::uint64_t mask[2];
        unsigned values;
    };

    bool BeginsWith(const Row& row, const char* at) const;
    const char* LookAtNumber(const char* at, std::uint32_t& number) const;
    const char* LookAtValues(const char* at, unsigned values) const;
    const char* ReadValues(const char* at, unsigned values) const;

    const char* end_;
    std::vector<Row> rows_;
};

}  // namespace survey
