// What can be watched while an import runs.
#pragma once

#include <functional>
#include <vector>

#include "headless/session.h"
#include "take/findings.h"

namespace take {

// Each may be empty. All are called on the thread that imports; they must neither throw nor import.
struct Listener {
    // The files were surveyed, and the plug-in gets them next unless they are refused.
    std::function<void(const std::vector<FileFindings>&, bool isRefused)> onSurveyed{};
    std::function<void(const headless::LogLine&)> onLog{};
    // Of a request with a progress bar.
    std::function<void(const headless::BarEvent&)> onBar{};
    // Whether the user wants to stop. Asked from time to time while the plug-in runs, by a request
    // with a progress bar, and at the end by any.
    std::function<bool()> isCancelled{};
};

}  // namespace take
