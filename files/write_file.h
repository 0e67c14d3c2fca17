// Writes outputs to disk, whole or not at all, and returns errors as values.
#pragma once

#include <functional>
#include <string>

#include "text/api.h"
#include "text/byte_sink.h"

namespace files {

struct WriteOutcome {
    // Why the output was not written, in one line with its path. Empty if it was written or if
    // `isCancelled` is set.
    std::string problem;
    bool isCancelled = false;

    bool IsWritten() const { return problem.empty() && !isCancelled; }
};

// Functions that write the contents of an output to its sinks. They return an empty text, or why
// the contents cannot be written; then no file is left. They must not catch what the sinks throw.
using FillFile = std::function<std::string(text::ByteSink& out)>;
using FillPair = std::function<std::string(text::ByteSink& out, text::ByteSink& side)>;

// Writes one file. If it is not written, a file that already has its name stays as it is.
// `isCancelled` is called from time to time and returns whether the user wants to stop; it may be
// empty. Exceptions of `fill` other than text::WriteError, text::WriteCancelled and std::bad_alloc
// are passed on.
ZKMOCAP_API WriteOutcome WriteFile(const std::string& path, const FillFile& fill,
                                   const std::function<bool()>& isCancelled = nullptr);

// Writes both of two files that belong together, or neither. The sink `side` of `fill` writes to
// `sidePath`.
ZKMOCAP_API WriteOutcome WriteFilePair(const std::string& path, const std::string& sidePath,
                                       const FillPair& fill,
                                       const std::function<bool()>& isCancelled = nullptr);

}  // namespace files
