// Functions that an import calls while it runs.
#pragma once

#include <functional>
#include <vector>

#include "headless/session.h"
#include "take/findings.h"

namespace take {

// Each of the functions may be empty. They are called on the thread that imports. They must not
// throw and must not start an import.
struct Listener {
    // Called after the survey. If the files are not refused, the plug-in reads them next.
    std::function<void(const std::vector<FileFindings>&, bool isRefused)> onSurveyed{};
    std::function<void(const headless::LogLine&)> onLog{};
    // Called only if the request has a progress bar.
    std::function<void(const headless::BarEvent&)> onBar{};
    // Returns whether the user wants to stop. It is called once after the plug-in has returned. If
    // the request has a progress bar, it is also called from time to time while the plug-in runs.
    std::function<bool()> isCancelled{};
};

}  // namespace take
