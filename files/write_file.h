// Outputs on disk, whole or not at all, with errors as values.
#pragma once

#include <functional>
#include <string>

#include "text/api.h"
#include "text/byte_sink.h"

namespace files {

struct WriteOutcome {
    // Why there is no output, in one line that names it; empty: it was written, or `isCancelled`.
    std::string problem;
    bool isCancelled = false;

    bool IsWritten() const { return problem.empty() && !isCancelled; }
};

// What fills an output. Returns why it cannot be filled, empty where it was; then nothing is left
// of it. What the sinks throw is to come through.
using FillFile = std::function<std::string(text::ByteSink& out)>;
using FillPair = std::function<std::string(text::ByteSink& out, text::ByteSink& side)>;

// Writes one file, or leaves what had its name. `isCancelled` is asked from time to time whether
// the user wants to stop; empty: never.
ZKMOCAP_API WriteOutcome WriteFile(const std::string& path, const FillFile& fill,
                                   const std::function<bool()>& isCancelled = nullptr);

// Two files that belong together, both or neither.
ZKMOCAP_API WriteOutcome WriteFilePair(const std::string& path, const std::string& sidePath,
                                       const FillPair& fill,
                                       const std::function<bool()>& isCancelled = nullptr);

}  // namespace files
