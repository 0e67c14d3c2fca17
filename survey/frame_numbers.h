// The numbers of a motion's frames. They may leave gaps; where they repeat, fall or leave too large
// a gap, they go on by one.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "survey/finding_list.h"

namespace survey {

class FrameNumbers {
    // Follows the numbers as they are stated.
    struct Counter {
        std::size_t count = 0;
        std::int64_t stated = 0;   // the number of the last frame
        std::int64_t reached = 0;  // what it becomes where no gap is too long
        bool isFault = false;      // the last number was none, or not above the one before

        // How far the frame is from the one before; its number where it is the first.
        std::int64_t Advance(std::optional<double> number);
    };

  public:
    // The frame's number, in file order; none where it has none that is a frame's.
    void Add(std::optional<double> number, const char* at);
    // The frame that was added last does not count.
    void Forget();

    // Once all are added: tells of faults and gaps. More frames than `longestGap` are too many to
    // lack between two frames.
    void Report(double framesPerSecond, FindingList& findings);

    std::size_t Count() const { return now_.count; }
    // After Report: from before the first frame to after the last one, in frames.
    std::int64_t Span() const;

    // After Report: the numbers as they are to be written. Goes through the frames anew.
    class Rewriter {
      public:
        explicit Rewriter(const FrameNumbers& numbers);
        std::int64_t Next(std::optional<double> number);

      private:
        Counter counter_;
        std::int64_t longestGap_;
        std::int64_t highestFirst_;
        std::int64_t written_ = 0;
    };

  private:
    struct Gap {
        std::int64_t frames;
        const char* at;
    };
    struct State : Counter {
        std::size_t gaps = 0;
        std::size_t faults = 0;
    };

    State now_;
    State before_;  // the last Add
    std::vector<Gap> gaps_;
    const char* firstFault_ = nullptr;
    std::int64_t longestGap_ = INT32_MAX;
};

}  // namespace survey
