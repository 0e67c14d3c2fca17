// The outcome of an import, judged from the host's log.
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
    ImportedInPart,  // an error followed after some models were complete
    Failed,
    Cancelled,
};

struct Outcome {
    Status status = Status::Failed;
    // The number of complete models, as the log counts them; none: the log has no such line.
    std::optional<std::size_t> models;
};

// Returns whether the line reports that the import failed.
ZKMOCAP_API bool IsError(const headless::LogLine& line);

// `result` is the callback's result, which is 0 even for a failed import. `isCancelled` says
// whether the user asked to stop, even if the plug-in ended before it noticed.
Outcome JudgeImport(std::int32_t result, const std::vector<headless::LogLine>& log,
                    bool isCancelled);

// Tells which file each log line is about. An Acclaim import logs the lines about the skeleton,
// then the skeleton's documentation, then the lines about the motion.
class LogSubject {
  public:
    // Returns whether the line is about the motion. It has to be called with every line of the log,
    // in order.
    bool IsMotion(const headless::LogLine& line);

  private:
    bool isMotion_ = false;
};

}  // namespace take
