#include "survey/frame_numbers.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "survey/codes.h"

namespace survey {
namespace {

constexpr double kLongestGapSeconds = 10.0;

// As the plug-in's whole numbers can have it.
std::optional<std::int64_t> Whole(std::optional<double> number) {
    if (!number || *number < 0.0 || *number > INT32_MAX) return std::nullopt;
    return static_cast<std::int64_t>(*number);
}

}  // namespace

void FrameNumbers::Add(std::optional<double> number, const char* at) {
    lastBefore_ = last_;
    gapsBefore_ = gaps_.size();
    faultsBefore_ = faults_;
    const std::optional<std::int64_t> whole = Whole(number);
    const bool isFirst = count_++ == 0;
    if (!whole || (!isFirst && *whole <= *last_)) {
        if (faults_++ == 0) firstFault_ = at;
    } else if (!isFirst && *whole > *last_ + 1) {
        gaps_.push_back({*whole - *last_ - 1, at});
    }
    last_ = whole ? *whole : (isFirst ? 1 : *last_ + 1);
}

void FrameNumbers::Forget() {
    --count_;
    last_ = lastBefore_;
    gaps_.resize(gapsBefore_);
    faults_ = faultsBefore_;
}

void FrameNumbers::Report(double framesPerSecond, FindingList& findings) {
    const double longest = std::max(kLongestGapSeconds * framesPerSecond, double(count_));
    longestGap_ = static_cast<std::int64_t>(std::min(longest, double(INT32_MAX)));
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
    if (faults_ == 0) return;
    findings.Add({codes::kFrameNumber, Severity::Warning, firstFault_,
                  "the frame's number is not above the one before, or is missing; the frames are "
                  "numbered on in the order of the file",
                  "", true});
    findings.AddAgain(codes::kFrameNumber, Severity::Note, faults_ - 1);
}

std::int64_t FrameNumbers::Span() const {
    auto span = static_cast<std::int64_t>(count_);
    for (const Gap& gap : gaps_)
        if (gap.frames <= longestGap_) span += gap.frames;
    return span;
}

std::int64_t FrameNumbers::Rewriter::Next(std::optional<double> number) {
    const std::optional<std::int64_t> whole = Whole(number);
    if (!stated_) {
        stated_ = written_ = whole.value_or(1);
        return written_;
    }
    std::int64_t step = whole ? *whole - *stated_ : 1;
    if (step < 1 || step - 1 > longestGap_ || written_ + step > INT32_MAX) step = 1;
    stated_ = whole ? *whole : *stated_ + 1;
    written_ += step;
    return written_;
}

}  // namespace survey
