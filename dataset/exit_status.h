#pragma once

namespace dataset {

// How zkhost ends, and what the end of one of its processes means to another.
enum ExitStatus : int {
    kImported = 0,
    kImportFailed = 1,
    kWrongUsage = 2,
    kOutputFailed = 3,
    kSomeFailed = 4,
    kImportedInPart = 5,
    kCancelled = 130,
};

}  // namespace dataset
