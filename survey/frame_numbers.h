// Checks the numbers that the frames of an AMC motion have in the file, and renumbers the frames. A
// gap in the numbers is kept, because it is time without frames. A frame's number is faulty if it
// is missing, or if it is not greater than the number of the frame before. If a frame's number is
// faulty, or if the gap before it is too long, the frame's new number is one more than that of the
// frame before.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "survey/finding_list.h"

namespace survey {

class FrameNumbers {
    // Computes the new numbers for the frames in file order. Keeps every gap, however long it is.
    struct Counter {
        std::size_t count = 0;  // number of frames so far
        // The last frame's number in the file. If that number is missing, this is one more than the
        // value for the frame before; it is 1 for the first frame.
        std::int64_t stated = 0;
        std::int64_t reached = 0;  // the last frame's new number
        bool isFault = false;      // whether the last frame's number in the file is faulty

        // Adds a frame. Returns by how much its new number is greater than the new number of the
        // frame before. For the first frame, returns its new number.
        std::int64_t Advance(std::optional<double> number);
    };

  public:
    // Adds the next frame of the file. `number` is its number in the file, or nullopt if it has
    // none. `at` points to the frame in the source's text.
    void Add(std::optional<double> number, const char* at);
    // Undoes the last Add. Must not be called twice without an Add in between.
    void RemoveLast();

    // Must be called once, after the last Add. Reports faults and gaps, and decides which gaps are
    // too long to be kept.
    void Report(double framesPerSecond, FindingList& findings);

    std::size_t Count() const { return now_.count; }
    // The duration of the motion in frames, with the gaps that are kept. Must be called after
    // Report.
    std::int64_t Span() const;

    // Returns the numbers to be written. Must be created after Report. Next must then be called for
    // each frame in file order, with the same number that Add got.
    class Rewriter {
      public:
        explicit Rewriter(const FrameNumbers& numbers);
        std::int64_t Next(std::optional<double> number);

      private:
        Counter counter_;
        std::int64_t longestGap_;    // in frames; longer gaps are closed
        std::int64_t highestFirst_;  // the highest first number with which all numbers fit 32 bits
        std::int64_t written_ = 0;   // the number that the last frame got
    };

  private:
    struct Gap {
        std::int64_t frames;  // how many frames are missing
        const char* at;       // points to the frame after the gap
    };
    struct State : Counter {
        std::size_t gaps = 0;    // size of `gaps_`
        std::size_t faults = 0;  // number of frames with a fault
    };

    State now_;
    State before_;  // the state before the last Add
    std::vector<Gap> gaps_;
    const char* firstFault_ = nullptr;     // the first frame with a fault; null if there is none
    std::int64_t longestGap_ = INT32_MAX;  // in frames; longer gaps are closed
};

}  // namespace survey
