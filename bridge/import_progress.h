// Turns the events of the plug-in's progress bar into the share of the import's time that has
// passed. The plug-in's own values do not rise evenly: while the motion is read, which takes about
// half of the time, its bar stays below a tenth.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "headless/session.h"
#include "take/request.h"
#include "text/api.h"

namespace bridge {

struct ImportKind {
    take::Format format = take::Format::Biovision;
    bool useNulls = true;
    // About how many values an AMC file has. While the plug-in reads one, its bar does not change.
    // The plug-in only asks before each value whether the user cancels. With 0, the share does not
    // rise while an AMC file is read.
    std::uint64_t amcValues = 0;
};

class ZKMOCAP_API ImportProgress {
  public:
    explicit ImportProgress(const ImportKind& kind);

    void Receive(const headless::BarEvent& event);
    // Call it when the plug-in asks whether the user cancels. Returns whether Share() may have
    // risen by at least a thousandth of the current phase.
    bool ReceivePoll() {
        if (++polls_ < noticeablePolls_) return false;
        NotePolls();
        return true;
    }

    bool IsVisible() const { return isVisible_; }
    const std::wstring& Caption() const { return caption_; }
    // From 0 to 1. It falls only when a further section of a BVH file begins, to 0.
    double Share() const;

    // A part of the import, which begins with a caption of the bar.
    struct Phase;

  private:
    void BeginPhase(const std::wstring& caption);
    void CountNodes(std::int32_t value);
    std::uint64_t ExpectedSteps() const;
    void NotePolls();

    ImportKind kind_;
    std::span<const Phase> phases_;
    const Phase* phase_ = nullptr;  // null before the first phase
    double start_ = 0.0;            // the share at which the phase begins
    std::uint64_t nodes_ = 0;       // nodes of the skeleton; 0 until they are counted
    std::uint64_t polls_ = 0;       // in this phase
    std::uint64_t values_ = 0;      // values of the bar in this phase
    std::uint64_t noticeablePolls_ = 0;
    std::wstring caption_;
    bool isVisible_ = false;
};

}  // namespace bridge
