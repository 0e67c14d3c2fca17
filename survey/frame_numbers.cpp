#include "survey/frame_numbers.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "survey/codes.h"

namespace survey {
namespace {

// A gap is too long if it lasts longer than this, and if more frames are missing in it than the
// motion has.
constexpr double kLongestGapSeconds = 10.0;

// Returns the number without its fraction. Returns nullopt if the number is negative or too large
// for a 32-bit integer, because the plug-in stores frame numbers in 32 bits.
std::optional<std::int64_t> Whole(std::optional<double> number) {
    if (!number || *number < 0.0 || *number > INT32_MAX) return std::nullopt;
    return static_cast<std::int64_t>(*number);
}

}  // namespace

std::int64_t FrameNumbers::Counter::Advance(std::optional<double> number) {
    const std::optional<std::int64_t> whole = Whole(number);
    const bool wasFault = isFault;
    const bool isFirst = count++ == 0;
    isFault = !whole || (!isFirst && *whole <= stated);
    if (isFirst) return stated = reached = whole.value_or(1);
    std::int64_t step = 1;
    // The number of the frame before may have been faulty. If the number of this frame is above all
    // new numbers so far, only that one number was wrong, and the step counts from the new number
    // of the frame before. If it is not above them, the file has started to count anew, and the
    // step counts from the number that the frame before has in the file.
    if (!isFault) step = *whole - (wasFault && *whole > reached ? reached : stated);
    reached += step;
    stated = whole ? *whole : stated + 1;
    return step;
}

void FrameNumbers::Add(std::optional<double> number, const char* at) {
    before_ = now_;
    const std::int64_t step = now_.Advance(number);
    if (now_.isFault && now_.faults++ == 0) firstFault_ = at;
    if (now_.count > 1 && step > 1) gaps_.push_back({step - 1, at});
    now_.gaps = gaps_.size();
}

void FrameNumbers::RemoveLast() {
    now_ = before_;
    gaps_.resize(now_.gaps);
}

void FrameNumbers::Report(double framesPerSecond, FindingList& findings) {
    const double longest = std::max(kLongestGapSeconds * framesPerSecond, double(now_.count));
    longestGap_ = static_cast<std::int64_t>(std::min(longest, double(INT32_MAX)));
    // If the numbers start anew many times, the sum of the gaps may exceed 32 bits. Then no gap is
    // kept.
    if (Span() > INT32_MAX) longestGap_ = 0;
    for (const Gap& gap : gaps_) {
        const bool isLong = gap.frames > longestGap_;
        const Severity severity = isLong ? Severity::Warning : Severity::Note;
        if (!isLong && findings.AddAgain(codes::kFrameNumber, severity)) continue;
        findings.Add({codes::kFrameNumber, severity, gap.at,
                      std::to_string(gap.frames) + (gap.frames == 1 ? " frame is" : " frames are") +
                          " missing before this one; " +
                          (isLong ? "the frames are numbered on in the order of the file"
                                  : "the gap is kept as time"),
                      "", isLong});
    }
    if (now_.faults == 0) return;
    findings.Add({codes::kFrameNumber, Severity::Warning, firstFault_,
                  "the frame's number is not above the one before, or is missing; the frames are "
                  "numbered on in the order of the file",
                  "", true});
    findings.AddAgain(codes::kFrameNumber, Severity::Note, now_.faults - 1);
}

std::int64_t FrameNumbers::Span() const {
    auto span = static_cast<std::int64_t>(now_.count);
    for (const Gap& gap : gaps_)
        if (gap.frames <= longestGap_) span += gap.frames;
    return span;
}

FrameNumbers::Rewriter::Rewriter(const FrameNumbers& numbers)
    : longestGap_(numbers.longestGap_), highestFirst_(INT32_MAX - numbers.Span() + 1) {}

std::int64_t FrameNumbers::Rewriter::Next(std::optional<double> number) {
    const std::int64_t step = counter_.Advance(number);
    if (counter_.count == 1)
        written_ = std::min(step, highestFirst_);
    else
        written_ += step - 1 > longestGap_ ? 1 : step;
    return written_;
}

}  // namespace survey
