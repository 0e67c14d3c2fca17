// What became of an import, judged from what the host logged.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "headless/session.h"

namespace app {

// How zkhost ends.
enum ExitStatus : int {
    kImported = 0,
    kImportFailed = 1,
    kWrongUsage = 2,
    kOutputFailed = 3,
    kSomeFailed = 4,
    kImportedInPart = 5,
    kCancelled = 130,
};

struct Outcome {
    ExitStatus status = kImported;
    // What the line that counts the models says; none without that line.
    std::optional<std::size_t> models;
};

// Whether the line reports a failed import.
bool IsError(const headless::LogLine& line);

// `result` is the callback's code, 0 even for a failed import. `interrupted`: the user asked to
// stop, whether the plug-in noticed or not.
Outcome JudgeImport(std::int32_t result, const std::vector<headless::LogLine>& log,
                    bool interrupted);

}  // namespace app
