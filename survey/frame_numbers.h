// The numbers of a motion's frames. They may leave gaps; where they repeat, fall or leave too large
// a gap, they go on by one.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "survey/finding_list.h"

namespace survey {

class FrameNumbers {
  public:
    // The frame's number, in file order; none where it has none that is a frame's.
    void Add(std::optional<double> number, const char* at);
    // The frame that was added last does not count.
    void Forget();

    // Once all are added: tells of faults and gaps. More frames than `longestGap` are too many to
    // lack between two frames.
    void Report(double framesPerSecond, FindingList& findings);

    std::size_t Count() const { return count_; }
    // After Report: from before the first frame to after the last one, in frames.
    std::int64_t Span() const;

    // After Report: the numbers as they are to be written. Goes through the frames anew.
    class Rewriter {
      public:
        explicit Rewriter(const FrameNumbers& numbers) : longestGap_(numbers.longestGap_) {}
        std::int64_t Next(std::optional<double> number);

      private:
        std::int64_t longestGap_;
        std::optional<std::int64_t> stated_;
        std::int64_t written_ = 0;
    };

  private:
    struct Gap {
        std::int64_t frames;
        const char* at;
    };

    std::size_t count_ = 0;
    std::optional<std::int64_t> last_;
    std::vector<Gap> gaps_;
    std::size_t faults_ = 0;
    const char* firstFault_ = nullptr;
    std::int64_t longestGap_ = INT32_MAX;
    // Before the last Add.
    std::optional<std::int64_t> lastBefore_;
    std::size_t gapsBefore_ = 0;
    std::size_t faultsBefore_ = 0;
};

}  // namespace survey
