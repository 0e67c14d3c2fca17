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

// What the next number is counted from: after a fault the numbers may go on as if it had been none.
std::int64_t Reference(std::int64_t number, std::int64_t stated, std::int64_t written,
                       bool afterFault) {
    return afterFault && number > written ? written : stated;
}

}  // namespace

void FrameNumbers::Add(std::optional<double> number, const char* at) {
    before_ = now_;
    const std::optional<std::int64_t> whole = Whole(number);
    const bool isFirst = now_.count++ == 0;
    const bool isFault = !whole || (!isFirst && *whole <= now_.stated);
    if (isFault && now_.faults++ == 0) firstFault_ = at;
    if (isFirst) {
        now_.stated = now_.written = whole.value_or(1);
        return;
    }
    std::int64_t step = 1;
    if (!isFault) step = *whole - Reference(*whole, now_.stated, now_.written, now_.afterFault);
    if (step > 1) gaps_.push_back({step - 1, at});
    now_.gaps = gaps_.size();
    now_.written += step;
    now_.stated = whole ? *whole : now_.stated + 1;
    now_.afterFault = isFault;
}

void FrameNumbers::Forget() {
    now_ = before_;
    gaps_.resize(now_.gaps);
}

void FrameNumbers::Report(double framesPerSecond, FindingList& findings) {
    const double longest = std::max(kLongestGapSeconds * framesPerSecond, double(now_.count));
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

std::int64_t FrameNumbers::Rewriter::Next(std::optional<double> number) {
    const std::optional<std::int64_t> whole = Whole(number);
    if (isFirst_) {
        isFirst_ = false;
        stated_ = written_ = whole.value_or(1);
        return written_;
    }
    const bool isFault = !whole || *whole <= stated_;
    std::int64_t step = isFault ? 1 : *whole - Reference(*whole, stated_, written_, afterFault_);
    if (step - 1 > longestGap_ || written_ + step > INT32_MAX) step = 1;
    written_ += step;
    stated_ = whole ? *whole : stated_ + 1;
    afterFault_ = isFault;
    return written_;
}

}  // namespace survey
