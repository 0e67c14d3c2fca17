// Matches the frames of a motion ahead of the reader, on several threads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "survey/amc_scan.h"

namespace survey {

class AmcMatches {
  public:
    // The sizes in bytes of what is matched ahead, and of the part of it that a thread matches.
    // Tests make them smaller.
    struct Sizes {
        std::size_t window = std::size_t{16} << 20U;
        std::size_t part = std::size_t{128} << 10U;
    };

    // Matches on `threads` threads, the calling one included. `scan`, which must have learned the
    // pattern before the first call of MatchFrame, must outlive this object.
    AmcMatches(const AmcScan& scan, std::string_view text, std::size_t threads, Sizes sizes);
    AmcMatches(const AmcScan& scan, std::string_view text, std::size_t threads)
        : AmcMatches(scan, text, threads, Sizes()) {}

    // Does what scan.MatchFrame does. `at` must not be before the one of the last call.
    const char* MatchFrame(const char* at, std::uint32_t& number);

  private:
    struct Match {
        const char* at;
        const char* end;
        std::uint32_t number;
    };
    using Part = std::vector<Match>;

    void MatchWindow(const char* first);
    void MatchPart(const char* first, const char* last, Part& part) const;
    const char* NextFrame(const char* at, const char* last) const;
    const Match* Find(const char* at);

    const AmcScan& scan_;
    const char* end_;
    std::size_t threads_;
    Sizes sizes_;
    std::vector<Part> parts_;          // the matches of the present window, in order
    const char* windowEnd_ = nullptr;  // null before the first window
    std::size_t part_ = 0;             // where Find found the last match, or did not find it
    std::size_t match_ = 0;
};

// On how many threads to match frames of so many bytes.
std::size_t MatchThreads(std::size_t bytes);

}  // namespace survey
