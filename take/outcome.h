// Finds out from the host's log how an import ended.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "headless/session.h"
#include "text/api.h"

namespace take {

enum class Status : std::uint8_t {
    Imported,
    ImportedInPart,  // some models are complete, but an error ended the import after them
    Failed,
    Cancelled,
};

struct Outcome {
    Status status = Status::Failed;
    // The number of complete models, as a line of the log states it; nullopt if no line does.
    std::optional<std::size_t> models;
};

// Returns whether the line reports that the import failed or was cancelled.
ZKMOCAP_API bool IsError(const headless::LogLine& line);

// Returns how the import ended. `result` is what the callback returned, which is 0 even for a
// failed import. `isCancelled` says whether the user asked to stop. If so, the import counts as
// cancelled, even if the plug-in finished before it noticed.
Outcome JudgeImport(std::int32_t result, const std::vector<headless::LogLine>& log,
                    bool isCancelled);

// Tells which file each log line is about. An Acclaim import logs the lines about the skeleton,
// then the skeleton's documentation, then the lines about the motion.
class LogSubject {
  public:
    // Returns whether the line is about the motion. Call it with every line of the log, in order,
    // because earlier lines tell where the lines about the motion begin.
    bool IsMotion(const headless::LogLine& line);

  private:
    bool isMotion_ = false;  // whether the next line is about the motion
};

}  // namespace take
