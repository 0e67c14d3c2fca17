// The numbers of a motion's frames. Gaps between them are kept as time. Where numbers repeat, fall
// or leave too long a gap, the frame gets the number after the one before it.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "survey/finding_list.h"

namespace survey {

class FrameNumbers {
    // Goes through the numbers in file order.
    struct Counter {
        std::size_t count = 0;     // frames so far
        std::int64_t stated = 0;   // the last frame's number in the file
        std::int64_t reached = 0;  // the last frame's new number, if no gap is too long
        bool isFault = false;      // the last number is missing or not above the one before it

        // Returns the step from the frame before to this one; for the first frame, its number.
        std::int64_t Advance(std::optional<double> number);
    };

  public:
    // Adds the next frame of the file. `number` is nullopt if the frame states none. `at` is where
    // the frame is in the text.
    void Add(std::optional<double> number, const char* at);
    // Undoes the last Add. To be called at most once after each.
    void RemoveLast();

    // To be called after the last Add. Reports faults and gaps, and decides from which length on a
    // gap is too long to be kept.
    void Report(double framesPerSecond, FindingList& findings);

    std::size_t Count() const { return now_.count; }
    // To be called after Report. The duration of the motion in frames, kept gaps included.
    std::int64_t Span() const;

    // To be created after Report. Goes through the frames once more, in file order, and gives each
    // the number to be written.
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
        std::int64_t frames;  // how many are missing
        const char* at;       // the frame after the gap
    };
    struct State : Counter {
        std::size_t gaps = 0;
        std::size_t faults = 0;
    };

    State now_;
    State before_;  // the state before the last Add
    std::vector<Gap> gaps_;
    const char* firstFault_ = nullptr;
    std::int64_t longestGap_ = INT32_MAX;  // frames; longer gaps are closed
};

}  // namespace survey
