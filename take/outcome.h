// What became of an import, judged from what the host logged.
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
    ImportedInPart,  // an error, after some models were imported whole
    Failed,
    Cancelled,
};

struct Outcome {
    Status status = Status::Failed;
    // What the line that counts the models says; none without that line.
    std::optional<std::size_t> models;
};

// Whether the line reports a failed import.
ZKMOCAP_API bool IsError(const headless::LogLine& line);

// `result` is the callback's code, 0 even for a failed import. `isCancelled`: the user asked to
// stop, whether the plug-in noticed or not.
Outcome JudgeImport(std::int32_t result, const std::vector<headless::LogLine>& log,
                    bool isCancelled);

// Which file each line of a log is about. An import of a skeleton and a motion logs what it has to
// say about the skeleton, then its documentation, then what there is about the motion.
class LogSubject {
  public:
    // To be called with each line in order.
    bool IsMotion(const headless::LogLine& line);

  private:
    bool isMotion_ = false;
};

}  // namespace take
