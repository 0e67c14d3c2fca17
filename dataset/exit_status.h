#pragma once

namespace dataset {

// The exit statuses of zkhost. "zkhost convert" starts imports and reads their exit statuses.
enum ExitStatus : int {
    kImported = 0,
    kImportFailed = 1,
    kWrongUsage = 2,
    kOutputFailed = 3,
    kSomeFailed = 4,  // only convert: some imports failed
    kImportedInPart = 5,
    kCancelled = 130,
};

}  // namespace dataset
